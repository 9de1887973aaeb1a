#include "kestu/decor/KestuLine3D.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "kestu/foundation/PropertyBag.h"
#include "kestu/host/Host.h"
#include "support/DrawRecorder.h"
#include "support/ExpectRuntimeError.h"

namespace kestu {
namespace {

using ::testing::ElementsAre;

constexpr Rgb kWhite = 0xFFFFFF;  // 3D highlight
constexpr Rgb kGrey = 0x808080;   // button shadow

class LineTest : public ::testing::Test {
 protected:
  LineTest() { host_.AddObserver(&recorder_); }

  KestuLine3D& NewLine(TwipsRect rect = {0, 0, 1200, 300}) {
    hosted_ = &host_.NewControl(form_, KestuLine3D::Info(), "l1", rect);
    Observe();
    return Line();
  }
  KestuLine3D& LoadLine(PropertyBag bag, TwipsRect rect) {
    hosted_ = &host_.LoadControl(form_, KestuLine3D::Info(), "l1", std::move(bag), rect);
    Observe();
    return Line();
  }
  KestuLine3D& Line() { return static_cast<KestuLine3D&>(hosted_->Control()); }
  Rgb Pixel(int x, int y) const { return hosted_->GetRaster().GetPixel(x, y); }
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

TEST_F(LineTest, RaisedHorizontalLineIsLightOverShadowOverItsFullLength) {
  NewLine();
  for (int x : {0, 40, 79}) {
    EXPECT_EQ(Pixel(x, 0), kWhite) << x;
    EXPECT_EQ(Pixel(x, 1), kGrey) << x;
  }
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
  EXPECT_EQ(Pixel(0, 1), kWhite);
  EXPECT_EQ(Pixel(1, 0), kGrey);
}

TEST_F(LineTest, VerticalLineIsLightLeftOfShadowOverItsFullLength) {
  PropertyBag bag;
  bag.WriteProperty("LineOrientation", Variant(int16_t{LnVertical}));
  LoadLine(bag, {0, 0, 300, 600});
  EXPECT_EQ(Bounds().width, 30);
  EXPECT_EQ(Bounds().height, 600);
  for (int y : {0, 20, 39}) {
    EXPECT_EQ(Pixel(0, y), kWhite) << y;
    EXPECT_EQ(Pixel(1, y), kGrey) << y;
  }
}

TEST_F(LineTest, OnlyStyleOneIsRaised) {
  KestuLine3D& line = NewLine();
  for (int32_t style : {0, 2, 3, -1}) {
    line.SetProperty("LineStyle", Variant(style));
    EXPECT_EQ(Pixel(10, 0), kGrey) << style;
    EXPECT_EQ(Pixel(10, 1), kWhite) << style;
  }
  line.SetProperty("LineStyle", Variant(LnRaised));
  EXPECT_EQ(Pixel(10, 0), kWhite);
}

TEST_F(LineTest, OnlyOrientationOneIsHorizontal) {
  KestuLine3D& line = NewLine({0, 0, 1200, 300});
  line.SetProperty("LineOrientation", Variant(2));
  EXPECT_EQ(Bounds().width, 30);
  EXPECT_EQ(Pixel(0, 1), kWhite);
  EXPECT_EQ(Pixel(1, 1), kGrey);
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
