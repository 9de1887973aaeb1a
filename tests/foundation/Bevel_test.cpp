#include "kestu/foundation/Bevel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "kestu/host/Host.h"
#include "support/DrawRecorder.h"
#include "support/ExpectRuntimeError.h"

namespace kestu {
namespace {

using ::testing::ElementsAre;

// A bare control that draws only what a test tells it to.
class CanvasControl : public UserControl {
 public:
  static const ClassInfo& Info() {
    static const ClassInfo info = [] {
      ClassInfo c;
      c.name = "BevelCanvas";
      c.create = [] { return std::make_unique<CanvasControl>(); };
      return c;
    }();
    return info;
  }
  const ClassInfo& Class() const override { return Info(); }
};

constexpr OLE_COLOR kLight = 0x0000FF;   // red
constexpr OLE_COLOR kShadow = 0x00FF00;  // green
constexpr OLE_COLOR kPaper = 0xFFFFFF;

// Every bevel here spans pixels (2,2)-(7,5) of a 10 x 8 pixel canvas at 15
// twips per pixel, so a ring of untouched pixels guards it.
class BevelTest : public ::testing::Test {
 protected:
  BevelTest() {
    hosted_ = &host_.NewControl(form_, CanvasControl::Info(), "c1", TwipsRect{0, 0, 150, 120});
    Canvas().SetBackColor(kPaper);
    Canvas().Cls();
    hosted_->SetDrawingObserved(true);
    host_.AddObserver(&recorder_);
  }

  UserControl& Canvas() { return hosted_->Control(); }

  // The canvas, one line per row: '.' paper, 'L' light, 'S' shadow.
  std::string Picture() const {
    const Raster& raster = hosted_->GetRaster();
    std::string rows;
    for (int y = 0; y < raster.Height(); ++y) {
      for (int x = 0; x < raster.Width(); ++x) {
        const Rgb pixel = raster.GetPixel(x, y);
        rows += pixel == 0xFF0000 ? 'L' : pixel == 0x00FF00 ? 'S' : pixel == 0xFFFFFF ? '.' : '?';
      }
      rows += '\n';
    }
    return rows;
  }
  std::string Row(int y) const { return Picture().substr(static_cast<size_t>(y) * 11, 10); }

  Host host_;
  Form& form_ = host_.CreateForm("Form1");
  HostedControl* hosted_ = nullptr;
  DrawRecorder recorder_;
};

// Unlike the plain and the button bevel (traced and pictured through the
// panel and the edit boxes), the raised rectangle keeps its bottom-left
// corner light, and draws its own lines.
TEST_F(BevelTest, TheRaisedRectangleKeepsItsBottomLeftCornerLight) {
  RaisedRectangle(Canvas(), 30, 30, 105, 75, kLight, kShadow, 15, 15);
  const std::string blank = "..........\n..........\n";
  EXPECT_EQ(Picture(), blank + "..LLLLLS..\n..L....S..\n..L....S..\n..LSSSSS..\n" + blank);
  EXPECT_THAT(recorder_.Take(),
              ElementsAre("Line (30,30)-(105,30) 0x000000FF", "Line (45,75)-(120,75) 0x0000FF00",
                          "Line (30,30)-(30,90) 0x000000FF", "Line (105,30)-(105,75) 0x0000FF00"));
}

TEST_F(BevelTest, OnePixelBevelsAreCornersOnly) {
  // x1 = x2: every plain line but the lengthened ones is empty.
  BevelRectangle(Canvas(), 30, 30, 30, 30, kLight, kShadow, 15);
  EXPECT_EQ(Row(2), "..S.......");
  RaisedRectangle(Canvas(), 105, 30, 105, 30, kLight, kShadow, 15, 15);
  EXPECT_EQ(Row(2), "..S....L..");
}

TEST_F(BevelTest, SixteenBitCornerPastTheRangeIsErrorSixAfterTheLitEdges) {
  ExpectRuntimeError(err::kOverflow,
                     [&] { BevelRectangle(Canvas(), 30, 30, 32760, 75, kLight, kShadow, 15); });
  EXPECT_THAT(recorder_.Take(),
              ElementsAre("Line (30,30)-(32760,30) 0x000000FF", "Line (30,30)-(30,75) 0x000000FF"));
  ExpectRuntimeError(err::kOverflow, [&] {
    RaisedRectangle(Canvas(), 30, 30, 105, 32760, kLight, kShadow, 15, 15);
  });
}

}  // namespace
}  // namespace kestu
