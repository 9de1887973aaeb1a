#pragma once
// A popup menu as the user sees and works it: its items laid out in the
// system's menu font inside a raised frame, the highlighted item, the
// pointer and keyboard rules that choose or dismiss, and its picture. It
// knows nothing of windows: the desktop shows the picture and feeds it
// the pointer and the keys.

#include <optional>
#include <vector>

#include "kestu/foundation/ControlSite.h"
#include "kestu/raster/Raster.h"

namespace kestu {

// How a key left the menu: still open, or closed with a choice or none.
struct MenuKeyResult {
  bool closed = false;
  std::optional<int> chosen;
};

class PopupMenu {
 public:
  // Lays out `items`; "&" marks an item's access key ("&&" is a plain "&").
  explicit PopupMenu(std::vector<MenuItem> items);

  int Width() const { return picture_.Width(); }
  int Height() const { return picture_.Height(); }

  // The item at (x, y) of the menu, separators included; -1 for the frame
  // and outside.
  int ItemAt(int x, int y) const;
  // The item a button released at (x, y) chooses: an enabled item, not a
  // separator.
  std::optional<int> ChoiceAt(int x, int y) const;

  int Highlighted() const { return highlighted_; }
  // Highlights the item under the pointer (none over a separator or off
  // the items) and redraws when that changes.
  void PointAt(int x, int y);

  // Up and Down move the highlight over the items, skipping separators and
  // wrapping round; Enter chooses the highlighted item when it is enabled;
  // Escape dismisses; a letter chooses the enabled item it is the access
  // key of.
  MenuKeyResult PressKey(int16_t key_code);

  // The menu as it looks now.
  const Raster& Picture() const { return picture_; }

 private:
  struct Row {
    int top = 0;
    int height = 0;
  };

  void Layout();
  void Draw();
  void DrawItem(int index);
  void SetHighlight(int index);
  int Step(int from, int direction) const;
  std::optional<int> AccessKeyItem(int16_t key_code) const;

  std::vector<MenuItem> items_;
  std::vector<Row> rows_;
  int highlighted_ = -1;
  Raster picture_{1, 1};
};

}  // namespace kestu
