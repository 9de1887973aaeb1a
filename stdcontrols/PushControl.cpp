#include "kestu/stdcontrols/PushControl.h"

#include "kestu/foundation/KestuControlsAPI.h"
#include "kestu/foundation/Keys.h"

namespace kestu {

void PushControl::UserControl_GotFocus() {
  has_focus_ = true;
  Redraw();
}

void PushControl::UserControl_LostFocus() {
  has_focus_ = false;
  space_held_ = false;
  Redraw();
}

void PushControl::UserControl_KeyDown(int16_t& key_code, int16_t& shift) {
  if (!RaiseEvent(KeyDown, key_code, shift)) return;
  if (key_code != key::kSpace) {
    OtherKey(key_code);
    return;
  }
  if (space_held_ || shift != 0) return;
  space_held_ = true;
  Redraw();
}

void PushControl::UserControl_KeyPress(int16_t& key_ascii) {
  static_cast<void>(RaiseEvent(KeyPress, key_ascii));
}

void PushControl::UserControl_KeyUp(int16_t& key_code, int16_t& shift) {
  if (!RaiseEvent(KeyUp, key_code, shift)) return;
  if (key_code != key::kSpace || !space_held_) return;
  space_held_ = false;
  Redraw();
  static_cast<void>(Activate());
}

void PushControl::UserControl_MouseDown(int16_t& button, int16_t& shift, float& x, float& y) {
  BeforePress(button);
  if (!RaiseEvent(MouseDown, button, shift, x, y)) return;
  if (button != button::kLeft) return;
  pointer_held_ = pointer_inside_held_ = true;
  Redraw();
}

void PushControl::UserControl_MouseMove(int16_t& button, int16_t& shift, float& x, float& y) {
  if (!RaiseEvent(MouseMove, button, shift, x, y)) return;
  if (!pointer_held_) return;
  // Dragged off the control it comes up again; back over it, down.
  const bool inside = x >= 0 && y >= 0 && x < Width() && y < Height();
  if (inside == pointer_inside_held_) return;
  pointer_inside_held_ = inside;
  Redraw();
}

void PushControl::UserControl_MouseUp(int16_t& button, int16_t& shift, float& x, float& y) {
  if (!RaiseEvent(MouseUp, button, shift, x, y)) return;
  if (button != button::kLeft || !pointer_held_) return;
  pointer_held_ = pointer_inside_held_ = false;
  Redraw();
}

// Enter and Escape act on the default and cancel control where the focus
// is; the control's own access key moves the focus to it first.
void PushControl::UserControl_AccessKeyPress(int16_t& key_ascii) {
  if (key_ascii != key::kEnter && key_ascii != key::kEscape) KestuControlsAPI::SetFocus(hWnd());
  static_cast<void>(Activate());
}

}  // namespace kestu
