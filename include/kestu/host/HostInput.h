#pragma once
// Keyboard and mouse input as the host delivers it to a control's input
// procedures: keys to the control named (scripts test controls directly,
// focused or not), mouse to the control under the pointer or to the one
// holding the capture. A disabled control gets no input.

#include <cstdint>
#include <string_view>

namespace kestu {

class Host;
class Form;
class HostedControl;

enum class MouseAction { Down, Up, Move };

class HostInput {
 public:
  explicit HostInput(Host& host) : host_(host) {}

  // One raw procedure each.
  void KeyDown(HostedControl& control, int16_t key_code, int16_t shift);
  void KeyPress(HostedControl& control, int16_t key_ascii);
  void KeyUp(HostedControl& control, int16_t key_code, int16_t shift);

  // A whole stroke: KeyDown, the KeyPress the key types (Backspace, Enter,
  // Escape, Space), KeyUp. With Alt held, a key that is a control's access
  // key on the form goes to that control's UserControl_AccessKeyPress
  // instead.
  void PressKey(HostedControl& control, int16_t key_code, int16_t shift);

  // Each character of `utf8` as a keyboard sends it: KeyDown, KeyPress,
  // KeyUp (see KeyStrokeFor). A byte that is not UTF-8 is U+FFFD, which
  // no KeyAscii holds: error 6.
  void Type(HostedControl& control, std::string_view utf8);
  // Only the KeyPress of each character of `utf8`: what a window system's
  // text input delivers between the key's own KeyDown and KeyUp.
  void TypeText(HostedControl& control, std::string_view utf8);

  // One mouse procedure; x and y are twips of `control`, and the screen
  // cursor follows them. With the capture held by another control, that
  // control gets the procedure, the point translated to it.
  void Mouse(HostedControl& control, MouseAction action, int16_t button, int16_t shift, float x,
             float y);
  // Down, up, then UserControl_Click.
  void Click(HostedControl& control, int16_t button, int16_t shift, float x, float y);
  // Down, up, Click, UserControl_DblClick, up: what a double click sends.
  void DblClick(HostedControl& control, int16_t button, int16_t shift, float x, float y);

  // With Alt in `shift`, a key that is an access key on `form` goes to its
  // control's UserControl_AccessKeyPress: true when it went.
  static bool SendAccessKey(const Form& form, int16_t key_code, int16_t shift);
  // The first control in `form`'s tab order, shown and enabled, whose
  // access keys include `key_code` (a letter or digit, either case).
  static HostedControl* AccessKeyOwner(const Form& form, int16_t key_code);

 private:
  // The control that gets the mouse at (x, y) of `control`, and the point
  // in its own twips.
  HostedControl& MouseTarget(HostedControl& control, float& x, float& y) const;

  Host& host_;
};

}  // namespace kestu
