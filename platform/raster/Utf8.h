#pragma once
// Decoding of the UTF-8 text the controls draw. Bytes that do not form a
// character show as U+FFFD one by one, so a bad string still draws.

#include <cstddef>
#include <string_view>

namespace kestu {

inline constexpr char32_t kReplacementCharacter = 0xFFFD;

// The character starting at `text[pos]`; advances `pos` past it.
constexpr char32_t NextCodePoint(std::string_view text, size_t& pos) {
  const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(pos);
  int length = 0;
  char32_t value = 0;
  char32_t minimum = 0;
  if (lead < 0x80) {
    ++pos;
    return lead;
  } else if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2, value = lead & 0x1F, minimum = 0x80;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3, value = lead & 0x0F, minimum = 0x800;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4, value = lead & 0x07, minimum = 0x10000;
  } else {
    ++pos;
    return kReplacementCharacter;
  }
  if (pos + length > text.size()) {
    ++pos;
    return kReplacementCharacter;
  }
  for (int i = 1; i < length; ++i) {
    const unsigned char next = byte(pos + i);
    if ((next & 0xC0) != 0x80) {
      ++pos;
      return kReplacementCharacter;
    }
    value = (value << 6) | (next & 0x3F);
  }
  // Overlong forms, surrogates and values past the last plane are not text.
  if (value < minimum || (value >= 0xD800 && value <= 0xDFFF) || value > 0x10FFFF) {
    ++pos;
    return kReplacementCharacter;
  }
  pos += length;
  return value;
}

// Calls `fn(code_point)` for each character of `text`.
template <typename Fn>
constexpr void ForEachCodePoint(std::string_view text, Fn&& fn) {
  size_t pos = 0;
  while (pos < text.size()) fn(NextCodePoint(text, pos));
}

}  // namespace kestu
