#include "kestu/host/HostInput.h"

#include <cctype>
#include <vector>

#include "host/Units.h"
#include "kestu/foundation/Keys.h"
#include "kestu/foundation/Text.h"
#include "kestu/host/Form.h"
#include "kestu/host/Host.h"
#include "kestu/host/KeyStroke.h"
#include "raster/Clip.h"

namespace kestu {

void HostInput::KeyDown(HostedControl& control, int16_t key_code, int16_t shift) {
  if (!control.EnabledOnForm()) return;
  control.Control().UserControl_KeyDown(key_code, shift);
}

void HostInput::KeyPress(HostedControl& control, int16_t key_ascii) {
  if (!control.EnabledOnForm()) return;
  control.Control().UserControl_KeyPress(key_ascii);
}

void HostInput::KeyUp(HostedControl& control, int16_t key_code, int16_t shift) {
  if (!control.EnabledOnForm()) return;
  control.Control().UserControl_KeyUp(key_code, shift);
}

HostedControl* HostInput::AccessKeyOwner(const Form& form, int16_t key_code) {
  if (key_code <= 0 || key_code > 127 || !std::isalnum(key_code)) return nullptr;
  const int wanted = std::tolower(key_code);
  for (const auto& candidate : form.Controls()) {
    if (!candidate->ShownOnForm() || !candidate->EnabledOnForm()) continue;
    for (char key : candidate->Control().AccessKeys()) {
      if (std::tolower(static_cast<unsigned char>(key)) == wanted) return candidate.get();
    }
  }
  return nullptr;
}

bool HostInput::SendAccessKey(const Form& form, int16_t key_code, int16_t shift) {
  if ((shift & shift::kAlt) == 0) return false;
  HostedControl* owner = AccessKeyOwner(form, key_code);
  if (!owner) return false;
  // The character as typed: lower case unless Shift is held too.
  int16_t key_ascii = static_cast<int16_t>((shift & shift::kShift) ? std::toupper(key_code)
                                                                   : std::tolower(key_code));
  owner->Control().UserControl_AccessKeyPress(key_ascii);
  return true;
}

void HostInput::PressKey(HostedControl& control, int16_t key_code, int16_t shift) {
  if (SendAccessKey(control.Owner(), key_code, shift)) return;
  std::weak_ptr<int> alive = control.Lifetime();
  KeyDown(control, key_code, shift);
  if (alive.expired()) return;
  if (const int16_t character = CharacterOfKey(key_code)) {
    KeyPress(control, character);
    if (alive.expired()) return;
  }
  KeyUp(control, key_code, shift);
}

void HostInput::Type(HostedControl& control, std::string_view utf8) {
  std::weak_ptr<int> alive = control.Lifetime();
  for (char32_t character : DecodeUtf8(utf8)) {
    const KeyStroke stroke = KeyStrokeFor(character);
    const int16_t key_ascii = KeyAsciiFor(character);
    KeyDown(control, stroke.key_code, stroke.shift);
    if (alive.expired()) return;
    KeyPress(control, key_ascii);
    if (alive.expired()) return;
    KeyUp(control, stroke.key_code, stroke.shift);
    if (alive.expired()) return;
  }
}

void HostInput::TypeText(HostedControl& control, std::string_view utf8) {
  std::weak_ptr<int> alive = control.Lifetime();
  for (char32_t character : DecodeUtf8(utf8)) {
    KeyPress(control, KeyAsciiFor(character));
    if (alive.expired()) return;
  }
}

HostedControl& HostInput::MouseTarget(HostedControl& control, float& x, float& y) const {
  HostedControl* holder = host_.CaptureHolder();
  if (!holder || holder == &control) return control;
  if (&holder->Owner() == &control.Owner()) {
    // Same form: translate exactly, in twips.
    x += static_cast<float>(control.LeftOnForm() - holder->LeftOnForm());
    y += static_cast<float>(control.TopOnForm() - holder->TopOnForm());
  } else {
    const POINTAPI cursor = host_.CursorPos();
    const POINTAPI origin = host_.ControlScreenOrigin(*holder);
    x = static_cast<float>((cursor.x - origin.x) * holder->TwipsPerPixelX());
    y = static_cast<float>((cursor.y - origin.y) * holder->TwipsPerPixelY());
  }
  return *holder;
}

void HostInput::Mouse(HostedControl& control, MouseAction action, int16_t button, int16_t shift,
                      float x, float y) {
  const POINTAPI origin = host_.ControlScreenOrigin(control);
  // Held at the ends of int: a point 1E+15 twips away is far, not wrapped.
  host_.SetCursorPos(Saturate(int64_t{origin.x} + TwipsToPixels(x, control.TwipsPerPixelX())),
                     Saturate(int64_t{origin.y} + TwipsToPixels(y, control.TwipsPerPixelY())));
  HostedControl& target = MouseTarget(control, x, y);
  if (!target.EnabledOnForm()) return;
  UserControl& procedures = target.Control();
  switch (action) {
    case MouseAction::Down:
      procedures.UserControl_MouseDown(button, shift, x, y);
      break;
    case MouseAction::Up:
      procedures.UserControl_MouseUp(button, shift, x, y);
      break;
    case MouseAction::Move:
      procedures.UserControl_MouseMove(button, shift, x, y);
      break;
  }
}

void HostInput::Click(HostedControl& control, int16_t button, int16_t shift, float x, float y) {
  std::weak_ptr<int> alive = control.Lifetime();
  Mouse(control, MouseAction::Down, button, shift, x, y);
  if (alive.expired()) return;
  Mouse(control, MouseAction::Up, button, shift, x, y);
  if (alive.expired() || !control.EnabledOnForm()) return;
  control.Control().UserControl_Click();
}

void HostInput::DblClick(HostedControl& control, int16_t button, int16_t shift, float x, float y) {
  std::weak_ptr<int> alive = control.Lifetime();
  Click(control, button, shift, x, y);
  if (alive.expired() || !control.EnabledOnForm()) return;
  control.Control().UserControl_DblClick();
  if (alive.expired()) return;
  Mouse(control, MouseAction::Up, button, shift, x, y);
}

}  // namespace kestu
