#include "kestu/foundation/Text.h"

#include <algorithm>

#include "kestu/foundation/Integer.h"
#include "kestu/foundation/Keys.h"

namespace kestu {

std::u32string DecodeUtf8(std::string_view utf8) {
  std::u32string text;
  text.reserve(utf8.size());
  ForEachCodePoint(utf8, [&](char32_t c) { text.push_back(c); });
  return text;
}

void AppendUtf8(char32_t c, std::string& out) {
  if ((c >= 0xD800 && c <= 0xDFFF) || c > 0x10FFFF) c = kReplacementCharacter;
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (c >> 18));
    out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

std::string EncodeUtf8(std::u32string_view text) {
  std::string utf8;
  utf8.reserve(text.size());
  for (char32_t c : text) AppendUtf8(c, utf8);
  return utf8;
}

size_t CountCharacters(std::string_view utf8) {
  size_t count = 0;
  ForEachCodePoint(utf8, [&](char32_t) { ++count; });
  return count;
}

std::vector<CaptionCharacter> ParseCaption(std::u32string_view caption) {
  std::vector<CaptionCharacter> shown;
  shown.reserve(caption.size());
  bool underline_next = false;
  for (size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == U'&') {
      if (i + 1 < caption.size() && caption[i + 1] == U'&') {
        shown.push_back({U'&', underline_next});
        underline_next = false;
        ++i;
      } else {
        underline_next = true;
      }
      continue;
    }
    shown.push_back({caption[i], underline_next});
    underline_next = false;
  }
  return shown;
}

std::optional<char32_t> AccessKeyOf(std::string_view caption) {
  for (const CaptionCharacter& c : ParseCaption(DecodeUtf8(caption))) {
    if (c.underline) return c.code_point;
  }
  return std::nullopt;
}

int16_t KeyAsciiFor(char32_t character) {
  return ToInt16(static_cast<int64_t>(character));
}

bool SameName(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(),
                                            [&](char x, char y) { return lower(x) == lower(y); });
}

// ---- Case ----

namespace {

constexpr char32_t kSmallYDiaeresis = 0xFF;
constexpr char32_t kCapitalYDiaeresis = 0x178;
constexpr char32_t kDivision = 0xF7;  // between the Latin-1 small letters, not one
constexpr char32_t kTimes = 0xD7;     // between the capitals, not one

}  // namespace

char32_t UpperCase(char32_t c) {
  if (c >= U'a' && c <= U'z') return c - 32;
  if (c >= 0xE0 && c <= 0xFE && c != kDivision) return c - 32;
  if (c == kSmallYDiaeresis) return kCapitalYDiaeresis;
  return c;
}

char32_t LowerCase(char32_t c) {
  if (c >= U'A' && c <= U'Z') return c + 32;
  if (c >= 0xC0 && c <= 0xDE && c != kTimes) return c + 32;
  if (c == kCapitalYDiaeresis) return kSmallYDiaeresis;
  return c;
}

std::u32string UpperCase(std::u32string_view text) {
  std::u32string out(text);
  for (char32_t& c : out) c = UpperCase(c);
  return out;
}

std::u32string LowerCase(std::u32string_view text) {
  std::u32string out(text);
  for (char32_t& c : out) c = LowerCase(c);
  return out;
}

}  // namespace kestu
