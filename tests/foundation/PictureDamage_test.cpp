// Damaged pictures: cut short, corrupted, or claiming a size they cannot
// have. Each must be refused with "Invalid picture", never crash, and never
// come back half-decoded. Under the sanitizers these also catch reads past
// the data and leaks on every refusal path.

#include <gtest/gtest.h>

#include <algorithm>
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

// Writes `value` over `size` bytes at `at`, least significant byte first
// unless `big_endian`.
void Put(Bytes& bytes, size_t at, uint32_t value, int size, bool big_endian = false) {
  for (int i = 0; i < size; ++i) {
    bytes[at + (big_endian ? size - 1 - i : i)] = static_cast<uint8_t>(value >> (8 * i));
  }
}

uint32_t Crc32(const uint8_t* data, size_t length) {
  uint32_t crc = 0xFFFFFFFFu;
  for (size_t i = 0; i < length; ++i) {
    crc ^= data[i];
    for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1)));
  }
  return ~crc;
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

struct Damage {
  const char* what;
  const char* file;
  void (*apply)(Bytes&);
};

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

const Damage kCorruptions[] = {
    {"PNG header checksum", "png_rgba8.png", [](Bytes& b) { b[29] ^= 0x01; }},
    {"PNG image data", "png_rgba8.png", [](Bytes& b) { b[b.size() - 20] ^= 0x40; }},
    {"BMP depth of 7 bits", "bmp_24bit.bmp", [](Bytes& b) { Put(b, 28, 7, 2); }},
    {"BMP run-length coding", "bmp_4bit.bmp", [](Bytes& b) { Put(b, 30, 2, 4); }},
    {"BMP header of 64 bytes", "bmp_24bit.bmp", [](Bytes& b) { Put(b, 14, 64, 4); }},
    {"BMP index 200 of 200 colours", "bmp_8bit.bmp", [](Bytes& b) { b[b[10] | b[11] << 8] = 200; }},
    {"icon entry past the end", "ico_mask_4bit.ico",
     [](Bytes& b) { Put(b, 6 + 16 + 12, static_cast<uint32_t>(b.size()), 4); }},
    {"icon without entries", "ico_mask_4bit.ico", [](Bytes& b) { Put(b, 4, 0, 2); }},
    {"GIF frame separator", "gif_transparent.gif",
     [](Bytes& b) { *std::find(b.begin() + 13 + 48, b.end(), uint8_t{','}) = 'X'; }},
    {"JPEG precision of 9 bits", "jpeg_baseline.jpg",
     [](Bytes& b) { b[FindMarker(b, kStartOfFrame) + 4] = 9; }},
    // libjpeg would pad the rest of the picture with grey; we refuse it.
    {"JPEG scan ending early", "jpeg_baseline.jpg",
     [](Bytes& b) {
       const size_t scan = FindMarker(b, kStartOfScan);
       Put(b, scan + 4 + (b[scan + 2] << 8 | b[scan + 3]), 0xFFD9, 2, true);
     }},
};

// Whatever a handful of changed bytes does, the answer is a whole picture
// or "Invalid picture", never another error or a crash.
TEST(PictureDamage, RandomlyDamagedFilesDecodeWholeOrAreRefused) {
  std::mt19937 random(20240611);
  for (const std::string& name : AllSampleNames()) {
    const Bytes whole = ReadSample(name);
    for (int round = 0; round < 250; ++round) {
      Bytes damaged = whole;
      for (int i = 0, changes = 1 + static_cast<int>(random() % 4); i < changes; ++i) {
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

void ClaimBmpSize(Bytes& b, uint32_t width, uint32_t height) {
  Put(b, 18, width, 4);
  Put(b, 22, height, 4);
}

// A PNG header claiming another size, with a checksum that still matches.
void ClaimPngSize(Bytes& b, uint32_t width, uint32_t height) {
  Put(b, 16, width, 4, true);
  Put(b, 20, height, 4, true);
  Put(b, 29, Crc32(b.data() + 12, 17), 4, true);
}

// Believing these headers would take gigabytes; under the address
// sanitizer such an allocation aborts the test.
const Damage kImpossibleSizes[] = {
    {"BMP 100000 x -100000", "bmp_24bit.bmp",
     [](Bytes& b) { ClaimBmpSize(b, 100000, uint32_t(-100000)); }},
    {"BMP one pixel over the side", "bmp_24bit.bmp",
     [](Bytes& b) { ClaimBmpSize(b, kMaxPictureSide + 1, 1); }},
    {"BMP sides at the cap, too many pixels", "bmp_24bit.bmp",
     [](Bytes& b) { ClaimBmpSize(b, kMaxPictureSide, kMaxPictureSide); }},
    {"BMP within the caps, rows missing", "bmp_24bit.bmp",
     [](Bytes& b) { ClaimBmpSize(b, kMaxPictureSide, 4096); }},
    {"BMP height of INT32_MIN", "bmp_24bit.bmp",
     [](Bytes& b) { ClaimBmpSize(b, 13, 0x80000000u); }},
    {"PNG 100000 x 100000", "png_rgba8.png", [](Bytes& b) { ClaimPngSize(b, 100000, 100000); }},
    {"PNG sides at the cap, too many pixels", "png_rgba8.png",
     [](Bytes& b) { ClaimPngSize(b, kMaxPictureSide, kMaxPictureSide); }},
    {"icon bitmap 100000 x 100000", "ico_mask_4bit.ico",
     [](Bytes& b) {
       const size_t bitmap = b[6 + 16 + 12] | b[6 + 16 + 13] << 8;  // the chosen entry
       Put(b, bitmap + 4, 100000, 4);
       Put(b, bitmap + 8, 200000, 4);
     }},
    {"GIF screen 65535 x 65535", "gif_transparent.gif",
     [](Bytes& b) {
       Put(b, 6, 65535, 2);
       Put(b, 8, 65535, 2);
     }},
    // A whole, valid file otherwise: only the pixel cap can refuse it.
    {"GIF screen one row over the pixel cap", "gif_transparent.gif",
     [](Bytes& b) {
       Put(b, 6, kMaxPictureSide, 2);
       Put(b, 8, kMaxPicturePixels / kMaxPictureSide + 1, 2);
     }},
    {"JPEG 65000 x 65000", "jpeg_baseline.jpg",
     [](Bytes& b) {
       const size_t frame = FindMarker(b, kStartOfFrame);
       Put(b, frame + 5, 65000, 2, true);
       Put(b, frame + 7, 65000, 2, true);
     }},
};

TEST(PictureDamage, CorruptionsAndImpossibleSizesAreRefused) {
  std::vector<Damage> all(std::begin(kCorruptions), std::end(kCorruptions));
  all.insert(all.end(), std::begin(kImpossibleSizes), std::end(kImpossibleSizes));
  for (const Damage& damage : all) {
    Bytes bytes = ReadSample(damage.file);
    damage.apply(bytes);
    EXPECT_TRUE(RefusedAsInvalid(bytes)) << damage.what;
  }
}

}  // namespace
}  // namespace kestu
