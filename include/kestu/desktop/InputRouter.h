#pragma once
// The window system's keyboard and mouse in the host's terms: SDL's key
// codes through the one key table, its modifiers as Shift bits, its
// buttons as the host's button bits, each event handed to the host's
// UserInput, which applies the same rules to scripts.

#include <cstdint>
#include <string_view>

namespace kestu {

class Host;
class Form;

class InputRouter {
 public:
  explicit InputRouter(Host& host) : host_(host) {}

  // A key went down or up in `form`'s window (SDL key code and modifiers).
  // True when the form took the key down for itself (UserInput::KeyDown):
  // the text it would type is not the focused control's.
  bool KeyDown(Form& form, int32_t sdl_keycode, uint16_t sdl_modifiers);
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

  // True while a mouse button is held: the window keeps the pointer.
  bool ButtonsHeld() const;

 private:
  Host& host_;
};

}  // namespace kestu
