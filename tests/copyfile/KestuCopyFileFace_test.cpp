// Pictures of the progress bar: the "0%" caption at run time, the design
// time half bar, and a bar at 57% whose edge runs through the caption.

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "copyfile/CopyFileHarness.h"
#include "kestu/copyfile/KestuCopyFile.h"
#include "support/Golden.h"

namespace kestu {
namespace {

using copytest::CopyFileHarness;
using copytest::PatternBytes;
using copytest::TempFolder;
using copytest::WriteFile;

namespace fs = std::filesystem;

constexpr Rgb kWhite = 0xFFFFFF;  // window background
constexpr Rgb kNavy = 0x000080;   // highlight

void ExpectGolden(const Raster& face, const std::string& name) {
  test::ExpectMatchesGolden(face, "copyfile/" + name);
}

// Columns [first, last) of the face, counting pixels of one colour.
int CountIn(const Raster& face, int first, int last, Rgb color) {
  int count = 0;
  for (int y = 0; y < face.Height(); ++y) {
    for (int x = first; x < last; ++x) count += face.GetPixel(x, y) == color;
  }
  return count;
}

bool OnlyTwoColours(const Raster& face) {
  for (Rgb pixel : face.Pixels()) {
    if (pixel != kWhite && pixel != kNavy) return false;
  }
  return true;
}

TEST(KestuCopyFileFace, RunTimeShowsZeroPercentCaption) {
  CopyFileHarness host;
  const Raster& face = host.Face();
  EXPECT_TRUE(OnlyTwoColours(face));
  // A caption and nothing of a bar beyond the zero-width box's one column.
  EXPECT_GT(CountIn(face, 1, face.Width(), kNavy), 10);
  EXPECT_EQ(CountIn(face, 1, face.Width() / 3, kNavy), 0);
  ExpectGolden(face, "progress_0");
}

TEST(KestuCopyFileFace, DesignTimeShowsHalfBar) {
  CopyFileHarness host(/*user_mode=*/false);
  const Raster& face = host.Face();
  EXPECT_TRUE(OnlyTwoColours(face));
  EXPECT_EQ(CountIn(face, face.Width() / 2 + 1, face.Width(), kNavy) > 0, true);  // "%" sign
  EXPECT_EQ(CountIn(face, 0, 10, kWhite), 0);  // solid bar at the left
  ExpectGolden(face, "progress_50");
}

TEST(KestuCopyFileFace, CaptionPixelsUnderTheBarAreInverted) {
  TempFolder dir;
  WriteFile(dir / "src", PatternBytes(100 * 1024));
  CopyFileHarness host(/*user_mode=*/true, /*width=*/1200);  // narrow: the caption spans the edge
  host.Copier().SetProperty("BlockSize", Variant(Block_1K));
  std::optional<Raster> at_57;
  host.Copier().Progress.Connect([&](int16_t percent, int16_t& cancel) {
    if (percent != 57) return;
    at_57 = host.Face();
    cancel = 1;
  });
  host.Copy(dir / "src", dir / "dst");
  ASSERT_TRUE(at_57.has_value());

  const Raster& face = *at_57;
  const int bar_end = 47;  // 57% of 80 pixels, rounded, both corners of the box taken in
  EXPECT_TRUE(OnlyTwoColours(face));
  EXPECT_EQ(CountIn(face, 0, bar_end, kNavy) + CountIn(face, 0, bar_end, kWhite),
            bar_end * face.Height());
  // The caption straddles the edge: white where it lies on the bar, navy
  // beyond it.
  EXPECT_GT(CountIn(face, face.Width() / 3, bar_end, kWhite), 10);
  EXPECT_GT(CountIn(face, bar_end, face.Width(), kNavy), 10);
  EXPECT_EQ(CountIn(face, 0, face.Width() / 3, kWhite), 0);
  ExpectGolden(face, "progress_57");
}

}  // namespace
}  // namespace kestu
