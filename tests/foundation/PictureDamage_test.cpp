// Damaged pictures: cut short, corrupted, or claiming a size they cannot
// have. Each must be refused with "Invalid picture", never crash, and never
// come back half-decoded. Under the sanitizers these also catch reads past
// the data and leaks on every refusal path.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <random>

#include "foundation/PicturePatterns.h"
#include "kestu/foundation/RuntimeError.h"
#include "kestu/foundation/StdPicture.h"

namespace kestu {
namespace {

using namespace picture_test;
using Bytes = std::vector<uint8_t>;

testing::AssertionResult RefusedAsInvalid(const Bytes& bytes) {
  try {
    const PictureRef picture = LoadPictureFromBytes(bytes);
    return testing::AssertionFailure() << "decoded a " << picture->WidthPixels() << " x "
                                       << picture->HeightPixels() << " picture";
  } catch (const RuntimeError& error) {
    if (error.Number() == err::kInvalidPicture) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "error " << error.what();
  }
}

void PutU16Le(Bytes& bytes, size_t at, uint32_t value) {
  bytes[at] = value & 255;
  bytes[at + 1] = (value >> 8) & 255;
}

void PutU32Le(Bytes& bytes, size_t at, uint32_t value) {
  PutU16Le(bytes, at, value & 0xFFFF);
  PutU16Le(bytes, at + 2, value >> 16);
}

void PutU16Be(Bytes& bytes, size_t at, uint32_t value) {
  bytes[at] = (value >> 8) & 255;
  bytes[at + 1] = value & 255;
}

void PutU32Be(Bytes& bytes, size_t at, uint32_t value) {
  PutU16Be(bytes, at, value >> 16);
  PutU16Be(bytes, at + 2, value & 0xFFFF);
}

uint32_t Crc32(const uint8_t* data, size_t length) {
  uint32_t crc = 0xFFFFFFFFu;
  for (size_t i = 0; i < length; ++i) {
    crc ^= data[i];
    for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1)));
  }
  return ~crc;
}

// A PNG whose header claims another size, with a checksum that still
// matches, so that only the size can be what refuses it.
Bytes PngClaiming(uint32_t width, uint32_t height) {
  Bytes png = ReadSample("png_rgba8.png");
  PutU32Be(png, 16, width);
  PutU32Be(png, 20, height);
  PutU32Be(png, 29, Crc32(png.data() + 12, 17));  // over "IHDR" and its 13 bytes
  return png;
}

Bytes BmpClaiming(int32_t width, int32_t height) {
  Bytes bmp = ReadSample("bmp_24bit.bmp");
  PutU32Le(bmp, 18, static_cast<uint32_t>(width));
  PutU32Le(bmp, 22, static_cast<uint32_t>(height));
  return bmp;
}

size_t FindMarker(const Bytes& jpeg, uint8_t marker) {
  for (size_t i = 0; i + 1 < jpeg.size(); ++i) {
    if (jpeg[i] == 0xFF && jpeg[i + 1] == marker) return i;
  }
  ADD_FAILURE() << "no marker " << int(marker);
  return 0;
}

constexpr uint8_t kStartOfFrame = 0xC0;
constexpr uint8_t kStartOfScan = 0xDA;

// --- Cut short --------------------------------------------------------------

TEST(PictureDamage, EveryFileCutShortIsRefused) {
  for (const std::string& name : AllSampleNames()) {
    const Bytes whole = ReadSample(name);
    ASSERT_NO_THROW(LoadPictureFromBytes(whole)) << name;
    // Every length through the headers, then a spread over the data, then
    // one byte short of the end.
    std::vector<size_t> lengths;
    for (size_t n = 0; n < std::min<size_t>(whole.size(), 80); ++n) lengths.push_back(n);
    for (size_t n = 80; n < whole.size(); n += whole.size() / 17 + 1) lengths.push_back(n);
    lengths.push_back(whole.size() - 1);
    for (const size_t length : lengths) {
      const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
      EXPECT_TRUE(RefusedAsInvalid(cut)) << name << " cut to " << length << " bytes";
    }
  }
}

// --- Corrupted --------------------------------------------------------------

TEST(PictureDamage, PngWithABadChecksumIsRefused) {
  Bytes png = ReadSample("png_rgba8.png");
  png[29] ^= 0x01;  // the header chunk's CRC
  EXPECT_TRUE(RefusedAsInvalid(png));
  Bytes data = ReadSample("png_rgba8.png");
  data[data.size() - 20] ^= 0x40;  // inside the image data
  EXPECT_TRUE(RefusedAsInvalid(data));
}

TEST(PictureDamage, BmpWithAnUnknownDepthOrCodingIsRefused) {
  Bytes depth = ReadSample("bmp_24bit.bmp");
  PutU16Le(depth, 28, 7);
  EXPECT_TRUE(RefusedAsInvalid(depth));
  Bytes run_length = ReadSample("bmp_4bit.bmp");
  PutU32Le(run_length, 30, 2);  // 4-bit run-length coding
  EXPECT_TRUE(RefusedAsInvalid(run_length));
  Bytes header = ReadSample("bmp_24bit.bmp");
  PutU32Le(header, 14, 64);  // no such header size
  EXPECT_TRUE(RefusedAsInvalid(header));
}

TEST(PictureDamage, BmpIndexPastItsPaletteIsRefused) {
  Bytes bmp = ReadSample("bmp_8bit.bmp");  // 200 colours
  const size_t pixels = bmp[10] | bmp[11] << 8;
  bmp[pixels] = 200;
  EXPECT_TRUE(RefusedAsInvalid(bmp));
  bmp[pixels] = 199;
  EXPECT_NO_THROW(LoadPictureFromBytes(bmp));
}

TEST(PictureDamage, IconEntryOutsideTheFileIsRefused) {
  Bytes ico = ReadSample("ico_mask_4bit.ico");
  PutU32Le(ico, 6 + 16 + 12, static_cast<uint32_t>(ico.size()));  // second entry's offset
  EXPECT_TRUE(RefusedAsInvalid(ico));
  Bytes empty = ReadSample("ico_mask_4bit.ico");
  PutU16Le(empty, 4, 0);  // no entries
  EXPECT_TRUE(RefusedAsInvalid(empty));
}

TEST(PictureDamage, GifWithAForeignRecordIsRefused) {
  Bytes gif = ReadSample("gif_transparent.gif");
  const auto descriptor = std::find(gif.begin() + 13 + 48, gif.end(), uint8_t{','});
  ASSERT_NE(descriptor, gif.end());
  *descriptor = 'X';
  EXPECT_TRUE(RefusedAsInvalid(gif));
}

TEST(PictureDamage, JpegWithABadPrecisionIsRefused) {
  Bytes jpeg = ReadSample("jpeg_baseline.jpg");
  jpeg[FindMarker(jpeg, kStartOfFrame) + 4] = 9;
  EXPECT_TRUE(RefusedAsInvalid(jpeg));
}

TEST(PictureDamage, JpegWhoseScanEndsEarlyIsRefusedNotPadded) {
  Bytes jpeg = ReadSample("jpeg_baseline.jpg");
  const size_t scan = FindMarker(jpeg, kStartOfScan);
  const size_t data = scan + 2 + (jpeg[scan + 2] << 8 | jpeg[scan + 3]);
  jpeg[data + 2] = 0xFF;  // an end-of-picture marker inside the coded data
  jpeg[data + 3] = 0xD9;
  EXPECT_TRUE(RefusedAsInvalid(jpeg));
}

// Random damage: whatever a handful of changed bytes does, the answer is a
// whole picture or "Invalid picture", never another error or a crash.
TEST(PictureDamage, RandomlyDamagedFilesDecodeWholeOrAreRefused) {
  std::mt19937 random(20240611);
  for (const std::string& name : AllSampleNames()) {
    const Bytes whole = ReadSample(name);
    for (int round = 0; round < 250; ++round) {
      Bytes damaged = whole;
      const int changes = 1 + static_cast<int>(random() % 4);
      for (int i = 0; i < changes; ++i) {
        damaged[random() % damaged.size()] = static_cast<uint8_t>(random());
      }
      try {
        const PictureRef picture = LoadPictureFromBytes(damaged);
        ASSERT_EQ(picture->Pixels().size(),
                  size_t(picture->WidthPixels()) * size_t(picture->HeightPixels()));
      } catch (const RuntimeError& error) {
        ASSERT_EQ(error.Number(), err::kInvalidPicture) << name << ": " << error.what();
      }
    }
  }
}

// --- Claiming an impossible size --------------------------------------------
// These would need gigabytes if the decoder believed the header; under the
// address sanitizer such an allocation aborts the test.

TEST(PictureDamage, OversizeBmpIsRefusedBeforeAllocating) {
  EXPECT_TRUE(RefusedAsInvalid(BmpClaiming(100000, 100000)));
  EXPECT_TRUE(RefusedAsInvalid(BmpClaiming(100000, -100000)));
  EXPECT_TRUE(RefusedAsInvalid(BmpClaiming(kMaxPictureSide + 1, 1)));
  EXPECT_TRUE(RefusedAsInvalid(BmpClaiming(kMaxPictureSide, kMaxPictureSide)));  // too many pixels
  // Within the caps, but the file does not hold that many rows.
  EXPECT_TRUE(RefusedAsInvalid(BmpClaiming(kMaxPictureSide, 4096)));
  EXPECT_TRUE(RefusedAsInvalid(BmpClaiming(0, 7)));
  EXPECT_TRUE(RefusedAsInvalid(BmpClaiming(13, INT32_MIN)));
}

TEST(PictureDamage, OversizePngIsRefusedBeforeAllocating) {
  EXPECT_TRUE(RefusedAsInvalid(PngClaiming(100000, 100000)));
  EXPECT_TRUE(RefusedAsInvalid(PngClaiming(kMaxPictureSide + 1, 7)));
  EXPECT_TRUE(RefusedAsInvalid(PngClaiming(kMaxPictureSide, kMaxPictureSide)));
  EXPECT_TRUE(RefusedAsInvalid(PngClaiming(0x7FFFFFFF, 0x7FFFFFFF)));
}

TEST(PictureDamage, OversizeIconBitmapIsRefusedBeforeAllocating) {
  Bytes ico = ReadSample("ico_mask_4bit.ico");
  const size_t bitmap = ico[6 + 16 + 12] | ico[6 + 16 + 13] << 8;  // the chosen 24 x 24 entry
  PutU32Le(ico, bitmap + 4, 100000);
  PutU32Le(ico, bitmap + 8, 200000);
  EXPECT_TRUE(RefusedAsInvalid(ico));
}

TEST(PictureDamage, OversizeGifScreenIsRefusedBeforeAllocating) {
  Bytes gif = ReadSample("gif_transparent.gif");
  PutU16Le(gif, 6, 65535);
  PutU16Le(gif, 8, 65535);
  EXPECT_TRUE(RefusedAsInvalid(gif));
}

TEST(PictureDamage, OversizeJpegIsRefusedBeforeAllocating) {
  Bytes jpeg = ReadSample("jpeg_baseline.jpg");
  const size_t frame = FindMarker(jpeg, kStartOfFrame);
  PutU16Be(jpeg, frame + 5, 65000);
  PutU16Be(jpeg, frame + 7, 65000);
  EXPECT_TRUE(RefusedAsInvalid(jpeg));
}

}  // namespace
}  // namespace kestu
