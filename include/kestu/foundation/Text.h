#pragma once
// Text as the host and the controls handle it, with one rule each: UTF-8
// decoding (a byte that starts no character stands for U+FFFD alone),
// encoding and counting; the "&" access-key rule of captions; names
// compared without regard to case, as the host's late binding does.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestu {

inline constexpr char32_t kReplacementCharacter = 0xFFFD;

// ---- UTF-8 ----

// The length of the character that starts at `text[pos]`, or 0 when the
// byte there starts none: a stray continuation byte, a sequence cut short,
// an overlong form, a surrogate, or a value past U+10FFFF.
constexpr size_t ValidSequenceLength(std::string_view text, size_t pos) {
  const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(pos);
  if (lead < 0x80) return 1;
  size_t length = 0;
  char32_t value = 0;
  char32_t minimum = 0;
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2, value = lead & 0x1F, minimum = 0x80;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3, value = lead & 0x0F, minimum = 0x800;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4, value = lead & 0x07, minimum = 0x10000;
  } else {
    return 0;
  }
  if (pos + length > text.size()) return 0;
  for (size_t i = 1; i < length; ++i) {
    const unsigned char next = byte(pos + i);
    if ((next & 0xC0) != 0x80) return 0;
    value = (value << 6) | (next & 0x3F);
  }
  if (value < minimum || (value >= 0xD800 && value <= 0xDFFF) || value > 0x10FFFF) return 0;
  return length;
}

// The character starting at `text[pos]`; advances `pos` past it. A byte
// that starts no character is U+FFFD on its own, and the next byte is read
// afresh, so a bad string still shows every good character.
constexpr char32_t NextCodePoint(std::string_view text, size_t& pos) {
  const size_t length = ValidSequenceLength(text, pos);
  if (length == 0) {
    ++pos;
    return kReplacementCharacter;
  }
  const auto lead = static_cast<unsigned char>(text[pos]);
  char32_t value = length == 1 ? lead : lead & (0x7F >> length);
  for (size_t i = 1; i < length; ++i) {
    value = (value << 6) | (static_cast<unsigned char>(text[pos + i]) & 0x3F);
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

std::u32string DecodeUtf8(std::string_view utf8);
// Appends `code_point` as UTF-8; a value that is no character (a
// surrogate, past U+10FFFF) is appended as U+FFFD.
void AppendUtf8(char32_t code_point, std::string& out);
std::string EncodeUtf8(std::u32string_view text);
// How many characters DecodeUtf8 would give.
size_t CountCharacters(std::string_view utf8);

// ---- Captions and access keys ----

// One character of a caption as it shows: `underline` marks its access key.
struct CaptionCharacter {
  char32_t code_point;
  bool underline;
};

// The prefix rule: "&" is hidden and underlines the character after it;
// "&&" is one "&"; an "&" at the end is hidden and underlines nothing.
std::vector<CaptionCharacter> ParseCaption(std::u32string_view caption);
// The first character a caption underlines, if any.
std::optional<char32_t> AccessKeyOf(std::string_view caption);

// ---- Case ----

// The host's case conversion: ASCII and the Latin-1 letters ("ç" and "Ç",
// "ÿ" and "Ÿ"); every other character stays as it is.
char32_t UpperCase(char32_t c);
char32_t LowerCase(char32_t c);
std::u32string UpperCase(std::u32string_view text);
std::u32string LowerCase(std::u32string_view text);

// ---- Names ----

// Equal but for the case of ASCII letters.
bool SameName(std::string_view a, std::string_view b);

// The entry of `names` that `name` stands for, as the list spells it.
template <typename Names>
std::optional<std::string_view> KnownName(const Names& names, std::string_view name) {
  for (std::string_view known : names) {
    if (SameName(known, name)) return known;
  }
  return std::nullopt;
}

}  // namespace kestu
