#include "kestu/raster/Raster.h"

#include <gtest/gtest.h>

#include <climits>
#include <vector>

#include "raster/PixelProbe.h"
#include "support/Golden.h"

namespace kestu {
namespace {

using test::CountPixels;

constexpr Rgb kPaper = 0x00FFFFFF;
constexpr Rgb kInk = 0x00102030;

// Every pixel of `raster` is `inside` within `area` and `outside` elsewhere.
void ExpectOnly(const Raster& raster, const PixelRect& area, Rgb inside, Rgb outside) {
  for (int y = 0; y < raster.Height(); ++y) {
    for (int x = 0; x < raster.Width(); ++x) {
      const bool in = x >= area.left && x < area.right && y >= area.top && y < area.bottom;
      ASSERT_EQ(raster.GetPixel(x, y), in ? inside : outside) << "at (" << x << ", " << y << ")";
    }
  }
}

// A fill covers its rectangle with the right and bottom edges left out,
// clipped at every edge; an empty, inverted or outside one draws nothing.
TEST(RasterFill, CoversTheRectangleClippedWithItsRightAndBottomLeftOut) {
  constexpr PixelRect kNothing{0, 0, 0, 0};
  struct Case {
    PixelRect asked;
    PixelRect drawn;
  };
  const Case cases[] = {
      {{2, 3, 7, 5}, {2, 3, 7, 5}},
      {{-3, 2, 4, 5}, {0, 2, 4, 5}},        // left
      {{2, -3, 5, 4}, {2, 0, 5, 4}},        // top
      {{6, 2, 14, 5}, {6, 2, 10, 5}},       // right
      {{2, 5, 5, 20}, {2, 5, 5, 8}},        // bottom
      {{-50, -50, 50, 50}, {0, 0, 10, 8}},  // all round
      {{INT_MIN, INT_MIN, INT_MAX, INT_MAX}, {0, 0, 10, 8}},
      {{4, 4, 4, 6}, kNothing},
      {{4, 4, 6, 4}, kNothing},
      {{6, 6, 2, 2}, kNothing},
      {{-5, 0, 0, 8}, kNothing},
      {{10, 0, 15, 8}, kNothing},
      {{0, -5, 10, 0}, kNothing},
      {{0, 8, 10, 12}, kNothing},
  };
  for (const Case& c : cases) {
    Raster raster(10, 8, kPaper);
    raster.FillRect(c.asked, kInk, RasterOp::CopyPen);
    ExpectOnly(raster, c.drawn, kInk, kPaper);
  }
}

TEST(RasterFill, KeepsTheAlphaByteOfThePenOutOfThePixels) {
  Raster raster(2, 2, kPaper);
  raster.FillRect({0, 0, 2, 2}, 0xFF112233, RasterOp::CopyPen);
  EXPECT_EQ(raster.GetPixel(1, 1), 0x00112233u);
}

// The host's line leaves out its end point in every direction, halves step
// away from the start, and four lines joined end to start close a box with
// each pixel drawn once (XOR, so no corner cancels itself).
TEST(RasterLine, EndPointsHalvesAndABoxOfFourLines) {
  struct Ends {
    int x1, y1, x2, y2;
  };
  const Ends lines[] = {{0, 0, 5, 0}, {5, 2, 1, 2}, {3, 1, 3, 4}, {3, 4, 3, 1}, {1, 1, 4, 4},
                        {4, 4, 1, 1}, {5, 0, 2, 3}, {0, 0, 4, 2}, {0, 0, 1, 3}, {2, 2, 2, 2}};
  Raster raster(40, 20, kPaper);
  for (int i = 0; i < 10; ++i) {
    const int x = i % 5 * 8, y = i / 5 * 6;
    const Ends& e = lines[i];
    raster.DrawLine(x + e.x1, y + e.y1, x + e.x2, y + e.y2, kInk, RasterOp::CopyPen);
  }
  const int l = 1, t = 13, r = 7, b = 18;
  raster.DrawLine(l, t, r, t, kPaper, RasterOp::XorPen);
  raster.DrawLine(r, t, r, b, kPaper, RasterOp::XorPen);
  raster.DrawLine(r, b, l, b, kPaper, RasterOp::XorPen);
  raster.DrawLine(l, b, l, t, kPaper, RasterOp::XorPen);
  test::ExpectMatchesGolden(raster, "raster/lines");
}

// A diagonal clipped at every edge is in the far ends' test below.
TEST(RasterLine, ClipsKeepingTheSlope) {
  Raster steep(10, 10, kPaper);
  steep.DrawLine(12, -10, 0, 14, kInk, RasterOp::CopyPen);  // two rows per column
  Raster whole(40, 40, kPaper);
  whole.DrawLine(12 + 15, -10 + 15, 0 + 15, 14 + 15, kInk, RasterOp::CopyPen);
  for (int y = 0; y < 10; ++y) {
    for (int x = 0; x < 10; ++x) {
      EXPECT_EQ(steep.GetPixel(x, y), whole.GetPixel(x + 15, y + 15)) << x << "," << y;
    }
  }
}

TEST(RasterLine, FarEndsCostNothingAndDrawOnlyWhatCrosses) {
  Raster raster(10, 10, kPaper);
  raster.DrawLine(INT_MIN, 5, INT_MIN + 20, 7, kInk, RasterOp::CopyPen);
  raster.DrawLine(-100, 20, 100, 30, kInk, RasterOp::CopyPen);
  raster.DrawLine(5, INT_MIN, 5, -1, kInk, RasterOp::CopyPen);
  raster.DrawLine(INT_MAX, 3, INT_MIN, 3, kInk, RasterOp::CopyPen);  // the row, end left out
  raster.DrawLine(4, INT_MAX, 4, INT_MIN, kInk, RasterOp::CopyPen);  // the column
  raster.DrawLine(INT_MAX, INT_MAX, 0, INT_MAX, kInk, RasterOp::CopyPen);
  EXPECT_EQ(CountPixels(raster, kInk), 19);
  raster.FillRect({0, 0, 10, 10}, kPaper, RasterOp::CopyPen);
  raster.DrawLine(INT_MIN, INT_MIN, INT_MAX, INT_MAX, kInk, RasterOp::CopyPen);
  EXPECT_EQ(CountPixels(raster, kInk), 10);
  for (int i = 0; i < 10; ++i) EXPECT_EQ(raster.GetPixel(i, i), kInk) << i;
  raster.DrawLine(9 + (1 << 30), -(1 << 30), 9 - (1 << 30), 1 << 30, kPaper, RasterOp::XorPen);
  EXPECT_EQ(CountPixels(raster, 0), 10);  // the other diagonal
  EXPECT_EQ(raster.GetPixel(0, 9), 0u);
}

// Pen 1100 and destination 1010 in every nibble: each operation's result
// spells its own number less one. Short runs, which lines and text use,
// are in the raster_ops golden picture.
TEST(RasterOps, AllSixteenOnAKnownPair) {
  constexpr Rgb kPen = 0xCCCCCC;
  constexpr Rgb kDst = 0xAAAAAA;
  const struct {
    RasterOp op;
    Rgb result;
  } table[] = {
      {RasterOp::Blackness, 0x000000},  {RasterOp::NotMergePen, 0x111111},
      {RasterOp::MaskNotPen, 0x222222}, {RasterOp::NotCopyPen, 0x333333},
      {RasterOp::MaskPenNot, 0x444444}, {RasterOp::Invert, 0x555555},
      {RasterOp::XorPen, 0x666666},     {RasterOp::NotMaskPen, 0x777777},
      {RasterOp::MaskPen, 0x888888},    {RasterOp::NotXorPen, 0x999999},
      {RasterOp::Nop, 0xAAAAAA},        {RasterOp::MergeNotPen, 0xBBBBBB},
      {RasterOp::CopyPen, 0xCCCCCC},    {RasterOp::MergePenNot, 0xDDDDDD},
      {RasterOp::MergePen, 0xEEEEEE},   {RasterOp::Whiteness, 0xFFFFFF},
  };
  for (const auto& row : table) {
    SCOPED_TRACE(static_cast<int>(row.op));
    Raster raster(20, 2, kDst);
    raster.FillRect({0, 0, 18, 1}, kPen, row.op);  // long enough for the wide loop
    raster.SetPixel(0, 1, kPen, row.op);
    EXPECT_EQ(raster.GetPixel(17, 0), row.result);
    EXPECT_EQ(raster.GetPixel(0, 1), row.result);
    EXPECT_EQ(raster.GetPixel(18, 0), kDst);  // guard
  }
}

TEST(RasterPixel, SetsOnePointAndIgnoresPointsOutside) {
  Raster raster(3, 3, kPaper);
  raster.SetPixel(1, 2, kInk, RasterOp::CopyPen);
  for (auto [x, y] : {std::pair{-1, 0}, {3, 0}, {0, -1}, {0, 3}, {INT_MIN, INT_MAX}}) {
    raster.SetPixel(x, y, kInk, RasterOp::CopyPen);
  }
  ExpectOnly(raster, {1, 2, 2, 3}, kInk, kPaper);
  EXPECT_EQ(raster.GetPixel(-1, 0), 0u);
  EXPECT_EQ(raster.GetPixel(3, 3), 0u);
}

// A picture at a point, stretched and shrunk by nearest pixel, clipped at
// each edge and drawn through an operation; pixels less than half opaque
// are holes, and an empty size draws nothing.
TEST(RasterPicture, DrawsByNearestPixelWithHolesClippedAndThroughTheOperation) {
  const StdPicture quad(2, 2, {0xFFFF0000, 0xFF00FF00, 0x800000FF, 0x7FFFFF00});
  const StdPicture stripes(4, 1, {0xFF000000, 0xFF0000FF, 0xFF00FF00, 0xFFFF0000});
  Raster raster(24, 10, kPaper);
  raster.FillRect({12, 0, 18, 4}, 0x00FFFF00, RasterOp::CopyPen);
  raster.DrawPicture(quad, 1, 1, 2, 2, RasterOp::CopyPen);
  raster.DrawPicture(quad, 4, 1, 4, 6, RasterOp::CopyPen);
  raster.DrawPicture(stripes, 9, 1, 2, 1, RasterOp::CopyPen);
  raster.DrawPicture(stripes, -1, 9, 4, 1, RasterOp::CopyPen);
  raster.DrawPicture(quad, 21, 7, 4, 6, RasterOp::CopyPen);
  raster.DrawPicture(quad, 13, 1, 2, 2, RasterOp::XorPen);
  raster.DrawPicture(quad, 0, 0, 0, 2, RasterOp::CopyPen);
  raster.DrawPicture(quad, 0, 0, 2, -2, RasterOp::CopyPen);
  raster.DrawPicture(quad, INT_MAX, INT_MAX, INT_MAX, INT_MAX, RasterOp::CopyPen);
  test::ExpectMatchesGolden(raster, "raster/pictures");
}

TEST(RasterCompositing, BlitCopiesAtAnOffsetClipped) {
  Raster child(3, 2, kInk);
  Raster form(5, 4, kPaper);
  form.Blit(child, 3, 3);
  ExpectOnly(form, {3, 3, 5, 4}, kInk, kPaper);
  form.Blit(child, -10, 0);
  form.Blit(child, INT_MAX, INT_MAX);
  ExpectOnly(form, {3, 3, 5, 4}, kInk, kPaper);
}

TEST(RasterCompositing, ResizeKeepsWhatFitsAndFillsTheRest) {
  Raster raster(3, 3, kPaper);
  raster.SetPixel(1, 1, kInk, RasterOp::CopyPen);
  raster.SetPixel(2, 2, kInk, RasterOp::CopyPen);
  raster.Resize(2, 4, 0x00ABCDEF);
  EXPECT_EQ(raster.Width(), 2);
  EXPECT_EQ(raster.Height(), 4);
  EXPECT_EQ(raster.GetPixel(1, 1), kInk);
  EXPECT_EQ(raster.GetPixel(1, 2), kPaper);
  EXPECT_EQ(raster.GetPixel(0, 3), 0x00ABCDEFu);
  raster.Resize(-1, 5, kPaper);
  EXPECT_EQ(raster.Pixels().size(), 0u);
}

}  // namespace
}  // namespace kestu
