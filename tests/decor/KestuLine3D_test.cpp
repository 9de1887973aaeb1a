#include "kestu/decor/KestuLine3D.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "kestu/host/Host.h"
#include "support/DrawRecorder.h"
#include "support/ExpectRuntimeError.h"

namespace kestu {
namespace {

using ::testing::ElementsAre;

class LineTest : public ::testing::Test {
 protected:
  LineTest() { host_.AddObserver(&recorder_); }

  KestuLine3D& NewLine(TwipsRect rect = {0, 0, 1200, 300}) {
    hosted_ = &host_.NewControl(form_, KestuLine3D::Info(), "l1", rect);
    Observe();
    return Line();
  }
  KestuLine3D& Line() { return static_cast<KestuLine3D&>(hosted_->Control()); }
  TwipsRect Bounds() const { return hosted_->Bounds(); }

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

TEST_F(LineTest, HorizontalLineIsTwoPixelsHighWhateverTheHostGivesIt) {
  NewLine({0, 0, 1200, 300});
  EXPECT_EQ(Bounds().height, 30);
  EXPECT_EQ(Bounds().width, 1200);
  hosted_->SetExtender("Height", Variant(int32_t{600}));
  EXPECT_EQ(Bounds().height, 30);
  EXPECT_EQ(Line().Height(), 30.0f);
}

TEST_F(LineTest, AssignmentDrawsTwoFullLengthLinesWithoutClearing) {
  KestuLine3D& line = NewLine();
  line.SetProperty("Shadow3DColor", Variant(static_cast<int32_t>(syscolor::kButtonShadow)));
  EXPECT_THAT(recorder_.Take(),
              ElementsAre("notify Shadow3DColor", "Line (0,0)-(1200,0) 0x80000014",
                          "Line (0,15)-(1200,15) 0x80000010"));
}

TEST_F(LineTest, SwitchingToVerticalSetsTheWidthAndKeepsTheHeight) {
  KestuLine3D& line = NewLine();
  line.SetProperty("LineOrientation", Variant(LnVertical));
  EXPECT_EQ(Bounds().width, 30);
  EXPECT_EQ(Bounds().height, 30);
  // Setting the width resizes the control, whose Resize draws the line
  // once before the assignment draws it again.
  EXPECT_THAT(recorder_.Take(),
              ElementsAre("notify LineOrientation", "Line (0,0)-(0,30) 0x80000014",
                          "Line (15,0)-(15,30) 0x80000010", "Line (0,0)-(0,30) 0x80000014",
                          "Line (15,0)-(15,30) 0x80000010"));
}

TEST_F(LineTest, EnumerationOutsideSixteenBitsIsErrorSixAndChangesNothing) {
  KestuLine3D& line = NewLine();
  ExpectRuntimeError(err::kOverflow, [&] { line.SetProperty("LineStyle", Variant(32768)); });
  ExpectRuntimeError(err::kOverflow, [&] { line.SetProperty("LineOrientation", Variant(-32769)); });
  EXPECT_EQ(line.LineStyle(), LnRaised);
  EXPECT_EQ(line.LineOrientation(), LnHorizontal);
  EXPECT_TRUE(recorder_.Take().empty());
}

}  // namespace
}  // namespace kestu
