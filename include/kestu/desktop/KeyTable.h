#pragma once
// The window system's keys in the host's terms: one explicit table from
// SDL key codes to the host's virtual key codes, and the Shift bits.

#include <cstdint>

namespace kestu {

// The host's virtual key code for an SDL key code, or 0 for a key the host
// has no code for. Keypad keys are digits with NumLock on and the
// navigation keys under them with it off.
int16_t VirtualKeyFor(int32_t sdl_keycode, bool num_lock);

// The host's Shift bits (1 Shift, 2 Ctrl, 4 Alt) for SDL's modifier state.
int16_t ShiftBitsFor(uint16_t sdl_modifiers);

}  // namespace kestu
