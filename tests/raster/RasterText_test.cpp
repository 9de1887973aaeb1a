#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "kestu/raster/FontEngine.h"
#include "kestu/raster/Raster.h"
#include "raster/PixelProbe.h"
#include "support/ExpectRuntimeError.h"
#include "support/Golden.h"

// Underline, bold and italic drawn without a file of their own are in the
// text_sample golden picture.

namespace kestu {
namespace {

using test::CountPixels;
using test::InkBounds;

constexpr Rgb kPaper = 0x00FFFFFF;
constexpr Rgb kInk = 0x00000000;
constexpr const char* kDejaVuSans = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

class RasterText : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { FontEngine::Instance().RegisterFamily("Test Sans", kDejaVuSans); }

  int Width(std::string_view text, const FontSpec& font) {
    return raster_.MeasureText(font, text).width;
  }
  int Width(std::string_view text) { return Width(text, font_); }

  FontSpec font_{"Test Sans", 11.0};
  Raster raster_{120, 40, kPaper};
};

TEST_F(RasterText, AStringMeasuresAsTheSumOfItsCharacters) {
  EXPECT_EQ(Width("ab"), Width("a") + Width("b"));
  EXPECT_EQ(Width("AV To"), Width("A") + Width("V") + Width(" ") + Width("T") + Width("o"));
  EXPECT_EQ(Width(""), 0);
  EXPECT_GT(Width("a"), 0);
}

// Every string, empty or hanging below the line, has the line height of
// its font, and what is drawn lies inside its extent.
TEST_F(RasterText, EveryStringHasTheLineHeightOfItsFontAndItsInkLiesInside) {
  const int height = raster_.MeasureText(font_, "M").height;
  EXPECT_GT(height, 8);
  EXPECT_LT(height, 20);
  for (const char* text : {"", "gjpq_", "..."}) {
    EXPECT_EQ(raster_.MeasureText(font_, text).height, height) << text;
  }
  EXPECT_GT(raster_.MeasureText({"Test Sans", 22.0}, "M").height, height + 8);
  const std::string_view sample = "Mgjpqy|(){}_WQ@";
  const TextExtent extent = raster_.MeasureText(font_, sample);
  raster_.DrawText(font_, sample, 7, 9, kInk, RasterOp::CopyPen);
  const auto ink = InkBounds(raster_, kPaper);
  ASSERT_TRUE(ink);
  EXPECT_GE(ink->left, 7);
  EXPECT_GE(ink->top, 9);
  EXPECT_LE(ink->right, 7 + extent.width);
  EXPECT_LE(ink->bottom, 9 + extent.height);
}

TEST_F(RasterText, StrikethroughCrossesTheLowerCaseLetters) {
  FontSpec struck = font_;
  struck.strikethrough = true;
  Raster raster(36, 18, kPaper);
  raster.DrawText(struck, "xx x", 2, 2, kInk, RasterOp::CopyPen);
  test::ExpectMatchesGolden(raster, "raster/strikethrough");
}

TEST_F(RasterText, XorTextTwiceLeavesNoTrace) {
  raster_.FillRect({0, 0, 60, 40}, 0x00336699, RasterOp::CopyPen);
  const Raster before = raster_;
  raster_.DrawText(font_, "Copying 42%", 3, 4, 0x00FFFFFF, RasterOp::XorPen);
  EXPECT_FALSE(test::SamePixels(raster_, before));
  raster_.DrawText(font_, "Copying 42%", 3, 4, 0x00FFFFFF, RasterOp::XorPen);
  EXPECT_TRUE(test::SamePixels(raster_, before));
}

// A corner of a larger raster shows what the small one must keep.
TEST_F(RasterText, TextIsClippedToTheRasterAtEveryEdge) {
  constexpr int kMargin = 20;
  for (auto [x, y] : {std::pair{-8, 0}, {4, -5}, {6, -2}, {-3, -4}}) {
    SCOPED_TRACE(testing::Message() << x << "," << y);
    Raster small(10, 6, kPaper);
    small.DrawText(font_, "WWW", x, y, kInk, RasterOp::CopyPen);
    Raster large(10 + 2 * kMargin, 6 + 2 * kMargin, kPaper);
    large.DrawText(font_, "WWW", x + kMargin, y + kMargin, kInk, RasterOp::CopyPen);
    Raster window(10, 6, kPaper);
    window.Blit(large, -kMargin, -kMargin);
    EXPECT_TRUE(test::SamePixels(small, window));
    EXPECT_GT(CountPixels(small, kInk), 0);
  }
  Raster untouched(10, 6, kPaper);
  untouched.DrawText(font_, "WWW", -1000000000, 2, kInk, RasterOp::CopyPen);
  untouched.DrawText(font_, "WWW", 3, 2000000000, kInk, RasterOp::CopyPen);
  untouched.DrawText(font_, "WWW", 2147483600, 2, kInk, RasterOp::CopyPen);
  EXPECT_EQ(CountPixels(untouched, kPaper), 60);
}

// Which bytes start no character is the text rules' own test; here only
// that each such byte shows as the replacement character.
TEST_F(RasterText, BadUtf8ShowsReplacementCharacters) {
  const int replacement = Width("\xEF\xBF\xBD");
  EXPECT_GT(replacement, 0);
  EXPECT_EQ(Width("a\xC3"), Width("a") + replacement);
  EXPECT_EQ(Width("\xC0\xAF"), 2 * replacement);
  raster_.DrawText(font_, "\x80\xBF\xF5\xF8", 2, 2, kInk, RasterOp::CopyPen);
  EXPECT_GT(CountPixels(raster_, kInk), 0);
}

// The desktop's interface families draw with Liberation Sans, real files
// and no synthetic style; installed families are found by their own names
// in any case; names only the system's font rules know (a metric-compatible
// alias) lead where those rules send them.
TEST(FontEngine, FamiliesResolveToTheirFiles) {
  struct Case {
    const char* family;
    bool bold, italic;
    const char* file;
  };
  for (const Case& c : {Case{"MS Sans Serif", false, false, "LiberationSans-Regular.ttf"},
                        {"ms sans serif", true, true, "LiberationSans-BoldItalic.ttf"},
                        {"Microsoft Sans Serif", false, false, "LiberationSans-Regular.ttf"},
                        {"Tahoma", true, true, "LiberationSans-BoldItalic.ttf"},
                        {"TAHOMA", false, false, "LiberationSans-Regular.ttf"},
                        {"Segoe UI", true, true, "LiberationSans-BoldItalic.ttf"},
                        {"Verdana", false, false, "LiberationSans-Regular.ttf"},
                        {"liberation mono", false, false, "LiberationMono-Regular.ttf"},
                        {"DejaVu Sans", true, false, "DejaVuSans-Bold.ttf"},
                        {"Arial", false, false, "LiberationSans-Regular.ttf"},
                        {"Courier New", false, true, "LiberationMono-Italic.ttf"}}) {
    const FontFile file = FontEngine::Instance().FileFor(c.family, c.bold, c.italic);
    EXPECT_EQ(file.path.filename(), c.file) << c.family;
    EXPECT_EQ(file.synthetic, SyntheticStyle{}) << c.family;
  }
}

TEST(FontEngine, AFamilyNothingMatchesFallsBackToAnInstalledFont) {
  const FontFile file = FontEngine::Instance().FileFor("No Such Family 1987", false, false);
  EXPECT_TRUE(std::filesystem::exists(file.path)) << file.path;
  Raster raster(40, 20, kPaper);
  raster.DrawText({"No Such Family 1987", 11.0}, "Abc", 1, 1, kInk, RasterOp::CopyPen);
  EXPECT_GT(CountPixels(raster, kInk), 10);
}

TEST(FontEngine, SizesOutOfReasonStillMeasure) {
  Raster raster(10, 10, kPaper);
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(raster.MeasureText({"Tahoma", nan}, "M").height,
            raster.MeasureText({"Tahoma", 11.0}, "M").height);
  EXPECT_GT(raster.MeasureText({"Tahoma", 0.0}, "M").height, 0);
  EXPECT_GT(raster.MeasureText({"Tahoma", -5.0}, "M").height, 0);
  EXPECT_LT(raster.MeasureText({"Tahoma", 1e9}, "M").height, 4000);
}

TEST(FontEngine, RegisteringAMissingFileIsFileNotFound) {
  ExpectRuntimeError(
      err::kFileNotFound,
      [] { FontEngine::Instance().RegisterFamily("Ghost", "/nonexistent/ghost.ttf"); },
      "/nonexistent/ghost.ttf");
}

}  // namespace
}  // namespace kestu
