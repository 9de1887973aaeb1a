// Writing PNG: what is written decodes to the same pixels, and the same
// pixels always give the same bytes, so snapshots can be compared as files.

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "foundation/PicturePatterns.h"
#include "kestu/foundation/RuntimeError.h"
#include "kestu/foundation/StdPicture.h"
#include "support/ExpectRuntimeError.h"

namespace kestu {
namespace {

using namespace picture_test;

StdPicture Pattern(int width, int height, bool with_alpha) {
  std::vector<uint32_t> pixels;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      pixels.push_back(PatternRgb(x, y, with_alpha ? PatternAlpha(x, y) : 255));
    }
  }
  return StdPicture(width, height, std::move(pixels));
}

std::vector<uint8_t> Encode(const StdPicture& picture) {
  return EncodePng(picture.WidthPixels(), picture.HeightPixels(), picture.Pixels());
}

std::multiset<std::string> ChunkTypes(const std::vector<uint8_t>& png) {
  std::multiset<std::string> types;
  for (size_t at = 8; at + 8 <= png.size();) {
    const size_t length =
        size_t(png[at]) << 24 | png[at + 1] << 16 | png[at + 2] << 8 | png[at + 3];
    types.insert(std::string(png.begin() + at + 4, png.begin() + at + 8));
    at += 12 + length;
  }
  return types;
}

TEST(PictureEncode, OpaqueAndTranslucentPixelsComeBackUnchanged) {
  for (const bool with_alpha : {false, true}) {
    for (const auto& [width, height] : {std::pair{1, 1}, std::pair{13, 7}, std::pair{64, 3}}) {
      const StdPicture original = Pattern(width, height, with_alpha);
      EXPECT_EQ(*LoadPictureFromBytes(Encode(original)), original)
          << width << " x " << height << (with_alpha ? " with alpha" : "");
    }
  }
}

TEST(PictureEncode, FullyTransparentPixelsKeepTheirColour) {
  const StdPicture original(2, 1, {0x00123456, 0x00FFFFFF});
  EXPECT_EQ(*LoadPictureFromBytes(Encode(original)), original);
}

TEST(PictureEncode, SamePixelsGiveIdenticalBytes) {
  const StdPicture picture = Pattern(13, 7, true);
  const std::vector<uint8_t> first = Encode(picture);
  EXPECT_EQ(Encode(picture), first);
  EXPECT_EQ(Encode(*LoadPictureFromBytes(first)), first);
}

TEST(PictureEncode, WritesNoTimeOrOtherOptionalChunk) {
  for (const bool with_alpha : {false, true}) {
    const std::multiset<std::string> types = ChunkTypes(Encode(Pattern(13, 7, with_alpha)));
    EXPECT_EQ(types.count("IHDR"), 1u);
    EXPECT_EQ(types.count("IEND"), 1u);
    EXPECT_EQ(types.size(), 2 + types.count("IDAT"));
  }
}

TEST(PictureEncode, PixelsThatDoNotFitTheSizeAreAnInvalidCall) {
  const std::vector<uint32_t> three(3);
  for (const auto& [width, height] : {std::pair{2, 2}, std::pair{0, 3}, std::pair{3, 0}}) {
    SCOPED_TRACE(testing::Message() << width << " x " << height);
    ExpectRuntimeError(err::kInvalidProcedureCall, [&] { EncodePng(width, height, three); });
  }
}

}  // namespace
}  // namespace kestu
