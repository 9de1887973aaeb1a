#include "kestu/desktop/InputRouter.h"

#include <SDL.h>

#include "kestu/desktop/KeyTable.h"
#include "kestu/foundation/Keys.h"
#include "kestu/host/Host.h"

namespace kestu {

namespace {

int16_t ButtonBit(int sdl_button) {
  switch (sdl_button) {
    case SDL_BUTTON_LEFT:
      return button::kLeft;
    case SDL_BUTTON_RIGHT:
      return button::kRight;
    case SDL_BUTTON_MIDDLE:
      return button::kMiddle;
    default:
      return 0;
  }
}

int16_t KeyCode(int32_t sdl_keycode, uint16_t sdl_modifiers) {
  return VirtualKeyFor(sdl_keycode, (sdl_modifiers & KMOD_NUM) != 0);
}

}  // namespace

bool InputRouter::KeyDown(Form& form, int32_t sdl_keycode, uint16_t sdl_modifiers) {
  return host_.User().KeyDown(form, KeyCode(sdl_keycode, sdl_modifiers),
                              ShiftBitsFor(sdl_modifiers));
}

void InputRouter::KeyUp(Form& form, int32_t sdl_keycode, uint16_t sdl_modifiers) {
  host_.User().KeyUp(form, KeyCode(sdl_keycode, sdl_modifiers), ShiftBitsFor(sdl_modifiers));
}

void InputRouter::Text(Form& form, std::string_view utf8) {
  host_.User().Text(form, utf8);
}

void InputRouter::MouseButton(Form& form, bool down, int sdl_button, int clicks, int x, int y,
                              uint16_t sdl_modifiers) {
  const int16_t button = ButtonBit(sdl_button);
  const int16_t shift = ShiftBitsFor(sdl_modifiers);
  if (down) {
    // The window system's own double-click rule decides for its clicks.
    host_.User().PointerDown(form, x, y, button, shift, clicks >= 2);
  } else {
    host_.User().PointerUp(form, x, y, button, shift);
  }
}

void InputRouter::MouseMove(Form& form, int x, int y, uint16_t sdl_modifiers) {
  host_.User().PointerMove(form, x, y, ShiftBitsFor(sdl_modifiers));
}

bool InputRouter::ButtonsHeld() const {
  return host_.User().ButtonsHeld();
}

}  // namespace kestu
