// kestu-run's gallery: one form that shows every control of the library,
// each where nothing else covers it and beside a caption of its own.

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "apps/kestu-run/Gallery.h"
#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/OleColor.h"
#include "kestu/host/Host.h"

namespace kestu {
namespace {

bool Inside(const PixelRect& inner, const PixelRect& outer) {
  return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
         inner.bottom <= outer.bottom;
}

bool Overlap(const PixelRect& a, const PixelRect& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

std::string Describe(const HostedControl& control) {
  const PixelRect r = control.PixelBoundsOnForm();
  return control.Name() + " (" + std::to_string(r.left) + ", " + std::to_string(r.top) + ")-(" +
         std::to_string(r.right) + ", " + std::to_string(r.bottom) + ")";
}

class GalleryTest : public ::testing::Test {
 protected:
  Host host_;
  Gallery gallery_{host_};
  Form& form_ = gallery_.GetForm();
};

TEST_F(GalleryTest, EachControlLiesInItsPlaceClearOfTheOthers) {
  const PixelRect whole{0, 0, form_.WidthPixels(), form_.HeightPixels()};
  for (const auto& control : form_.Controls()) {
    SCOPED_TRACE(Describe(*control));
    // Nothing docks: a docked control would be laid over the others.
    EXPECT_EQ(control->Align(), 0);
    const PixelRect at = control->PixelBoundsOnForm();
    EXPECT_TRUE(Inside(at, whole));
    if (const HostedControl* container = control->Container()) {
      EXPECT_TRUE(Inside(at, container->PixelBoundsOnForm())) << "outside " << Describe(*container);
    }
    for (const auto& other : form_.Controls()) {
      if (other == control || other->Container() != control->Container()) continue;
      EXPECT_FALSE(Overlap(at, other->PixelBoundsOnForm())) << "over " << Describe(*other);
    }
  }
}

TEST_F(GalleryTest, NoCaptionIsHiddenUnderAControl) {
  const Raster& backdrop = gallery_.Backdrop();
  const Rgb plain = ResolveColor(form_.BackColor());
  for (const auto& control : form_.Controls()) {
    const PixelRect at = control->PixelBoundsOnForm();
    int inked = 0;
    for (int y = at.top; y < at.bottom; ++y) {
      for (int x = at.left; x < at.right; ++x) inked += backdrop.GetPixel(x, y) != plain;
    }
    EXPECT_EQ(inked, 0) << "caption ink under " << Describe(*control);
  }
}

TEST_F(GalleryTest, ShowsEveryControlTheLibraryHas) {
  std::set<std::string> shown;
  for (const auto& control : form_.Controls()) shown.insert(control->Class().name);
  for (const ClassInfo* info : ControlRegistry::Instance().Classes()) {
    if (info->name == "KestuProbe") continue;  // the tests' own
    EXPECT_TRUE(shown.contains(info->name)) << info->name;
  }
}

}  // namespace
}  // namespace kestu
