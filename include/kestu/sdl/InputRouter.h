#pragma once
// The window system's keyboard and mouse, turned into the host's input
// procedures for one form at a time: keys to the focused control through
// the key table, typed text as KeyPress, Tab moving the focus, mouse
// buttons to the control under the pointer (which keeps the mouse while a
// button is held), clicks and double clicks as the host sends them.

#include <cstdint>
#include <string_view>

#include "kestu/host/HostInput.h"

namespace kestu {

class Host;
class Form;
class HostedControl;

class InputRouter {
 public:
  explicit InputRouter(Host& host) : host_(host), input_(host) {}

  // A key went down or up in `form`'s window (SDL key code and modifiers).
  void KeyDown(Form& form, int32_t sdl_keycode, uint16_t sdl_modifiers);
  void KeyUp(Form& form, int32_t sdl_keycode, uint16_t sdl_modifiers);
  // Text typed in `form`'s window: one KeyPress per character.
  void Text(Form& form, std::string_view utf8);

  // A mouse button (1 left, 2 middle, 3 right, as SDL numbers them) at
  // pixel (x, y) of `form`'s client area; `clicks` is 2 for the second
  // press of a double click.
  void MouseButton(Form& form, bool down, int sdl_button, int clicks, int x, int y,
                   uint16_t sdl_modifiers);
  // The pointer moved to (x, y) of `form`'s client area.
  void MouseMove(Form& form, int x, int y, uint16_t sdl_modifiers);

  // Tab: the focus to the next control in tab order that can take it
  // (previous with Shift), round the end of the form.
  void MoveFocus(Form& form, bool backwards);

  // True while a mouse button is held: the window keeps the pointer.
  bool ButtonsHeld() const { return buttons_ != 0; }

 private:
  HostedControl* Focused(const Form& form) const;
  HostedControl* ControlAt(const Form& form, int x, int y) const;
  HostedControl* Pressed() const;
  void SendMouse(HostedControl& control, MouseAction action, int16_t button, int16_t shift, int x,
                 int y);

  Host& host_;
  HostInput input_;
  int16_t buttons_ = 0;        // the host's bits of the buttons held
  int32_t pressed_hwnd_ = 0;   // the control the held buttons went down on
  bool double_click_ = false;  // the held press is the second of a double click
};

}  // namespace kestu
