#include <gtest/gtest.h>

#include "kestu/raster/FontEngine.h"
#include "kestu/raster/Raster.h"
#include "kestu/raster/SystemText.h"
#include "support/Golden.h"

namespace kestu {
namespace {

constexpr Rgb kWindow = 0x00FFFFFF;
constexpr Rgb kButtonFace = 0x00C0C0C0;
constexpr Rgb kText = 0x00000000;
constexpr Rgb kBar = 0x00000080;

class RasterGolden : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    FontEngine::Instance().RegisterFamily("Golden Sans",
                                          "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf");
  }
  FontSpec Font(bool bold = false, bool italic = false, bool underline = false) const {
    FontSpec font{"Golden Sans", 11.0};
    font.bold = bold;
    font.italic = italic;
    font.underline = underline;
    return font;
  }
};

TEST_F(RasterGolden, TextInEveryStyleWithPrefixesAndABarAcrossIt) {
  Raster raster(160, 92, kWindow);
  raster.DrawText(Font(), "Kestu 0123 \xC3\xA7\xC3\xA3o", 2, 2, kText, RasterOp::CopyPen);
  raster.DrawText(Font(true), "Bold Wg", 2, 16, kText, RasterOp::CopyPen);
  raster.DrawText(Font(false, true), "Italic Wg", 70, 16, kText, RasterOp::CopyPen);
  raster.DrawText(Font(false, false, true), "Underlined gy", 2, 30, kText, RasterOp::CopyPen);
  RECT caption{2, 46, 158, 60};
  DrawSystemText(raster, Font(), "&Copiar  A&&B  Co&lar", -1, caption, dt::kNoClip, kText);
  // The file copier's bar: the caption under it turns to the background.
  raster.DrawText(Font(), "Copying 50%", 40, 70, kText, RasterOp::CopyPen);
  raster.FillRect({0, 66, 80, 90}, kBar, RasterOp::NotXorPen);
  test::ExpectMatchesGolden(raster, "text_sample");
}

TEST_F(RasterGolden, FocusRectangleInsetOnAButtonFace) {
  Raster raster(40, 24, kButtonFace);
  DrawSystemFocusRect(raster, {4, 4, 36, 20});
  test::ExpectMatchesGolden(raster, "focus_rect");
}

// Sixteen columns, one per operation in the host's order, each drawn with
// one pen over the same bands of colour.
TEST_F(RasterGolden, SixteenRasterOperationsOverColourBands) {
  constexpr int kColumn = 8;
  constexpr Rgb kBands[] = {0x00FFFFFF, 0x00000000, 0x00FF0000, 0x0000FF00,
                            0x000000FF, 0x00808080, 0x00C0C0C0, 0x00FFFF00};
  Raster raster(16 * kColumn, 32, kWindow);
  for (int band = 0; band < 8; ++band) {
    raster.FillRect({0, 4 * band, 16 * kColumn, 4 * band + 4}, kBands[band], RasterOp::CopyPen);
  }
  for (int op = 1; op <= 16; ++op) {
    const int left = (op - 1) * kColumn;
    raster.FillRect({left + 1, 0, left + kColumn - 1, 32}, 0x003366CC, static_cast<RasterOp>(op));
  }
  test::ExpectMatchesGolden(raster, "raster_ops");
}

}  // namespace
}  // namespace kestu
