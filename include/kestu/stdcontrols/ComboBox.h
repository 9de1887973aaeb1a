#pragma once
// A drop-down list: a sunken box showing the selected item, with an arrow
// button at its right. The list drops down as the host's popup menu (on a
// left press, F4 or Alt+Down) and the item chosen becomes the selection;
// Up, Down, Home and End change the selection without dropping it. Click
// follows every change of ListIndex, by the user or by the program.
//
// Saved: "ItemCount", then "Item0", "Item1", ... (any text may be an item,
// so no separator could join them), then "ListIndex".

#include <cstdint>
#include <string>
#include <vector>

#include "kestu/foundation/Event.h"
#include "kestu/foundation/Variant.h"
#include "kestu/stdcontrols/InputEvents.h"
#include "kestu/stdcontrols/StdControl.h"

namespace kestu {

class ComboBox : public StdControl, public InputEvents {
 public:
  ComboBox();

  // The class's metadata: its properties, methods and events.
  static ClassInfo& Info();
  const ClassInfo& Class() const override { return Info(); }

  Event<> Click;

  // ---- The list ----
  // Inserts `item` at `index` (Empty: at the end); error 5 past the end.
  // The selected item stays selected.
  void AddItem(const std::string& item, const Variant& index);
  // Error 381 for a bad index. Removing the selected item leaves none.
  void RemoveItem(int16_t index);
  void Clear();
  // Error 381 for a bad index.
  std::string List(int16_t index) const;
  int16_t ListCount() const { return static_cast<int16_t>(items_.size()); }
  int16_t ListIndex() const { return list_index_; }
  // -1 for none; error 380 past the list. A different index raises Click.
  void SetListIndex(int16_t index);
  // The selected item, "" when none.
  std::string Text() const;

  bool CanGetFocus() const override { return true; }
  void UserControl_GotFocus() override;
  void UserControl_LostFocus() override;
  void UserControl_InitProperties() override;
  void UserControl_ReadProperties(PropertyBag& bag) override;
  void UserControl_WriteProperties(PropertyBag& bag) override;
  void UserControl_KeyDown(int16_t& key_code, int16_t& shift) override;
  void UserControl_KeyPress(int16_t& key_ascii) override;
  void UserControl_KeyUp(int16_t& key_code, int16_t& shift) override;
  void UserControl_MouseDown(int16_t& button, int16_t& shift, float& x, float& y) override;
  void UserControl_MouseMove(int16_t& button, int16_t& shift, float& x, float& y) override;
  void UserControl_MouseUp(int16_t& button, int16_t& shift, float& x, float& y) override;

 protected:
  void Draw() override;
  // Stores, draws and raises Click when the index changes; false when a
  // handler destroyed the box.
  [[nodiscard]] bool ChangeListIndex(int16_t index);
  // The selection keys: `back_key` and `on_key` move by one item, the ends
  // staying; Home and End go to the first and the last.
  void MoveSelection(int16_t key_code, int16_t back_key, int16_t on_key);
  const std::vector<std::string>& Items() const { return items_; }
  bool HasFocus() const { return has_focus_; }

 private:
  // Shows the list as a popup menu and selects what the user chose.
  void DropDown();
  void CheckIndex(int16_t index) const;
  int ButtonLeft() const;
  void DrawArrowButton(int left);
  void DrawSelectedItem(int right);

  std::vector<std::string> items_;
  int16_t list_index_ = -1;
  bool has_focus_ = false;
  bool dropped_ = false;
};

}  // namespace kestu
