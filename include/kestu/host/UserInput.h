#pragma once
// What a user's keyboard and pointer do to a form, by the host's rules,
// the same for a real window and a script: keys go to the focused control
// (Tab and Shift+Tab move the focus, Alt with a control's access key goes
// to that control), the pointer goes to the control holding the capture or
// else to the innermost control under it, a left press moves the focus,
// the control pressed keeps the pointer until every button is up, Click
// comes on a release over the control pressed, and a second left press
// soon after the first on the same control is a double click. On a form
// being designed (Form::Designer) the keys and the pointer go to the
// designer instead, and no control hears them. A window system only
// translates its events into these calls.

#include <cstdint>
#include <optional>
#include <string_view>

#include "kestu/host/HostInput.h"

namespace kestu {

class Host;
class Form;
class HostedControl;

class UserInput {
 public:
  // Two left presses on one control at most this far apart (on the
  // host's clock) and this many pixels apart make a double click.
  static constexpr int kDoubleClickMilliseconds = 500;
  static constexpr int kDoubleClickPixels = 4;
  // How far off its form a pointer can be, in pixels.
  static constexpr int kPointerReach = 1 << 24;

  explicit UserInput(Host& host) : host_(host), input_(host) {}

  // A key (the host's key code and Shift bits) went down or up on `form`.
  // Down: Tab moves the focus; with Alt, a control's access key goes to
  // that control; Enter goes to the form's default control and Escape to
  // its cancel control, as UserControl_AccessKeyPress with KeyAscii 13 or
  // 27, whichever control has the focus (when the form has no such
  // control shown and enabled, the key is an ordinary key); else KeyDown
  // to the focused control and the KeyPress the stroke sends by itself
  // (KeyPressOfKey). True when the form took the key for itself (Tab, an
  // access key, Enter or Escape for a button): no text of it is typed.
  // Up: KeyUp to whichever control has the focus now, except the up of an
  // Enter or Escape the form took, which belongs to no one.
  bool KeyDown(Form& form, int16_t key_code, int16_t shift);
  void KeyUp(Form& form, int16_t key_code, int16_t shift);
  // Text typed on `form`: one KeyPress per character to the focused
  // control.
  void Text(Form& form, std::string_view utf8);
  // A whole key stroke: down, the character it types (Space, a digit, a
  // letter; upper case with Shift) unless Ctrl or Alt is held, up.
  void Press(Form& form, int16_t key_code, int16_t shift);
  // Each character of `utf8` as a keyboard types it: Tab, Enter (a line
  // break, "\n" or "\r") and Escape ("\x1B") are strokes of their keys
  // (Press), any other character is the stroke of its key (KeyStrokeFor)
  // with the character as its text.
  void Keys(Form& form, std::string_view utf8);

  // The pointer's button (the host's bits: 1 left, 2 right, 4 middle)
  // went down or up at pixel (x, y) of `form`. `double_click` is the
  // window system's verdict on a press; without one the host's rule
  // decides.
  void PointerDown(Form& form, int x, int y, int16_t button, int16_t shift,
                   std::optional<bool> double_click = std::nullopt);
  void PointerUp(Form& form, int x, int y, int16_t button, int16_t shift);
  void PointerMove(Form& form, int x, int y, int16_t shift);

  // The focus to the next control in tab order that can take it (the
  // previous with `backwards`), round the end of the form; the first one
  // when none of the form's has it.
  void MoveFocus(Form& form, bool backwards);

  // True while a button is held: the window keeps the pointer.
  bool ButtonsHeld() const { return buttons_ != 0; }

 private:
  HostedControl* Focused(const Form& form) const;
  // Enter to the default control, Escape to the cancel control: true when
  // it went.
  bool SendToFormButton(const Form& form, int16_t key_code, int16_t shift);
  HostedControl* Pressed() const;
  bool IsDoubleClick(const HostedControl& control, int x, int y);
  // Holds (x, y) within the pointer's reach and puts the screen cursor
  // there.
  void MoveCursor(const Form& form, int& x, int& y);
  void SendMouse(HostedControl& control, MouseAction action, int16_t button, int16_t shift, int x,
                 int y);

  Host& host_;
  HostInput input_;
  int16_t buttons_ = 0;        // the buttons held
  int16_t button_key_ = 0;     // an Enter or Escape down that a form's button took
  int32_t pressed_hwnd_ = 0;   // the control the held buttons went down on
  bool double_click_ = false;  // the held press is the second of a double click
  // The last left press that may start a double click.
  struct LeftPress {
    int32_t hwnd = 0;
    int64_t at_ms = 0;
    int x = 0;
    int y = 0;
  };
  std::optional<LeftPress> last_press_;
};

}  // namespace kestu
