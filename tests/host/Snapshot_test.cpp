// Pictures of forms and controls: what a window would show.

#include <gtest/gtest.h>

#include "kestu/host/Host.h"
#include "kestu/host/Snapshot.h"
#include "support/ProbeControl.h"

namespace kestu {
namespace {

constexpr Rgb kRed = 0xFF0000;
constexpr Rgb kFace = 0xC0C0C0;

class SnapshotTest : public ::testing::Test {
 protected:
  SnapshotTest() : form_(host_.CreateForm("Main", 1500, 1500)) {
    form_.SetBackColor(255);
    a_ = &host_.NewControl(form_, ProbeControl::Info(), "a", TwipsRect{150, 150, 300, 300});
    b_ = &host_.NewControl(form_, ProbeControl::Info(), "b", TwipsRect{600, 600, 300, 300});
  }

  Host host_;
  Form& form_;
  HostedControl* a_;
  HostedControl* b_;
};

TEST_F(SnapshotTest, BackgroundThenEachVisibleControlAtItsPlace) {
  b_->SetExtender("Visible", Variant::Boolean(false));
  const Raster form = RenderForm(host_, form_);
  ASSERT_EQ(form.Width(), 100);
  ASSERT_EQ(form.Height(), 100);
  EXPECT_EQ(form.GetPixel(9, 9), kRed);
  EXPECT_EQ(form.GetPixel(10, 10), kFace);
  EXPECT_EQ(form.GetPixel(29, 29), kFace);
  EXPECT_EQ(form.GetPixel(30, 30), kRed);
  EXPECT_EQ(form.GetPixel(45, 45), kRed);  // b is hidden
}

TEST_F(SnapshotTest, TheControlInFrontLiesOnTopWhateverTheTabOrder) {
  b_->Move(150, 150);
  b_->GetRaster().FillRect({0, 0, 20, 20}, 0x00FF00, RasterOp::CopyPen);
  EXPECT_EQ(RenderForm(host_, form_).GetPixel(15, 15), 0x00FF00u);
  b_->SetExtender("TabIndex", Variant(int16_t{0}));
  EXPECT_EQ(RenderForm(host_, form_).GetPixel(15, 15), 0x00FF00u);
  form_.SendToBack(*b_);
  EXPECT_EQ(RenderForm(host_, form_).GetPixel(15, 15), kFace);
  form_.BringToFront(*b_);
  EXPECT_EQ(RenderForm(host_, form_).GetPixel(15, 15), 0x00FF00u);
}

TEST_F(SnapshotTest, AShownCaretIsInvertedOnItsControlOnly) {
  static_cast<ProbeControl&>(a_->Control()).ShowCaret();  // 1 x 13 at (3, 2)
  const Raster form = RenderForm(host_, form_);
  EXPECT_EQ(form.GetPixel(13, 12), kFace ^ 0xFFFFFF);
  EXPECT_EQ(form.GetPixel(13, 24), kFace ^ 0xFFFFFF);
  EXPECT_EQ(form.GetPixel(13, 25), kFace);
  EXPECT_EQ(form.GetPixel(14, 12), kFace);

  const Raster alone = RenderControl(host_, *a_);
  EXPECT_EQ(alone.GetPixel(3, 2), kFace ^ 0xFFFFFF);
  EXPECT_EQ(RenderControl(host_, *b_).GetPixel(3, 2), kFace);
  // The control's own raster never holds the caret.
  EXPECT_EQ(a_->GetRaster().GetPixel(3, 2), kFace);

  static_cast<ProbeControl&>(a_->Control()).HideCaret();
  EXPECT_EQ(RenderForm(host_, form_).GetPixel(13, 12), kFace);
}

}  // namespace
}  // namespace kestu
