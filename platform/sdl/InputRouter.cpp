#include "kestu/sdl/InputRouter.h"

#include <SDL.h>

#include "kestu/host/Form.h"
#include "kestu/host/Host.h"
#include "kestu/host/HostedControl.h"
#include "kestu/host/KeyStroke.h"
#include "kestu/sdl/KeyTable.h"

namespace kestu {

namespace {

constexpr int16_t kTab = 9;

int16_t ButtonBit(int sdl_button) {
  switch (sdl_button) {
    case SDL_BUTTON_LEFT:
      return 1;
    case SDL_BUTTON_RIGHT:
      return 2;
    case SDL_BUTTON_MIDDLE:
      return 4;
    default:
      return 0;
  }
}

bool CanTakeFocus(const HostedControl& control) {
  return control.Visible() && control.WindowEnabled() && control.Control().CanGetFocus();
}

bool Inside(const PixelRect& r, int x, int y) {
  return x >= r.left && x < r.right && y >= r.top && y < r.bottom;
}

}  // namespace

HostedControl* InputRouter::Focused(const Form& form) const {
  HostedControl* focused = host_.Focused();
  return focused && &focused->Owner() == &form ? focused : nullptr;
}

HostedControl* InputRouter::ControlAt(const Form& form, int x, int y) const {
  // Later controls are drawn over earlier ones: the last one under the
  // pointer is the one seen.
  const auto& controls = form.Controls();
  for (auto it = controls.rbegin(); it != controls.rend(); ++it) {
    if ((*it)->Visible() && Inside((*it)->PixelBoundsOnForm(), x, y)) return it->get();
  }
  return nullptr;
}

HostedControl* InputRouter::Pressed() const {
  return host_.FindWindow(pressed_hwnd_).control;
}

void InputRouter::KeyDown(Form& form, int32_t sdl_keycode, uint16_t sdl_modifiers) {
  const int16_t shift = ShiftBitsFor(sdl_modifiers);
  const int16_t key_code = VirtualKeyFor(sdl_keycode, (sdl_modifiers & KMOD_NUM) != 0);
  if (key_code == 0) return;
  // The form takes Tab for itself; Ctrl+Tab and Alt+Tab are not its.
  if (key_code == kTab && (shift & (shift::kCtrl | shift::kAlt)) == 0) {
    MoveFocus(form, (shift & shift::kShift) != 0);
    return;
  }
  HostedControl* control = Focused(form);
  if (!control) return;
  if (shift & shift::kAlt) {
    // An access key: the host's whole stroke finds its owner.
    input_.PressKey(*control, key_code, shift);
    return;
  }
  std::weak_ptr<int> alive = control->Lifetime();
  input_.KeyDown(*control, key_code, shift);
  if (alive.expired()) return;
  if (const int16_t character = KeyPressOfKey(key_code, shift))
    input_.KeyPress(*control, character);
}

void InputRouter::KeyUp(Form& form, int32_t sdl_keycode, uint16_t sdl_modifiers) {
  const int16_t key_code = VirtualKeyFor(sdl_keycode, (sdl_modifiers & KMOD_NUM) != 0);
  HostedControl* control = Focused(form);
  if (key_code == 0 || !control) return;
  // The key up goes wherever the focus is now: after Tab, to the new
  // holder, as the system sends it.
  input_.KeyUp(*control, key_code, ShiftBitsFor(sdl_modifiers));
}

void InputRouter::Text(Form& form, std::string_view utf8) {
  if (HostedControl* control = Focused(form)) input_.TypeText(*control, utf8);
}

void InputRouter::MoveFocus(Form& form, bool backwards) {
  const auto& controls = form.Controls();
  const int count = static_cast<int>(controls.size());
  if (count == 0) return;
  const HostedControl* from = Focused(form) ? Focused(form) : form.ActiveControl();
  int index = from ? form.TabIndexOf(*from) : (backwards ? 0 : count - 1);
  for (int tried = 0; tried < count; ++tried) {
    index = (index + (backwards ? count - 1 : 1)) % count;
    if (CanTakeFocus(*controls[index])) {
      host_.SetFocus(controls[index].get());
      return;
    }
  }
}

void InputRouter::SendMouse(HostedControl& control, MouseAction action, int16_t button,
                            int16_t shift, int x, int y) {
  const PixelRect at = control.PixelBoundsOnForm();
  const auto twips_x = static_cast<float>((x - at.left) * control.TwipsPerPixelX());
  const auto twips_y = static_cast<float>((y - at.top) * control.TwipsPerPixelY());
  input_.Mouse(control, action, button, shift, twips_x, twips_y);
}

void InputRouter::MouseButton(Form& form, bool down, int sdl_button, int clicks, int x, int y,
                              uint16_t sdl_modifiers) {
  const int16_t button = ButtonBit(sdl_button);
  if (button == 0) return;
  const int16_t shift = ShiftBitsFor(sdl_modifiers);
  const PixelRect screen = form.ScreenRect();
  host_.SetCursorPos(screen.left + x, screen.top + y);
  if (down) {
    HostedControl* control = buttons_ ? Pressed() : ControlAt(form, x, y);
    buttons_ |= button;
    if (!control) return;
    pressed_hwnd_ = control->hWnd();
    std::weak_ptr<int> alive = control->Lifetime();
    if (button == 1 && CanTakeFocus(*control)) {
      host_.SetFocus(control);
      if (alive.expired()) return;
    }
    // The second press of a double click is the DblClick itself; its
    // release is a plain MouseUp.
    double_click_ = button == 1 && clicks >= 2;
    if (double_click_) {
      if (control->WindowEnabled()) control->Control().UserControl_DblClick();
      return;
    }
    SendMouse(*control, MouseAction::Down, button, shift, x, y);
    return;
  }
  if ((buttons_ & button) == 0) return;
  buttons_ &= static_cast<int16_t>(~button);
  HostedControl* control = Pressed();
  const bool click = button == 1 && !double_click_;
  // Cleared first: the procedures below may open a menu that runs the
  // window system's loop again.
  if (buttons_ == 0) pressed_hwnd_ = 0;
  double_click_ = false;
  if (!control) return;
  std::weak_ptr<int> alive = control->Lifetime();
  SendMouse(*control, MouseAction::Up, button, shift, x, y);
  if (alive.expired() || !click || !control->WindowEnabled()) return;
  if (Inside(control->PixelBoundsOnForm(), x, y)) control->Control().UserControl_Click();
}

void InputRouter::MouseMove(Form& form, int x, int y, uint16_t sdl_modifiers) {
  const PixelRect screen = form.ScreenRect();
  host_.SetCursorPos(screen.left + x, screen.top + y);
  HostedControl* control = buttons_ ? Pressed() : ControlAt(form, x, y);
  // Off every control, a control that holds the capture still hears.
  HostedControl* holder = host_.CaptureHolder();
  if (!control && holder && &holder->Owner() == &form) control = holder;
  if (!control) return;
  SendMouse(*control, MouseAction::Move, buttons_, ShiftBitsFor(sdl_modifiers), x, y);
}

}  // namespace kestu
