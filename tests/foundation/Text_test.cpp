// The text rules every part of the library shares: UTF-8 with one policy
// for bytes that are not text, the "&" rule of captions, names that ignore
// case, and the KeyAscii of a character.

#include "kestu/foundation/Text.h"

#include <gtest/gtest.h>

#include "kestu/foundation/Keys.h"
#include "support/ExpectRuntimeError.h"

namespace kestu {
namespace {

TEST(Text, EachByteThatStartsNoCharacterIsOneReplacement) {
  struct Case {
    const char* bytes;
    std::u32string decoded;
  };
  const Case cases[] = {
      {"a\xC3\xA7", U"a\u00E7"},  // two bytes
      {"\xE2\x82\xAC\xF0\x9F\x98\x80", U"\u20AC\U0001F600"},
      {"\x80z", U"\uFFFDz"},                              // a stray continuation byte
      {"\xC3", U"\uFFFD"},                                // cut short at the end
      {"\xC3z", U"\uFFFDz"},                              // cut short before a character
      {"\xC0\xAF", U"\uFFFD\uFFFD"},                      // overlong
      {"\xE0\x80\x80", U"\uFFFD\uFFFD\uFFFD"},            // overlong: never U+0000
      {"\xED\xA0\x80", U"\uFFFD\uFFFD\uFFFD"},            // a surrogate
      {"\xF4\x90\x80\x80", U"\uFFFD\uFFFD\uFFFD\uFFFD"},  // past U+10FFFF
      {"\xFF", U"\uFFFD"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(DecodeUtf8(c.bytes), c.decoded) << c.bytes;
    EXPECT_EQ(CountCharacters(c.bytes), c.decoded.size()) << c.bytes;
  }
  EXPECT_EQ(EncodeUtf8(U"a\u00E7\u20AC\U0001F600"), "a\xC3\xA7\xE2\x82\xAC\xF0\x9F\x98\x80");
  EXPECT_EQ(EncodeUtf8(std::u32string(1, char32_t{0xD800})), "\xEF\xBF\xBD");
}

TEST(Text, AnAmpersandUnderlinesTheCharacterAfterIt) {
  struct Case {
    std::u32string caption;
    std::u32string shown;
    std::u32string underlined;
  };
  const Case cases[] = {
      {U"&Copiar", U"Copiar", U"C"}, {U"Co&lar", U"Colar", U"l"},
      {U"A && B", U"A & B", U""},    {U"&&&x", U"&x", U"x"},
      {U"end&", U"end", U""},        {U"&\u00E7a", U"\u00E7a", U"\u00E7"},
      {U"&a&b", U"ab", U"ab"},
  };
  for (const Case& c : cases) {
    std::u32string shown, underlined;
    for (const CaptionCharacter& ch : ParseCaption(c.caption)) {
      shown += ch.code_point;
      if (ch.underline) underlined += ch.code_point;
    }
    EXPECT_EQ(shown, c.shown);
    EXPECT_EQ(underlined, c.underlined);
  }
  EXPECT_EQ(AccessKeyOf("Co&lar"), U'l');
  EXPECT_EQ(AccessKeyOf("&\xC3\xA7"), U'\u00E7');
  EXPECT_EQ(AccessKeyOf("A && B"), std::nullopt);
}

TEST(Text, NamesIgnoreTheCaseOfLettersOnly) {
  EXPECT_TRUE(SameName("BorderWidth", "borderWIDTH"));
  EXPECT_FALSE(SameName("Border", "BorderWidth"));
  EXPECT_FALSE(SameName("a_", "a\x7F"));  // '_' is no lower-case letter
}

TEST(Text, AKeyAsciiHoldsCharactersUpToSixteenBits) {
  EXPECT_EQ(KeyAsciiFor(U'\u00E7'), 231);
  EXPECT_EQ(KeyAsciiFor(U'\u7FFF'), 0x7FFF);
  ExpectRuntimeError(6, [] { KeyAsciiFor(kReplacementCharacter); });
}

}  // namespace
}  // namespace kestu
