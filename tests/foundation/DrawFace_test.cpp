// A face drawn again with the same calls over its own pixels is left as
// it is; anything else is drawn, by the time anyone looks. Either way the
// drawing calls are seen and the pixels are what the calls draw.

#include <gtest/gtest.h>

#include <memory>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/UserControl.h"
#include "kestu/host/Host.h"
#include "support/DrawRecorder.h"

namespace kestu {
namespace {

constexpr OLE_COLOR kPaper = 0x00FFFFFF;
constexpr OLE_COLOR kInk = 0x000000FF;

// Draws a face at a level: a white clear, then an XOR bar `level` pixels
// long (XOR, so a bar drawn twice without the clear would vanish).
class Gauge : public UserControl {
 public:
  static ClassInfo& Info() {
    static ClassInfo info = [] {
      ClassInfo c;
      c.name = "TestGauge";
      c.create = [] { return std::make_unique<Gauge>(); };
      return c;
    }();
    return info;
  }
  const ClassInfo& Class() const override { return Info(); }

  void DrawLevel(int level, bool clear_first = true) {
    SetScaleMode(scale::kPixels);
    DrawFace([&] {
      if (clear_first) {
        SetDrawMode(13);
        Line(0, 0, ScaleWidth(), ScaleHeight(), kPaper, LineKind::FilledBox);
      }
      SetDrawMode(7);
      Line(0, 0, static_cast<float>(level), 1, kInk, LineKind::FilledBox);
    });
  }
  void Dot(float x, float y) { PSet(x, y, kInk); }
  Rgb Pixel(int x, int y) { return GetSurface().GetPixel(x, y); }
  template <typename Draw>
  void Face(Draw draw) {
    DrawFace(draw);
  }
};

class DrawFaceTest : public ::testing::Test {
 protected:
  DrawFaceTest() {
    host_.AddObserver(&recorder_);
    Form& form = host_.CreateForm("F");
    hosted_ = &host_.NewControl(form, Gauge::Info(), "g", TwipsRect{0, 0, 20 * 15, 4 * 15});
    gauge_ = static_cast<Gauge*>(&hosted_->Control());
    hosted_->SetDrawingObserved(true);
    recorder_.Take();
  }
  uint64_t Stamp() { return hosted_->GetRaster().Generation(); }
  // Bar pixels along the top row: XOR of red over white.
  int BarLength() {
    int length = 0;
    while (length < 20 && hosted_->GetRaster().GetPixel(length, 0) == 0x0000FFFF) ++length;
    return length;
  }

  Host host_;
  DrawRecorder recorder_;
  HostedControl* hosted_ = nullptr;
  Gauge* gauge_ = nullptr;
};

TEST_F(DrawFaceTest, TheSameFaceAgainLeavesThePixelsAndStillReportsTheCalls) {
  gauge_->DrawLevel(5);
  const std::vector<std::string> first = recorder_.Take();
  ASSERT_FALSE(first.empty());
  const uint64_t drawn = Stamp();
  EXPECT_EQ(BarLength(), 6);  // a filled box takes both corners in
  gauge_->DrawLevel(5);
  EXPECT_EQ(Stamp(), drawn);
  EXPECT_EQ(recorder_.Take(), first);
  EXPECT_EQ(BarLength(), 6);
}

TEST_F(DrawFaceTest, AnythingElseIsDrawn) {
  gauge_->DrawLevel(5);
  gauge_->DrawLevel(9);  // other calls
  EXPECT_EQ(BarLength(), 10);
  gauge_->Dot(15, 0);  // the pixels changed since
  gauge_->DrawLevel(9);
  EXPECT_EQ(BarLength(), 10);
  EXPECT_EQ(hosted_->GetRaster().GetPixel(15, 0), 0x00FFFFFFu);
}

TEST_F(DrawFaceTest, AFaceThatDoesNotCoverTheSurfaceIsAlwaysDrawn) {
  gauge_->DrawLevel(5);
  gauge_->DrawLevel(3, /*clear_first=*/false);
  gauge_->DrawLevel(3, /*clear_first=*/false);  // XOR twice: back to the level-5 bar
  EXPECT_EQ(BarLength(), 6);
}

TEST_F(DrawFaceTest, FacesDrawnWhileNobodyLooksShowTheLastWithWhatWasDrawnOverIt) {
  gauge_->DrawLevel(3);
  gauge_->DrawLevel(12);
  gauge_->DrawLevel(7);
  gauge_->Dot(15, 2);  // XOR over the face: it must be there first
  EXPECT_EQ(BarLength(), 8);
  EXPECT_EQ(hosted_->GetRaster().GetPixel(15, 2), 0x0000FFFFu);
  EXPECT_EQ(hosted_->GetRaster().GetPixel(12, 0), 0x00FFFFFFu);
}

TEST_F(DrawFaceTest, ReadingAPixelWhileDrawingSeesWhatWasDrawnSoFar) {
  Rgb seen = 0;
  gauge_->SetScaleMode(scale::kPixels);
  gauge_->Face([&] {
    gauge_->Line(0, 0, 19, 3, kInk, LineKind::FilledBox);
    seen = gauge_->Pixel(2, 2);
  });
  EXPECT_EQ(seen, ResolveColor(kInk));
}

}  // namespace
}  // namespace kestu
