#include "kestu/raster/SystemText.h"

#include <gtest/gtest.h>

#include "kestu/raster/FontEngine.h"
#include "kestu/raster/Raster.h"
#include "raster/PixelProbe.h"
#include "support/Golden.h"

namespace kestu {
namespace {

using test::CountPixels;
using test::SamePixels;

constexpr Rgb kPaper = 0x00FFFFFF;
constexpr Rgb kInk = 0x00000080;
constexpr const char* kDejaVuSans = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

class SystemText : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { FontEngine::Instance().RegisterFamily("Test Sans", kDejaVuSans); }

  int Width(std::string_view text) { return probe_.MeasureText(font_, text).width; }
  int LineHeight() { return probe_.MeasureText(font_, "").height; }

  static constexpr int kWidth = 120;
  static constexpr int kHeight = 60;
  FontSpec font_{"Test Sans", 11.0};
  Raster probe_{1, 1};
};

// Each box of the golden picture shows one rule: a trailing "&" vanishes
// and dt::kNoPrefix draws them all (prefixes at the start, mid-word and
// doubled are in the text_sample picture); lines break at "\n"; the length
// counts characters; the text aligns within the rectangle, vertically only
// on a single line; it is clipped to the rectangle unless dt::kNoClip; an
// underlined font underlines each line.
TEST_F(SystemText, DrawsEachRuleInItsBox) {
  struct Box {
    const char* text;
    RECT rect;
    int32_t flags;
    int32_t length = -1;
  };
  const Box boxes[] = {
      {"Save&", {4, 2, 76, 18}, 0},
      {"&Save", {80, 2, 156, 18}, dt::kNoPrefix},
      {"ab\ncd", {4, 20, 40, 50}, 0},
      {"Hello", {44, 20, 80, 36}, 0, 3},
      {"\xC3\xA7\xC3\xA3o", {44, 36, 80, 52}, 0, 2},
      {"Hello", {44, 54, 80, 70}, 0, 99},
      {"Hello", {84, 20, 120, 36}, 0, 0},
      {"Ok", {84, 36, 156, 52}, dt::kCenter},
      {"Ok", {124, 20, 156, 36}, dt::kRight},
      {"Ok", {4, 72, 40, 102}, dt::kSingleLine | dt::kVCenter},
      {"Ok", {44, 72, 80, 102}, dt::kSingleLine | dt::kBottom},
      {"Ok", {84, 72, 120, 102}, dt::kVCenter | dt::kBottom},
      {"Wide caption", {124, 104, 134, 108}, 0},
      {"Wide caption", {124, 80, 124, 100}, 0},
      {"Wide caption", {84, 56, 94, 60}, dt::kNoClip},
      {"Wide caption", {4, 104, 4, 118}, dt::kNoClip},
  };
  Raster raster(160, 150, kPaper);
  for (const Box& box : boxes) {
    RECT rect = box.rect;
    DrawSystemText(raster, font_, box.text, box.length, rect, box.flags, kInk);
  }
  FontSpec underlined = font_;
  underlined.underline = true;
  RECT rect{84, 112, 156, 146};
  DrawSystemText(raster, underlined, "ab\nabc", -1, rect, 0, kInk);
  test::ExpectMatchesGolden(raster, "raster/system_text");
}

TEST_F(SystemText, CalcRectMeasuresWithoutDrawing) {
  RECT rect{10, 20, 10, 20};
  Raster raster(kWidth, kHeight, kPaper);
  const int32_t height =
      DrawSystemText(raster, font_, "Hello\nWorld, wide", -1, rect, dt::kCalcRect, kInk);
  EXPECT_EQ(height, 2 * LineHeight());
  EXPECT_EQ(rect, (RECT{10, 20, 10 + Width("World, wide"), 20 + 2 * LineHeight()}));
  EXPECT_EQ(CountPixels(raster, kPaper), kWidth * kHeight);

  RECT prefixed{0, 0, 0, 0};
  DrawSystemText(raster, font_, "&File", -1, prefixed, dt::kCalcRect, kInk);
  EXPECT_EQ(prefixed.Right, Width("File"));
  RECT empty{5, 5, 50, 50};
  EXPECT_EQ(DrawSystemText(raster, font_, "", -1, empty, dt::kCalcRect, kInk), LineHeight());
  EXPECT_EQ(empty, (RECT{5, 5, 5, 5 + LineHeight()}));
}

TEST_F(SystemText, LinesBreakAtNewlinesUnlessSingleLine) {
  RECT crlf{0, 0, 0, 0};
  RECT lf{0, 0, 0, 0};
  RECT single{0, 0, 0, 0};
  DrawSystemText(probe_, font_, "ab\r\ncd\r\n", -1, crlf, dt::kCalcRect, kInk);
  DrawSystemText(probe_, font_, "ab\ncd\n", -1, lf, dt::kCalcRect, kInk);
  DrawSystemText(probe_, font_, "ab\ncd", -1, single, dt::kCalcRect | dt::kSingleLine, kInk);
  EXPECT_EQ(crlf, lf);
  EXPECT_EQ(lf.Bottom, 3 * LineHeight());
  EXPECT_EQ(single.Bottom, LineHeight());
}

TEST_F(SystemText, WordBreakWrapsAtSpacesToTheRectangle) {
  RECT rect{0, 0, Width("one two"), 0};
  DrawSystemText(probe_, font_, "one two three", -1, rect, dt::kCalcRect | dt::kWordBreak, kInk);
  EXPECT_EQ(rect.Bottom, 2 * LineHeight());
  EXPECT_EQ(rect.Right, Width("one two"));
  RECT narrow{0, 0, 1, 0};
  DrawSystemText(probe_, font_, "one two", -1, narrow, dt::kCalcRect | dt::kWordBreak, kInk);
  EXPECT_EQ(narrow.Bottom, 2 * LineHeight());  // a long word keeps its own line
}

TEST_F(SystemText, ReturnsTheHeightOfTheText) {
  RECT rect{0, 0, 100, 50};
  EXPECT_EQ(DrawSystemText(probe_, font_, "a\nb\nc", -1, rect, 0, kInk), 3 * LineHeight());
  EXPECT_EQ(rect, (RECT{0, 0, 100, 50}));  // only measuring changes the rectangle
  EXPECT_EQ(DrawSystemText(probe_, font_, "abc", -1, rect, dt::kNoClip, kInk), LineHeight());
}

TEST(FocusRect, TwiceRestoresEveryPixel) {
  Raster raster(12, 9, kPaper);
  for (int y = 0; y < 9; ++y) {
    for (int x = 0; x < 12; ++x)
      raster.SetPixel(x, y, 0x00123456u * (x + 3 * y), RasterOp::CopyPen);
  }
  const Raster before = raster;
  for (const PixelRect& rect :
       {PixelRect{2, 2, 10, 7}, PixelRect{3, 1, 4, 8}, PixelRect{1, 4, 11, 5},
        PixelRect{5, 5, 6, 6}, PixelRect{-4, -4, 6, 6}}) {
    DrawSystemFocusRect(raster, rect);
    EXPECT_FALSE(SamePixels(raster, before));
    DrawSystemFocusRect(raster, rect);
    EXPECT_TRUE(SamePixels(raster, before));
  }
}

TEST(FocusRect, EmptyOrFarRectanglesDrawNothing) {
  Raster raster(6, 6, kPaper);
  DrawSystemFocusRect(raster, {2, 2, 2, 5});
  DrawSystemFocusRect(raster, {4, 4, 1, 1});
  DrawSystemFocusRect(raster, {INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX});
  EXPECT_EQ(CountPixels(raster, kPaper), 36);
}

}  // namespace
}  // namespace kestu
