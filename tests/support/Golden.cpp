#include "support/Golden.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string_view>

#include "kestu/foundation/StdPicture.h"

namespace kestu::test {

namespace {

// Channels within this much count as equal, and this share of pixels may
// differ beyond it, so that a golden survives noise but not a change of
// shape.
constexpr int kChannelTolerance = 8;
constexpr int kDifferingPixelsPerThousand = 1;

std::filesystem::path GoldenPath(const std::string& name) {
  return std::filesystem::path(KESTU_TEST_DATA) / "golden" / (name + ".png");
}

// Where a picture that does not match is left for a person to look at.
std::filesystem::path ActualPath(const std::string& name) {
  const std::filesystem::path dir = std::filesystem::current_path() / "golden-out";
  std::filesystem::create_directories(dir);
  return dir / (name + ".actual.png");
}

bool UpdateRequested() {
  const char* update = std::getenv("KESTU_UPDATE_GOLDEN");
  return update != nullptr && std::string_view(update) == "1";
}

bool Close(Rgb a, uint32_t b) {
  for (int shift = 0; shift < 24; shift += 8) {
    const int ca = static_cast<int>((a >> shift) & 0xFF);
    const int cb = static_cast<int>((b >> shift) & 0xFF);
    if (std::abs(ca - cb) > kChannelTolerance) return false;
  }
  return true;
}

}  // namespace

void ExpectMatchesGolden(const Raster& raster, const std::string& name) {
  const std::filesystem::path golden = GoldenPath(name);
  if (UpdateRequested()) {
    std::filesystem::create_directories(golden.parent_path());
    raster.SavePng(golden);
    return;
  }
  if (!std::filesystem::exists(golden)) {
    raster.SavePng(ActualPath(name));
    ADD_FAILURE() << "no golden image " << golden << "; run with KESTU_UPDATE_GOLDEN=1 to make it";
    return;
  }
  const PictureRef expected = LoadPicture(golden);
  if (expected->WidthPixels() != raster.Width() || expected->HeightPixels() != raster.Height()) {
    raster.SavePng(ActualPath(name));
    ADD_FAILURE() << name << ": golden is " << expected->WidthPixels() << "x"
                  << expected->HeightPixels() << ", drawn " << raster.Width() << "x"
                  << raster.Height();
    return;
  }
  int differing = 0;
  for (int y = 0; y < raster.Height(); ++y) {
    for (int x = 0; x < raster.Width(); ++x) {
      if (!Close(raster.GetPixel(x, y), expected->PixelAt(x, y))) ++differing;
    }
  }
  const int allowed = raster.Width() * raster.Height() * kDifferingPixelsPerThousand / 1000;
  if (differing > allowed) {
    raster.SavePng(ActualPath(name));
    ADD_FAILURE() << name << ": " << differing << " pixels differ from " << golden << " (allowed "
                  << allowed << "); see " << ActualPath(name);
  }
}

}  // namespace kestu::test
