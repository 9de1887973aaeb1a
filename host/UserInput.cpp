#include "kestu/host/UserInput.h"

#include <algorithm>
#include <cstdlib>

#include "kestu/foundation/Text.h"
#include "kestu/host/Form.h"
#include "kestu/host/FormDesigner.h"
#include "kestu/host/Host.h"
#include "kestu/host/HostedControl.h"
#include "kestu/host/KeyStroke.h"
#include "raster/Clip.h"

namespace kestu {

namespace {

// The character a key types by itself in a stroke: Space, digits and
// letters (upper case with Shift); none with Ctrl or Alt held.
std::optional<char> TypedCharacter(int16_t key_code, int16_t shift) {
  if (shift & (shift::kCtrl | shift::kAlt)) return std::nullopt;
  if (key_code == 32 || (key_code >= '0' && key_code <= '9')) return static_cast<char>(key_code);
  if (key_code >= 'A' && key_code <= 'Z') {
    return static_cast<char>((shift & shift::kShift) ? key_code : key_code - 'A' + 'a');
  }
  return std::nullopt;
}

// The keys a typed text names by a control character: Tab, Enter (a
// line break in either spelling) and Escape; 0 for any other character.
int16_t KeyOfCharacter(char32_t code_point) {
  switch (code_point) {
    case U'\t':
      return key::kTab;
    case U'\n':
    case U'\r':
      return key::kEnter;
    case U'\x1B':
      return key::kEscape;
    default:
      return 0;
  }
}

}  // namespace

HostedControl* UserInput::Focused(const Form& form) const {
  HostedControl* focused = host_.Focused();
  if (!focused || &focused->Owner() != &form) return nullptr;
  // A control hidden or disabled with its container keeps the focus, but
  // a user cannot type into what they cannot see or use; Tab moves on.
  return focused->ShownOnForm() && focused->EnabledOnForm() ? focused : nullptr;
}

HostedControl* UserInput::Pressed() const {
  return host_.FindWindow(pressed_hwnd_).control;
}

// ---- Keys ----

bool UserInput::KeyDown(Form& form, int16_t key_code, int16_t shift) {
  if (key_code == 0) return false;
  if (FormDesigner* designer = form.Designer()) return designer->KeyDown(key_code, shift);
  // The form takes Tab for itself; Ctrl+Tab and Alt+Tab are not its.
  if (key_code == key::kTab && (shift & (shift::kCtrl | shift::kAlt)) == 0) {
    MoveFocus(form, (shift & shift::kShift) != 0);
    return true;
  }
  if (HostInput::SendAccessKey(form, key_code, shift)) return true;
  if (SendToFormButton(form, key_code, shift)) return true;
  HostedControl* control = Focused(form);
  if (!control) return false;
  const int16_t character = KeyPressOfKey(key_code, shift);
  if (character == 0) {
    input_.KeyDown(*control, key_code, shift);
    return false;
  }
  // The KeyDown's handlers may destroy the control before its KeyPress.
  std::weak_ptr<int> alive = control->Lifetime();
  input_.KeyDown(*control, key_code, shift);
  if (!alive.expired()) input_.KeyPress(*control, character);
  return false;
}

bool UserInput::SendToFormButton(const Form& form, int16_t key_code, int16_t shift) {
  if (key_code != key::kEnter && key_code != key::kEscape) return false;
  // Alt+Enter and Ctrl+Enter are keys of their own, not the dialog's.
  if (shift & (shift::kCtrl | shift::kAlt)) return false;
  const bool enter = key_code == key::kEnter;
  for (const auto& candidate : form.Controls()) {
    if (!(enter ? candidate->IsDefault() : candidate->IsCancel())) continue;
    // A default or cancel control the user cannot see or use takes
    // nothing: the key is an ordinary key, as on a form without one.
    if (!candidate->ShownOnForm() || !candidate->EnabledOnForm()) return false;
    button_key_ = key_code;
    int16_t key_ascii = key_code;
    candidate->Control().UserControl_AccessKeyPress(key_ascii);
    return true;
  }
  return false;
}

void UserInput::KeyUp(Form& form, int16_t key_code, int16_t shift) {
  if (key_code != 0 && key_code == button_key_) {
    button_key_ = 0;
    return;
  }
  if (form.Designer()) return;
  // The key up goes wherever the focus is now: after Tab, to the new
  // holder, as the system sends it.
  HostedControl* control = Focused(form);
  if (key_code == 0 || !control) return;
  input_.KeyUp(*control, key_code, shift);
}

void UserInput::Text(Form& form, std::string_view utf8) {
  if (form.Designer()) return;
  if (HostedControl* control = Focused(form)) input_.TypeText(*control, utf8);
}

void UserInput::Press(Form& form, int16_t key_code, int16_t shift) {
  KeyDown(form, key_code, shift);
  if (const std::optional<char> typed = TypedCharacter(key_code, shift)) {
    Text(form, std::string_view(&*typed, 1));
  }
  KeyUp(form, key_code, shift);
}

void UserInput::Keys(Form& form, std::string_view utf8) {
  for (size_t i = 0; i < utf8.size();) {
    const size_t start = i;
    const char32_t code_point = NextCodePoint(utf8, i);
    const std::string_view character = utf8.substr(start, i - start);
    if (const int16_t key_code = KeyOfCharacter(code_point)) {
      Press(form, key_code, 0);
      continue;
    }
    // Only an ASCII character has a key of its own here; any other is
    // text alone.
    const KeyStroke stroke = code_point < 0x80 ? KeyStrokeFor(code_point) : KeyStroke{};
    KeyDown(form, stroke.key_code, stroke.shift);
    Text(form, character);
    KeyUp(form, stroke.key_code, stroke.shift);
  }
}

void UserInput::MoveFocus(Form& form, bool backwards) {
  const auto& controls = form.Controls();
  const int count = static_cast<int>(controls.size());
  if (count == 0) return;
  const HostedControl* from = Focused(form) ? Focused(form) : form.ActiveControl();
  int index = from ? form.TabIndexOf(*from) : (backwards ? 0 : count - 1);
  for (int tried = 0; tried < count; ++tried) {
    index = (index + (backwards ? count - 1 : 1)) % count;
    if (controls[index]->CanTakeFocus()) {
      host_.SetFocus(controls[index].get());
      return;
    }
  }
}

// ---- The pointer ----

void UserInput::SendMouse(HostedControl& control, MouseAction action, int16_t button, int16_t shift,
                          int x, int y) {
  const PixelRect at = control.PixelBoundsOnForm();
  // In 64 bits: a far point on a far control must not wrap.
  const auto twips_x = static_cast<float>((int64_t{x} - at.left) * control.TwipsPerPixelX());
  const auto twips_y = static_cast<float>((int64_t{y} - at.top) * control.TwipsPerPixelY());
  input_.Mouse(control, action, button, shift, twips_x, twips_y);
}

void UserInput::MoveCursor(const Form& form, int& x, int& y) {
  // A pointer is on the screen: points from further off are held at its
  // reach, so no sum below can wrap.
  x = std::clamp(x, -kPointerReach, kPointerReach);
  y = std::clamp(y, -kPointerReach, kPointerReach);
  const PixelRect screen = form.ScreenRect();
  host_.SetCursorPos(Saturate(int64_t{screen.left} + x), Saturate(int64_t{screen.top} + y));
}

bool UserInput::IsDoubleClick(const HostedControl& control, int x, int y) {
  const int64_t now = host_.ClockMilliseconds();
  const bool second = last_press_ && last_press_->hwnd == control.hWnd() &&
                      now - last_press_->at_ms <= kDoubleClickMilliseconds &&
                      std::abs(x - last_press_->x) <= kDoubleClickPixels &&
                      std::abs(y - last_press_->y) <= kDoubleClickPixels;
  // A third press starts a new pair.
  if (second) {
    last_press_.reset();
  } else {
    last_press_ = LeftPress{control.hWnd(), now, x, y};
  }
  return second;
}

void UserInput::PointerDown(Form& form, int x, int y, int16_t button, int16_t shift,
                            std::optional<bool> double_click) {
  if (button == 0) return;
  MoveCursor(form, x, y);
  if (FormDesigner* designer = form.Designer()) {
    buttons_ |= button;
    designer->PointerAt(FormDesigner::Pointer::Down, x, y, button, shift,
                        double_click.value_or(false));
    return;
  }
  HostedControl* control = buttons_ ? Pressed() : form.ControlAt(x, y);
  buttons_ |= button;
  if (!control) return;
  pressed_hwnd_ = control->hWnd();
  std::weak_ptr<int> alive = control->Lifetime();
  if (button == button::kLeft && control->CanTakeFocus()) {
    host_.SetFocus(control);
    if (alive.expired()) return;
  }
  // The second press of a double click is the DblClick itself; its
  // release is a plain MouseUp.
  const bool host_rule = button == button::kLeft && IsDoubleClick(*control, x, y);
  double_click_ = button == button::kLeft && double_click.value_or(host_rule);
  if (double_click_) {
    if (control->EnabledOnForm()) control->Control().UserControl_DblClick();
    return;
  }
  SendMouse(*control, MouseAction::Down, button, shift, x, y);
}

void UserInput::PointerUp(Form& form, int x, int y, int16_t button, int16_t shift) {
  MoveCursor(form, x, y);
  if ((buttons_ & button) == 0) return;
  buttons_ &= static_cast<int16_t>(~button);
  if (FormDesigner* designer = form.Designer()) {
    designer->PointerAt(FormDesigner::Pointer::Up, x, y, button, shift, false);
    return;
  }
  HostedControl* control = Pressed();
  const bool click = button == button::kLeft && !double_click_;
  // Cleared first: the procedures below may open a menu that runs the
  // window system's loop again.
  if (buttons_ == 0) pressed_hwnd_ = 0;
  double_click_ = false;
  if (!control) return;
  std::weak_ptr<int> alive = control->Lifetime();
  SendMouse(*control, MouseAction::Up, button, shift, x, y);
  // Releasing the last button ends the mouse capture, whoever took it and
  // when: a control keeps the pointer while a button is held, not after.
  if (buttons_ == 0) host_.SetCaptureWindow(0);
  if (alive.expired() || !click || !control->EnabledOnForm()) return;
  if (Contains(control->VisibleOnForm(), x, y)) control->Control().UserControl_Click();
}

void UserInput::PointerMove(Form& form, int x, int y, int16_t shift) {
  MoveCursor(form, x, y);
  if (FormDesigner* designer = form.Designer()) {
    designer->PointerAt(FormDesigner::Pointer::Move, x, y, buttons_, shift, false);
    return;
  }
  HostedControl* control = buttons_ ? Pressed() : form.ControlAt(x, y);
  // Off every control, a control that holds the capture still hears.
  HostedControl* holder = host_.CaptureHolder();
  if (!control && holder && &holder->Owner() == &form) control = holder;
  if (!control) return;
  SendMouse(*control, MouseAction::Move, buttons_, shift, x, y);
}

}  // namespace kestu
