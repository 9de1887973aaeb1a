// Pixels owed to a raster are laid down before anyone reads, stamps,
// copies or draws over them, exactly once; a raster that goes away first
// tells whoever owed it.

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <utility>

#include "kestu/raster/Raster.h"

namespace kestu {
namespace {

constexpr Rgb kPaper = 0x00FFFFFF;
constexpr Rgb kInk = 0x00102030;

// Owes its raster a 2 x 2 square of ink at the top-left.
class OwedSquare final : public PendingPixels {
 public:
  explicit OwedSquare(Raster& raster) : raster_(raster) { raster_.Defer(*this); }
  void Settle() override {
    ++settled;
    raster_.FillRect({0, 0, 2, 2}, kInk, RasterOp::CopyPen);
  }
  void Abandon() override { ++abandoned; }

  int settled = 0;
  int abandoned = 0;

 private:
  Raster& raster_;
};

TEST(RasterPending, NothingIsDrawnUntilThePixelsAreNeeded) {
  Raster raster(4, 4, kPaper);
  OwedSquare square(raster);
  EXPECT_EQ(raster.Width(), 4);  // sizes and measuring need no pixels
  raster.MeasureText({}, "x");
  EXPECT_EQ(square.settled, 0);
}

// Drawing over owed pixels lands on top of them; resizing keeps them.
TEST(RasterPending, EveryWayOfLookingSettlesFirstAndOnlyOnce) {
  const std::pair<const char*, std::function<void(Raster&)>> looks[] = {
      {"GetPixel", [](Raster& r) { EXPECT_EQ(r.GetPixel(1, 1), kInk); }},
      {"Pixels", [](Raster& r) { EXPECT_EQ(r.Pixels()[0], kInk); }},
      {"Generation", [](Raster& r) { (void)r.Generation(); }},
      {"ToPng", [](Raster& r) { (void)r.ToPng(); }},
      {"copy", [](Raster& r) { EXPECT_EQ(Raster(r).GetPixel(0, 0), kInk); }},
      {"Blit source",
       [](Raster& r) {
         Raster other(4, 4, kPaper);
         other.Blit(r, 0, 0);
         EXPECT_EQ(other.GetPixel(1, 1), kInk);
       }},
      {"SettlePending", [](Raster& r) { r.SettlePending(); }},
      {"drawing over them",
       [](Raster& r) {
         r.SetPixel(1, 1, kPaper, RasterOp::CopyPen);
         EXPECT_EQ(r.GetPixel(1, 1), kPaper);
         EXPECT_EQ(r.GetPixel(0, 0), kInk);
       }},
      {"Resize",
       [](Raster& r) {
         r.Resize(6, 6, kPaper);
         EXPECT_EQ(r.GetPixel(1, 1), kInk);
       }},
  };
  for (const auto& [name, look] : looks) {
    SCOPED_TRACE(name);
    Raster raster(4, 4, kPaper);
    OwedSquare square(raster);
    look(raster);
    raster.GetPixel(0, 0);
    EXPECT_EQ(square.settled, 1);
  }
}

TEST(RasterPending, AnotherDebtSettlesTheOneBefore) {
  Raster raster(4, 4, kPaper);
  OwedSquare first(raster);
  OwedSquare second(raster);
  EXPECT_EQ(first.settled, 1);
  EXPECT_EQ(second.settled, 0);
}

TEST(RasterPending, ARasterGoingAwayAbandonsWhatIsOwed) {
  auto raster = std::make_unique<Raster>(4, 4, kPaper);
  OwedSquare square(*raster);
  raster.reset();
  EXPECT_EQ(square.abandoned, 1);
  EXPECT_EQ(square.settled, 0);
}

}  // namespace
}  // namespace kestu
