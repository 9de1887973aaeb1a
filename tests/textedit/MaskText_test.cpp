// The mask rules on their own: the character test, literals, padding, the
// merge, and what assigning and reading the text, a new mask and losing
// the focus do.

#include "textedit/MaskText.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "kestu/foundation/Keys.h"
#include "kestu/foundation/RuntimeError.h"
#include "kestu/foundation/Text.h"
#include "kestu/host/Host.h"
#include "kestu/textedit/KestuTextEdit.h"
#include "support/ExpectRuntimeError.h"

namespace kestu {
namespace {

// A box's members, with the values of a new box.
struct Box {
  std::u32string text, mask, fill_char, default_value;
  int16_t max_length = 30;
  bool include_literals = true;
  int16_t text_style = ccNormal;
  bool allow_space_char = true;

  MaskText Rules() {
    return MaskText({text, mask, max_length, include_literals, text_style, fill_char,
                     allow_space_char, default_value});
  }
};

std::u32string U(std::string_view utf8) {
  return DecodeUtf8(utf8);
}

TEST(MaskText, IsValidCharTestsAndRewritesByTheMaskCharacter) {
  struct Row {
    const char* mask;
    const char* text;  // already stored
    const char* typed;
    int position;
    bool accepted;
    bool beep;
    const char* stored;  // the character as rewritten
  };
  const Row rows[] = {
      {"", "", "é", 1, true, false, "é"},     // no mask: anything, anywhere
      {"9 9", "", "q", 2, true, false, "q"},  // a mask space takes anything
      {"99", "", "q", 5, true, false, "q"},   // so does a place past the end
      {"9", "", "7", 1, true, false, "7"},   {"9", "", ".", 1, true, false, "."},
      {"9", "", " ", 1, true, false, " "},   {"9", "", "x", 1, false, true, "x"},
      {"#", "", "5", 1, true, false, "5"},   {"#", "", ".", 1, true, false, ","},
      {"#", "1,", ".", 1, false, true, "."},  // one decimal comma only
      {"#", "", " ", 1, false, true, " "},   {"A", "", "b", 1, true, false, "B"},
      {"a", "", "B", 1, true, false, "b"},   {"A", "", " ", 1, true, false, " "},
      {"A", "", "3", 1, false, true, "3"},   {"A", "", "é", 1, false, true, "é"},  // by code
      {"C", "", "ç", 1, true, false, "Ç"},   {"c", "", "Q", 1, true, false, "q"},
      {"X", "", "%", 1, true, false, "%"},   {"(", "", "(", 1, false, false, "("},  // literal
      {"", "", "", 1, true, false, ""},
  };
  for (const Row& row : rows) {
    Box box;
    box.mask = U(row.mask);
    box.text = U(row.text);
    std::u32string typed = U(row.typed);
    const CharVerdict verdict = box.Rules().IsValidChar(typed, static_cast<int16_t>(row.position));
    EXPECT_EQ(verdict.accepted, row.accepted) << row.mask << " " << row.typed;
    EXPECT_EQ(verdict.beep, row.beep) << row.mask << " " << row.typed;
    EXPECT_EQ(EncodeUtf8(typed), row.stored) << row.mask << " " << row.typed;
  }
}

TEST(MaskText, ASpaceIsRefusedEverywhereWhenSpacesAreNotAllowed) {
  Box box;
  box.allow_space_char = false;
  std::u32string space = U" ";
  EXPECT_TRUE(box.Rules().IsValidChar(space, 1).beep);
  ExpectRuntimeError(err::kInvalidProcedureCall, [&] {
    std::u32string a = U"a";
    box.Rules().IsValidChar(a, 0);
  });
}

TEST(MaskText, LiteralsAreStrippedAndCountedWithAMaskSpaceAsOne) {
  Box box;
  box.mask = U"(99) 9-9";
  box.text = U"(12) 3";
  EXPECT_EQ(box.Rules().StripLiterals(), U"123 ");  // a missing place reads as a space
  EXPECT_FALSE(box.Rules().IsEmpty());
  box.text = U"(  )  - ";
  EXPECT_TRUE(box.Rules().IsEmpty());
  box.text = U"(12) 3-45678";
  EXPECT_EQ(box.Rules().StripLiterals(), U"12345678");  // beyond the mask is kept
  EXPECT_EQ(box.Rules().CountLiterals(), 0);            // fits MaxLength: none counted
  box.max_length = 5;
  EXPECT_EQ(box.Rules().CountLiterals(), 4);  // "(", ")", " ", "-"
  box.mask.clear();
  EXPECT_EQ(box.Rules().StripLiterals(), box.text);
  EXPECT_EQ(box.Rules().CountLiterals(), 0);
}

TEST(MaskText, AssignedTextIsCutByMaxLengthLessTheLiterals) {
  Box box;
  box.mask = U"99-99";
  box.max_length = 5;
  EXPECT_FALSE(box.Rules().AssignText(U"1234567"));
  EXPECT_EQ(box.text, U"1234");  // 5 less one literal
  EXPECT_TRUE(box.Rules().AssignText(U"   "));
  box.max_length = 1;
  box.mask = U"--9";
  ExpectRuntimeError(err::kInvalidProcedureCall, [&] { box.Rules().AssignText(U"12345"); });
}

// Reading Text pads only a text that is not blank; assigning a style pads
// a blank one too, into MaxLength fill characters. The scripts show the
// rest of the styles.
TEST(MaskText, OnlyAssigningAStylePadsABlankText) {
  Box box;
  box.max_length = 4;
  box.text_style = ccPadLeft;
  box.fill_char = U"*";
  EXPECT_EQ(box.Rules().ReadText(), U"");
  box.Rules().ApplyTextStyle();
  EXPECT_EQ(box.text, U"****");
}

TEST(MaskText, ANewMaskStripsTheOldLiteralsAndWidensMaxLength) {
  Box box;
  box.mask = U"99/99";
  box.text = U"12/34";
  box.max_length = 4;
  box.Rules().AssignMask(U"(999) 999-9999");
  EXPECT_EQ(box.text, U"1234");
  EXPECT_EQ(box.max_length, 14);
  box.Rules().AssignMask(U"9");
  EXPECT_EQ(box.max_length, 14);  // never narrowed
}

TEST(MaskText, TheMergeSpreadsTheTextOverThePlaceholders) {
  struct Row {
    const char* mask;
    const char* text;
    int max_length;
    const char* merged;
  };
  const Row rows[] = {
      {"9-99", "1234", 30, "1-234"},                   // the fourth digit stays behind the mask
      {"99/99/9999", "01/02/2003", 30, "01/02/2003"},  // literals in place are used up
      {"99/99", "12", 30, "12/  "},                    // missing places are spaces
      {"(99)", "123456", 4, "(12)"},                   // too long before the merge: cut
      {"(99)", "12", 2, "(12)"},                       // not too long before: longer after
      {"", "abc", 30, "abc"},
  };
  for (const Row& row : rows) {
    Box box;
    box.mask = U(row.mask);
    box.text = U(row.text);
    box.max_length = static_cast<int16_t>(row.max_length);
    box.Rules().ApplyMask();
    EXPECT_EQ(EncodeUtf8(box.text), row.merged) << row.mask << " " << row.text;
  }
}

TEST(MaskText, LosingTheFocusPadsAndFallsBackToTheDefault) {
  Box box;
  box.max_length = 6;
  box.text_style = ccPadLeft;
  box.fill_char = U"0";
  box.text = U"12";
  EXPECT_EQ(box.Rules().LoseFocus(), std::optional<int16_t>(6));
  EXPECT_EQ(box.text, U"000012");

  Box blank;
  blank.mask = U"99/99";
  blank.text = U"  /  ";
  blank.default_value = U"xx";  // taken as it stands
  EXPECT_EQ(blank.Rules().LoseFocus(), std::nullopt);
  EXPECT_EQ(blank.text, U"xx");
}

// Whatever is typed or pasted into a box with whatever mask, its text,
// merged, keeps the mask's literals where they are, holds at each
// placeholder only what the character test takes there (or a space where
// nothing was taken), and gives one character per placeholder without its
// literals.
TEST(MaskText, TypedOrPastedTextKeepsTheMaskWhateverIsTyped) {
  std::mt19937 random(20261123);
  const std::u32string places = U"#9XAaCc-/() .,:";
  const std::string typed_from = "09a Z.,-%/x\xC3\xA7\xC3\xA9";  // and ç, é
  Host host;
  Form& form = host.CreateForm("Form1", 6000, 3000);
  for (int round = 0; round < 300; ++round) {
    HostedControl& site = host.NewControl(form, KestuTextEdit::Info(), "t");
    auto& box = static_cast<KestuTextEdit&>(site.Control());
    std::u32string mask;
    const int length = 1 + static_cast<int>(random() % 12);
    for (int i = 0; i < length; ++i) mask.push_back(places[random() % places.size()]);
    box.SetProperty("Mask", Variant(EncodeUtf8(mask)));
    box.SetProperty("Text", Variant(""));
    host.SetFocus(&site);
    const std::u32string input = DecodeUtf8(typed_from);
    for (int i = 0; i < 2 * length; ++i) {
      const std::string c = EncodeUtf8(std::u32string(1, input[random() % input.size()]));
      if (random() % 4 == 0) {
        host.SetClipboardText(c + c);
        host.User().KeyDown(form, 'V', shift::kCtrl);
      } else {
        host.User().Text(form, c);
      }
    }
    box.SetProperty("LeftText", Variant(int16_t{0}));  // one more redraw merges the text
    const std::u32string text = box.StoredText();
    SCOPED_TRACE(EncodeUtf8(mask).append(" -> ").append(EncodeUtf8(text)));
    ASSERT_GE(text.size(), mask.size());
    int placeholders = 0;
    for (int i = 1; i <= length; ++i) {
      const char32_t m = mask[static_cast<size_t>(i - 1)];
      const char32_t stored = text[static_cast<size_t>(i - 1)];
      if (!MaskText::IsMaskChar(m)) {
        EXPECT_EQ(stored, m);
        continue;
      }
      ++placeholders;
      if (stored == U' ') continue;  // a place nothing was taken at
      // The test as the character met it: the text before it, with no
      // decimal comma of its own yet.
      Box alone;
      alone.mask = mask;
      alone.text = text.substr(0, static_cast<size_t>(i - 1));
      std::u32string again(1, stored);
      EXPECT_TRUE(alone.Rules().IsValidChar(again, static_cast<int16_t>(i)).accepted);
      EXPECT_EQ(again, std::u32string(1, stored));
    }
    EXPECT_EQ(DecodeUtf8(box.GetProperty("TextWithoutMask").ToString()).size(),
              static_cast<size_t>(placeholders));
    host.RemoveControl(site);
  }
}

}  // namespace
}  // namespace kestu
