#pragma once
// The host's one tooltip window, frmTip, shared by every control that
// shows tips: there is at most one tip on the screen because there is one
// window. A control reaches it through its site (ShowTip, HideTip,
// SetTipsAllowed), never directly.
//
// Showing loads the window when it is not loaded, puts the text in, sizes
// the window to the text plus a margin and places it by the mouse cursor;
// hiding unloads it. The pointer moving onto the tip unloads it too, so a
// tip never stays under the pointer.

#include <string_view>

#include "kestu/foundation/Surface.h"

namespace kestu {

class Host;
class ToolWindow;

class TipWindow {
 public:
  // Pixels between the text and each edge; the outermost one is the
  // border.
  static constexpr int kMargin = 2;
  // Where the tip's top-left corner goes from the cursor's hot spot: below
  // the arrow, so the pointer is not on the tip it just caused.
  static constexpr int kCursorOffsetX = 4;
  static constexpr int kCursorOffsetY = 20;
  // Pixels kept between the cursor and a tip put above it (near the
  // screen's bottom edge).
  static constexpr int kGapAboveCursor = 2;

  explicit TipWindow(Host& host) : host_(host) {}
  TipWindow(const TipWindow&) = delete;
  TipWindow& operator=(const TipWindow&) = delete;

  // Shows `text` by the cursor; nothing while tips are not allowed. A
  // different text replaces the tip shown (it goes, and the new one
  // comes); the same text only follows the cursor.
  void Show(std::string_view text);
  // Unloads the tip; nothing when it is not shown.
  void Hide();

  // True at start. Controls forbid tips around their Click, so that no tip
  // comes up while the application's handler runs.
  bool Allowed() const { return allowed_; }
  void SetAllowed(bool allowed) { allowed_ = allowed; }

  // The window while the tip is shown, else null.
  const ToolWindow* Window() const { return window_; }

  // Where a tip `width` x `height` pixels goes for the cursor at (x, y):
  // below and right of it, moved left at the screen's right edge and put
  // above the cursor at its bottom edge, never off the screen's top-left.
  static PixelRect PlaceByCursor(int x, int y, int width, int height, const PixelRect& screen);

 private:
  ToolWindow& Load();
  void Draw(ToolWindow& window);

  Host& host_;
  ToolWindow* window_ = nullptr;
  bool allowed_ = true;
};

}  // namespace kestu
