#pragma once
// The host's key codes, Shift bits and mouse button bits, as the key and
// mouse procedures receive them, and the character a KeyPress carries.

#include <cstdint>

namespace kestu {

// Virtual key codes; letters and digits are their upper-case ASCII codes.
namespace key {
inline constexpr int16_t kBackspace = 8;
inline constexpr int16_t kTab = 9;
inline constexpr int16_t kEnter = 13;
inline constexpr int16_t kShift = 16;
inline constexpr int16_t kControl = 17;
inline constexpr int16_t kAlt = 18;
inline constexpr int16_t kEscape = 27;
inline constexpr int16_t kSpace = 32;
inline constexpr int16_t kPageUp = 33;
inline constexpr int16_t kPageDown = 34;
inline constexpr int16_t kEnd = 35;
inline constexpr int16_t kHome = 36;
inline constexpr int16_t kLeft = 37;
inline constexpr int16_t kUp = 38;
inline constexpr int16_t kRight = 39;
inline constexpr int16_t kDown = 40;
inline constexpr int16_t kInsert = 45;
inline constexpr int16_t kDelete = 46;
}  // namespace key

// The `Shift` argument's bits.
namespace shift {
inline constexpr int16_t kShift = 1;
inline constexpr int16_t kCtrl = 2;
inline constexpr int16_t kAlt = 4;
}  // namespace shift

// The `Button` argument's bits.
namespace button {
inline constexpr int16_t kLeft = 1;
inline constexpr int16_t kRight = 2;
inline constexpr int16_t kMiddle = 4;
}  // namespace button

// The KeyAscii a typed character arrives as. KeyAscii is 16 bits: a
// character past U+7FFF (U+FFFD, which stands for a byte that is not text,
// among them) cannot be typed, and is error 6.
int16_t KeyAsciiFor(char32_t character);

}  // namespace kestu
