#include "kestu/raster/SystemText.h"

#include <gtest/gtest.h>

#include "kestu/raster/FontEngine.h"
#include "kestu/raster/Raster.h"
#include "raster/PixelProbe.h"

namespace kestu {
namespace {

using test::CountPixels;
using test::InkBounds;
using test::SamePixels;

constexpr Rgb kPaper = 0x00FFFFFF;
constexpr Rgb kInk = 0x00000080;
constexpr const char* kDejaVuSans = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

class SystemText : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { FontEngine::Instance().RegisterFamily("Test Sans", kDejaVuSans); }

  // The system call on a fresh raster.
  Raster Drawn(std::string_view text, RECT rect, int32_t flags, int32_t length = -1) {
    Raster raster(kWidth, kHeight, kPaper);
    DrawSystemText(raster, font_, text, length, rect, flags, kInk);
    return raster;
  }
  // The surface's own text at a point, for comparison.
  Raster Printed(std::string_view text, int x, int y) {
    Raster raster(kWidth, kHeight, kPaper);
    raster.DrawText(font_, text, x, y, kInk, RasterOp::CopyPen);
    return raster;
  }
  int Width(std::string_view text) { return probe_.MeasureText(font_, text).width; }
  int LineHeight() { return probe_.MeasureText(font_, "").height; }

  static constexpr int kWidth = 120;
  static constexpr int kHeight = 60;
  FontSpec font_{"Test Sans", 11.0};
  Raster probe_{1, 1};
};

// Prefixes at the start, mid-word and doubled are in the text_sample
// golden picture.
TEST_F(SystemText, ATrailingAmpersandVanishesAndNoPrefixDrawsThemAll) {
  const RECT box{4, 6, 100, 40};
  EXPECT_TRUE(SamePixels(Drawn("Save&", box, 0), Printed("Save", 4, 6)));
  EXPECT_TRUE(SamePixels(Drawn("&Save", box, dt::kNoPrefix), Printed("&Save", 4, 6)));
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

  Raster two_lines = Drawn("ab\ncd", {3, 2, 100, 50}, 0);
  Raster expected = Printed("ab", 3, 2);
  expected.DrawText(font_, "cd", 3, 2 + LineHeight(), kInk, RasterOp::CopyPen);
  EXPECT_TRUE(SamePixels(two_lines, expected));
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

TEST_F(SystemText, LengthCountsCharactersAndNegativeTakesAll) {
  const RECT box{2, 2, 110, 50};
  EXPECT_TRUE(SamePixels(Drawn("Hello", box, 0, 3), Printed("Hel", 2, 2)));
  EXPECT_TRUE(SamePixels(Drawn("Hello", box, 0, -1), Printed("Hello", 2, 2)));
  EXPECT_TRUE(SamePixels(Drawn("Hello", box, 0, 99), Printed("Hello", 2, 2)));
  EXPECT_TRUE(SamePixels(Drawn("\xC3\xA7\xC3\xA3o", box, 0, 2), Printed("\xC3\xA7\xC3\xA3", 2, 2)));
  EXPECT_EQ(CountPixels(Drawn("Hello", box, 0, 0), kInk), 0);
}

TEST_F(SystemText, AlignsWithinTheRectangle) {
  const RECT box{10, 5, 90, 45};
  const int w = Width("Ok");
  const int h = LineHeight();
  EXPECT_TRUE(SamePixels(Drawn("Ok", box, dt::kCenter), Printed("Ok", 10 + (80 - w) / 2, 5)));
  EXPECT_TRUE(SamePixels(Drawn("Ok", box, dt::kRight), Printed("Ok", 90 - w, 5)));
  EXPECT_TRUE(SamePixels(Drawn("Ok", box, dt::kSingleLine | dt::kVCenter),
                         Printed("Ok", 10, 5 + (40 - h) / 2)));
  EXPECT_TRUE(
      SamePixels(Drawn("Ok", box, dt::kSingleLine | dt::kBottom), Printed("Ok", 10, 45 - h)));
  // Vertical placement is for a single line only.
  EXPECT_TRUE(SamePixels(Drawn("Ok", box, dt::kVCenter | dt::kBottom), Printed("Ok", 10, 5)));
}

TEST_F(SystemText, ClipsToTheRectangleUnlessNoClip) {
  const RECT narrow{20, 10, 30, 14};
  const Raster clipped = Drawn("Wide caption", narrow, 0);
  const auto ink = InkBounds(clipped, kPaper);
  ASSERT_TRUE(ink);
  EXPECT_GE(ink->left, 20);
  EXPECT_LE(ink->right, 30);
  EXPECT_GE(ink->top, 10);
  EXPECT_LE(ink->bottom, 14);
  EXPECT_TRUE(
      SamePixels(Drawn("Wide caption", narrow, dt::kNoClip), Printed("Wide caption", 20, 10)));
  EXPECT_EQ(CountPixels(Drawn("Wide caption", {20, 10, 20, 30}, 0), kInk), 0);
}

TEST_F(SystemText, ReturnsTheHeightOfTheText) {
  RECT rect{0, 0, 100, 50};
  EXPECT_EQ(DrawSystemText(probe_, font_, "a\nb\nc", -1, rect, 0, kInk), 3 * LineHeight());
  EXPECT_EQ(rect, (RECT{0, 0, 100, 50}));  // only measuring changes the rectangle
  EXPECT_EQ(DrawSystemText(probe_, font_, "abc", -1, rect, dt::kNoClip, kInk), LineHeight());
}

TEST_F(SystemText, UnderlinedFontUnderlinesEachLine) {
  FontSpec underlined = font_;
  underlined.underline = true;
  Raster raster(kWidth, kHeight, kPaper);
  RECT rect{0, 0, 100, 50};
  DrawSystemText(raster, underlined, "ab\nabc", -1, rect, 0, kInk);
  Raster expected(kWidth, kHeight, kPaper);
  expected.DrawText(underlined, "ab", 0, 0, kInk, RasterOp::CopyPen);
  expected.DrawText(underlined, "abc", 0, LineHeight(), kInk, RasterOp::CopyPen);
  EXPECT_TRUE(SamePixels(raster, expected));
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
