#pragma once
// Which key a typed character comes from, as a keyboard reports it.

#include <cstdint>

#include "kestu/foundation/Keys.h"

namespace kestu {

struct KeyStroke {
  int16_t key_code = 0;
  int16_t shift = 0;
  friend bool operator==(const KeyStroke&, const KeyStroke&) = default;
};

// The key code and Shift state that type `character`: digits and letters
// use their upper-case code; "," "-" "." "+" are 188 189 190 187; space is
// 32; "ç" and "Ç" are 186, the key that carries them on a Brazilian
// keyboard. Shift is set for upper-case letters and for the symbols a US
// keyboard shifts. Any other character has code 0.
KeyStroke KeyStrokeFor(char32_t character);

// The key codes whose stroke also types a character (Backspace, Enter,
// Escape, Space): that character's code, or 0.
int16_t CharacterOfKey(int16_t key_code);

// The KeyPress code a key stroke sends by itself, because the window
// system's text input never carries control characters: Backspace, Enter,
// Escape, and Ctrl with a letter (its control character, Ctrl+C is 3).
// 0 for every other stroke; their characters come as text.
int16_t KeyPressOfKey(int16_t key_code, int16_t shift);

}  // namespace kestu
