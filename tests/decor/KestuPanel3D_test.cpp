#include "kestu/decor/KestuPanel3D.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "kestu/host/Host.h"
#include "support/DrawRecorder.h"
#include "support/ExpectRuntimeError.h"

namespace kestu {
namespace {

using ::testing::ElementsAre;

constexpr Rgb kGrey = 0x808080;  // button shadow

// A panel of 2400 x 1200 twips: 160 x 80 pixels at 15 twips per pixel.
class PanelTest : public ::testing::Test {
 protected:
  PanelTest() { host_.AddObserver(&recorder_); }

  KestuPanel3D& NewPanel(TwipsRect rect = {0, 0, 2400, 1200}) {
    hosted_ = &host_.NewControl(form_, KestuPanel3D::Info(), "p1", rect);
    Observe();
    return Panel();
  }
  KestuPanel3D& Panel() { return static_cast<KestuPanel3D&>(hosted_->Control()); }
  Rgb Pixel(int x, int y) const { return hosted_->GetRaster().GetPixel(x, y); }

  Host host_;
  Form& form_ = host_.CreateForm("Form1", 6000, 4000);
  DrawRecorder recorder_;
  HostedControl* hosted_ = nullptr;

 private:
  void Observe() {
    hosted_->SetDrawingObserved(true);
    recorder_.Take();
  }
};

TEST_F(PanelTest, EveryAssignmentNotifiesClearsAndDrawsBothBevels) {
  KestuPanel3D& panel = NewPanel();
  panel.SetProperty("BorderWidth", Variant(5));
  EXPECT_THAT(
      recorder_.Take(),
      ElementsAre("notify BorderWidth", "Cls", "Line (0,0)-(2385,0) 0x80000014",
                  "Line (0,0)-(0,1185) 0x80000014", "Line (0,1185)-(2400,1185) 0x80000010",
                  "Line (2385,0)-(2385,1185) 0x80000010", "Line (75,75)-(2310,75) 0x80000010",
                  "Line (75,75)-(75,1110) 0x80000010", "Line (75,1110)-(2325,1110) 0x80000014",
                  "Line (2310,75)-(2310,1110) 0x80000014"));
}

TEST_F(PanelTest, BorderWidthPastTheMiddleDrawsTheInnerBevelInverted) {
  KestuPanel3D& panel = NewPanel();
  panel.SetProperty("BorderWidth", Variant(60));  // 900 twips in, past the middle of 1200
  EXPECT_THAT(recorder_.Take(), testing::IsSupersetOf({"Line (900,900)-(1485,900) 0x80000010",
                                                       "Line (900,285)-(1500,285) 0x80000014"}));
}

TEST_F(PanelTest, BorderWidthOverflowingSixteenBitTwipsIsErrorSixWhenDrawing) {
  KestuPanel3D& panel = NewPanel();
  panel.SetProperty("BorderWidth", Variant(2184));  // 32760 twips: still fits
  recorder_.Take();
  ExpectRuntimeError(err::kOverflow, [&] { panel.SetProperty("BorderWidth", Variant(2185)); });
  // Stored and notified first; the outer bevel is drawn before the inner
  // one's corner overflows.
  EXPECT_EQ(panel.BorderWidth(), 2185);
  std::vector<std::string> calls = recorder_.Take();
  ASSERT_EQ(calls.size(), 6u);
  EXPECT_EQ(calls.front(), "notify BorderWidth");
  EXPECT_EQ(calls.back(), "Line (2385,0)-(2385,1185) 0x80000010");
  ExpectRuntimeError(err::kOverflow, [&] { host_.Repaint(*hosted_); });
}

TEST_F(PanelTest, PanelWiderThanSixteenBitTwipsIsErrorSix) {
  // The bottom edge ends one pixel past the right-hand corner, so that end
  // is the first to leave 16 bits.
  ExpectRuntimeError(err::kOverflow, [&] { NewPanel({0, 0, 32768, 600}); });
  EXPECT_EQ(form_.FindControl("p1"), nullptr);
  NewPanel({0, 0, 32767, 600});
  EXPECT_EQ(Pixel(2183, 39), kGrey);
}

TEST_F(PanelTest, StyleOutsideSixteenBitsIsErrorSixAndChangesNothing) {
  KestuPanel3D& panel = NewPanel();
  ExpectRuntimeError(err::kOverflow, [&] { panel.SetProperty("BorderIn", Variant(32768)); });
  ExpectRuntimeError(err::kOverflow, [&] { panel.SetProperty("BorderOut", Variant(-32769)); });
  EXPECT_EQ(panel.BorderIn(), KSTPN_Lowered);
  EXPECT_EQ(panel.BorderOut(), KSTPN_Raised);
  EXPECT_TRUE(recorder_.Take().empty());
}

TEST_F(PanelTest, PixelsAreCountedOnTheirOwnAxis) {
  host_.SetTwipsPerPixel(12, 20);
  KestuPanel3D& panel = NewPanel({0, 0, 1200, 1200});
  panel.SetProperty("BorderWidth", Variant(2));
  EXPECT_THAT(
      recorder_.Take(),
      ElementsAre("notify BorderWidth", "Cls", "Line (0,0)-(1188,0) 0x80000014",
                  "Line (0,0)-(0,1180) 0x80000014", "Line (0,1180)-(1200,1180) 0x80000010",
                  "Line (1188,0)-(1188,1180) 0x80000010", "Line (24,40)-(1164,40) 0x80000010",
                  "Line (24,40)-(24,1140) 0x80000010", "Line (24,1140)-(1176,1140) 0x80000014",
                  "Line (1164,40)-(1164,1140) 0x80000014"));
  // The pair is read once: a later change of the screen does not matter.
  host_.SetTwipsPerPixel(15, 15);
  panel.SetProperty("BorderWidth", Variant(2));
  EXPECT_EQ(recorder_.Take()[6], "Line (24,40)-(1164,40) 0x80000010");
}

}  // namespace
}  // namespace kestu
