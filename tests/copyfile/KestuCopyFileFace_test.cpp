// Pictures of the progress bar: the "0%" caption at run time, the design
// time half bar, and a bar at 57% whose edge runs through the caption, its
// pixels inverted where they lie on the bar.

#include <gtest/gtest.h>

#include <optional>

#include "copyfile/CopyFileHarness.h"
#include "kestu/copyfile/KestuCopyFile.h"
#include "support/Golden.h"

namespace kestu {
namespace {

using copytest::CopyFileHarness;

TEST(KestuCopyFileFace, RunTimeCaptionAndDesignTimeHalfBar) {
  test::ExpectMatchesGolden(CopyFileHarness().Face(), "copyfile/progress_0");
  test::ExpectMatchesGolden(CopyFileHarness(/*user_mode=*/false).Face(), "copyfile/progress_50");
}

TEST(KestuCopyFileFace, CaptionPixelsUnderTheBarAreInverted) {
  copytest::TempFolder dir;
  copytest::WriteFile(dir / "src", copytest::PatternBytes(100 * 1024));
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
  test::ExpectMatchesGolden(*at_57, "copyfile/progress_57");
}

}  // namespace
}  // namespace kestu
