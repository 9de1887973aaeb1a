#include "kestu/desktop/KeyTable.h"

#include <SDL.h>

#include <array>
#include <utility>

#include "kestu/host/KeyStroke.h"

namespace kestu {

namespace {

using Entry = std::pair<SDL_Keycode, int16_t>;

// Keys whose code does not follow from their character. SDL's Delete is
// 127 (its ASCII), the host's is 46.
constexpr std::array kNamedKeys{
    Entry{SDLK_BACKSPACE, 8},
    Entry{SDLK_TAB, 9},
    Entry{SDLK_RETURN, 13},
    Entry{SDLK_KP_ENTER, 13},
    Entry{SDLK_ESCAPE, 27},
    Entry{SDLK_SPACE, 32},
    Entry{SDLK_PAGEUP, 33},
    Entry{SDLK_PAGEDOWN, 34},
    Entry{SDLK_END, 35},
    Entry{SDLK_HOME, 36},
    Entry{SDLK_LEFT, 37},
    Entry{SDLK_UP, 38},
    Entry{SDLK_RIGHT, 39},
    Entry{SDLK_DOWN, 40},
    Entry{SDLK_INSERT, 45},
    Entry{SDLK_DELETE, 46},
    Entry{SDLK_LSHIFT, 16},
    Entry{SDLK_RSHIFT, 16},
    Entry{SDLK_LCTRL, 17},
    Entry{SDLK_RCTRL, 17},
    Entry{SDLK_LALT, 18},
    Entry{SDLK_RALT, 18},
    Entry{SDLK_PAUSE, 19},
    Entry{SDLK_CAPSLOCK, 20},
    Entry{SDLK_NUMLOCKCLEAR, 144},
    // Punctuation, where a US keyboard has it.
    Entry{SDLK_SEMICOLON, 186},
    Entry{SDLK_EQUALS, 187},
    Entry{SDLK_COMMA, 188},
    Entry{SDLK_MINUS, 189},
    Entry{SDLK_PERIOD, 190},
    Entry{SDLK_SLASH, 191},
    Entry{SDLK_BACKQUOTE, 192},
    Entry{SDLK_LEFTBRACKET, 219},
    Entry{SDLK_BACKSLASH, 220},
    Entry{SDLK_RIGHTBRACKET, 221},
    Entry{SDLK_QUOTE, 222},
    // The key that carries "ç" on a Brazilian keyboard.
    Entry{0xE7, 186},
    // Keypad operators do not depend on NumLock.
    Entry{SDLK_KP_MULTIPLY, 106},
    Entry{SDLK_KP_PLUS, 107},
    Entry{SDLK_KP_MINUS, 109},
    Entry{SDLK_KP_DIVIDE, 111},
};

// Keypad keys: with NumLock on, then off.
struct KeypadEntry {
  SDL_Keycode key;
  int16_t num_lock_on;
  int16_t num_lock_off;
};
constexpr std::array kKeypad{
    KeypadEntry{SDLK_KP_0, 96, 45},       KeypadEntry{SDLK_KP_1, 97, 35},
    KeypadEntry{SDLK_KP_2, 98, 40},       KeypadEntry{SDLK_KP_3, 99, 34},
    KeypadEntry{SDLK_KP_4, 100, 37},      KeypadEntry{SDLK_KP_5, 101, 12},
    KeypadEntry{SDLK_KP_6, 102, 39},      KeypadEntry{SDLK_KP_7, 103, 36},
    KeypadEntry{SDLK_KP_8, 104, 38},      KeypadEntry{SDLK_KP_9, 105, 33},
    KeypadEntry{SDLK_KP_PERIOD, 110, 46},
};

constexpr int16_t kFirstFunctionKey = 112;  // F1

}  // namespace

int16_t VirtualKeyFor(int32_t sdl_keycode, bool num_lock) {
  if (sdl_keycode >= SDLK_0 && sdl_keycode <= SDLK_9) return static_cast<int16_t>(sdl_keycode);
  if (sdl_keycode >= SDLK_a && sdl_keycode <= SDLK_z) {
    return static_cast<int16_t>(sdl_keycode - SDLK_a + 'A');
  }
  if (sdl_keycode >= SDLK_F1 && sdl_keycode <= SDLK_F12) {
    return static_cast<int16_t>(kFirstFunctionKey + (sdl_keycode - SDLK_F1));
  }
  for (const auto& [key, code] : kNamedKeys) {
    if (key == sdl_keycode) return code;
  }
  for (const auto& entry : kKeypad) {
    if (entry.key == sdl_keycode) return num_lock ? entry.num_lock_on : entry.num_lock_off;
  }
  return 0;
}

int16_t ShiftBitsFor(uint16_t sdl_modifiers) {
  int16_t bits = 0;
  if (sdl_modifiers & KMOD_SHIFT) bits |= shift::kShift;
  if (sdl_modifiers & KMOD_CTRL) bits |= shift::kCtrl;
  if (sdl_modifiers & KMOD_ALT) bits |= shift::kAlt;
  return bits;
}

}  // namespace kestu
