#include "kestu/host/KeyStroke.h"

#include <string_view>

namespace kestu {

namespace {

// Symbols typed with Shift held on a US keyboard.
constexpr std::u32string_view kShiftedSymbols = U"~!@#$%^&*()_+{}|:\"<>?";

}  // namespace

KeyStroke KeyStrokeFor(char32_t c) {
  if (c >= U'0' && c <= U'9') return {static_cast<int16_t>(c), 0};
  if (c >= U'A' && c <= U'Z') return {static_cast<int16_t>(c), shift::kShift};
  if (c >= U'a' && c <= U'z') return {static_cast<int16_t>(c - U'a' + U'A'), 0};
  const int16_t shift = kShiftedSymbols.find(c) != std::u32string_view::npos ? shift::kShift : 0;
  switch (c) {
    case U' ':
      return {32, 0};
    case U',':
      return {188, 0};
    case U'-':
      return {189, 0};
    case U'.':
      return {190, 0};
    case U'+':
      return {187, shift::kShift};
    case U'\u00E7':
      return {186, 0};  // ç
    case U'\u00C7':
      return {186, shift::kShift};  // Ç
    default:
      return {0, shift};
  }
}

int16_t CharacterOfKey(int16_t key_code) {
  switch (key_code) {
    case 8:
    case 13:
    case 27:
    case 32:
      return key_code;
    default:
      return 0;
  }
}

int16_t KeyPressOfKey(int16_t key_code, int16_t shift) {
  // Space is left to text input, which carries it.
  if (key_code != 32) {
    if (const int16_t character = CharacterOfKey(key_code)) return character;
  }
  const bool ctrl_only = (shift & shift::kCtrl) && !(shift & shift::kAlt);
  if (ctrl_only && key_code >= 'A' && key_code <= 'Z') {
    return static_cast<int16_t>(key_code - 'A' + 1);
  }
  return 0;
}

}  // namespace kestu
