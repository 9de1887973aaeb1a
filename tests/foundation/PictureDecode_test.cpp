// Decoding the sample pictures of every format, pixel by pixel.

#include <gtest/gtest.h>

#include <cstdlib>
#include <ostream>

#include "foundation/PicturePatterns.h"
#include "kestu/foundation/RuntimeError.h"
#include "kestu/foundation/StdPicture.h"

namespace kestu {
namespace {

using namespace picture_test;

struct Sample {
  const char* file;
  int width;
  int height;
  PixelRule pixel;
};

std::ostream& operator<<(std::ostream& out, const Sample& sample) {
  return out << sample.file;
}

uint32_t Opaque(int x, int y) {
  return PatternRgb(x, y);
}
uint32_t WithAlpha(int x, int y) {
  return PatternRgb(x, y, PatternAlpha(x, y));
}

PixelRule Indexed(int count) {
  return [count](int x, int y) { return PaletteColour(PatternIndex(x, y, count)); };
}

uint32_t Grey(int level) {
  return Pixel(255, level, level, level);
}

// A bit field of `bits` widened to eight bits, rounding to the nearest.
int Widen(int value, int bits) {
  const int max = (1 << bits) - 1;
  return (value * 255 + max / 2) / max;
}

const Sample kLosslessSamples[] = {
    {"png_rgba8.png", 13, 7, WithAlpha},
    {"png_rgba8_interlaced.png", 13, 7, WithAlpha},
    {"png_rgb16.png", 13, 7, Opaque},  // the low byte of each sample is dropped
    {"png_gray1.png", 13, 7, [](int x, int y) { return Grey((x + y) % 2 * 255); }},
    {"png_gray2.png", 13, 7, [](int x, int y) { return Grey((x + 2 * y) % 4 * 85); }},
    {"png_gray_alpha8.png", 13, 7,
     [](int x, int y) {
       const int g = PatternGray(x, y);
       return Pixel(PatternAlpha(x, y), g, g, g);
     }},
    {"png_palette4_trns.png", 13, 7,
     [](int x, int y) {
       const int i = PatternIndex(x, y, 11);
       return PaletteColour(i, i < 5 ? i * 60 : 255);
     }},
    {"png_rgb8_trns.png", 13, 7,
     [](int x, int y) { return PatternRgb(x, y, PatternRgb(x, y) == PatternRgb(2, 1) ? 0 : 255); }},
    {"bmp_1bit.bmp", 13, 7, Indexed(2)},
    {"bmp_4bit.bmp", 13, 7, Indexed(11)},
    {"bmp_8bit.bmp", 13, 7, Indexed(200)},
    {"bmp_24bit.bmp", 13, 7, Opaque},
    {"bmp_24bit_topdown.bmp", 13, 7, Opaque},
    {"bmp_24bit_v4.bmp", 13, 7, Opaque},
    {"bmp_32bit_rgb.bmp", 13, 7, Opaque},  // a zero fourth byte everywhere is not alpha
    {"bmp_32bit_v5_alpha.bmp", 13, 7, WithAlpha},
    {"bmp_16bit_565.bmp", 13, 7,
     [](int x, int y) {
       return Pixel(255, Widen(PatternRed(x, y) >> 3, 5), Widen(PatternGreen(x, y) >> 2, 6),
                    Widen(PatternBlue(x, y) >> 3, 5));
     }},
    // The 24 x 24 entry wins over the 16 x 16 one; its mask clears alpha only.
    {"ico_mask_4bit.ico", 24, 24,
     [](int x, int y) {
       return PaletteColour(PatternIndex(x, y, 16), (x * y) % 3 == 0 ? 0 : 255);
     }},
    {"ico_png.ico", 20, 20, WithAlpha},
    // Same size, deeper colour wins; its own alpha beats a mask that hides everything.
    {"ico_32bit_alpha.ico", 16, 16, WithAlpha},
    {"gif_transparent.gif", 13, 7,
     [](int x, int y) {
       const int i = PatternIndex(x, y, 16);
       return PaletteColour(i, i == 3 ? 0 : 255);
     }},
    // The first frame only, with its own colours, at (3, 2) on a 20 x 12
    // screen that is transparent elsewhere.
    {"gif_interlaced_frame.gif", 20, 12,
     [](int x, int y) -> uint32_t {
       const bool inside = x >= 3 && x < 16 && y >= 2 && y < 9;
       return inside ? PaletteColour(PatternIndex(x - 3, y - 2, 8) + 20) : 0;
     }},
};

class LosslessSample : public testing::TestWithParam<Sample> {};

TEST_P(LosslessSample, DecodesEveryPixel) {
  const Sample& sample = GetParam();
  const PictureRef picture = LoadPictureFromBytes(ReadSample(sample.file));
  ASSERT_EQ(picture->WidthPixels(), sample.width);
  ASSERT_EQ(picture->HeightPixels(), sample.height);
  EXPECT_TRUE(PixelsFollow(*picture, sample.pixel));
}

INSTANTIATE_TEST_SUITE_P(PictureDecode, LosslessSample, testing::ValuesIn(kLosslessSamples));

// The JPEG samples are four solid 8 x 8 blocks; at full quality each comes
// back within a few levels of what was written.
testing::AssertionResult BlocksNear(const StdPicture& picture, const uint32_t (&blocks)[4]) {
  if (picture.WidthPixels() != 16 || picture.HeightPixels() != 16) {
    return testing::AssertionFailure()
           << "size " << picture.WidthPixels() << " x " << picture.HeightPixels();
  }
  for (int y = 0; y < 16; ++y) {
    for (int x = 0; x < 16; ++x) {
      const uint32_t want = blocks[(y >= 8) * 2 + (x >= 8)];
      const uint32_t got = picture.PixelAt(x, y);
      for (int shift : {0, 8, 16}) {
        const int difference = int(got >> shift & 255) - int(want >> shift & 255);
        if (std::abs(difference) > 3 || got >> 24 != 255) {
          return testing::AssertionFailure() << "pixel (" << x << ", " << y << ") is 0x" << std::hex
                                             << got << ", expected about 0x" << want;
        }
      }
    }
  }
  return testing::AssertionSuccess();
}

TEST(PictureDecode, JpegBlocksComeBackNearTheirColours) {
  struct Case {
    const char* file;
    uint32_t blocks[4];
  };
  const uint32_t colours[4] = {Pixel(255, 200, 30, 40), Pixel(255, 20, 180, 60),
                               Pixel(255, 40, 50, 220), Pixel(255, 250, 250, 250)};
  const Case cases[] = {
      {"jpeg_baseline.jpg", {colours[0], colours[1], colours[2], colours[3]}},
      {"jpeg_progressive.jpg", {colours[0], colours[1], colours[2], colours[3]}},
      {"jpeg_gray.jpg", {Grey(30), Grey(90), Grey(160), Grey(230)}},
      // Inks stored inverted under the Adobe marker: (255, 128, 0, 200) is
      // red 255 * 200 / 255, green 128 * 200 / 255, blue 0.
      {"jpeg_cmyk.jpg",
       {Pixel(255, 200, 100, 0), Pixel(255, 0, 255, 255), Pixel(255, 100, 100, 100),
        Pixel(255, 60, 200, 120)}},
  };
  for (const Case& c : cases) {
    EXPECT_TRUE(BlocksNear(*LoadPictureFromBytes(ReadSample(c.file)), c.blocks)) << c.file;
  }
}

TEST(StdPictureSize, HimetricIsPixelsAt96PerInchRoundedHalfUp) {
  struct Case {
    int pixels;
    int32_t himetric;
  };
  // 12 pixels are exactly 317.5 himetric: the half goes up.
  for (const Case c : {Case{0, 0}, Case{1, 26}, Case{12, 318}, Case{16, 423}, Case{32, 847},
                       Case{96, 2540}, Case{16384, 433493}}) {
    const StdPicture picture(c.pixels, 1, std::vector<uint32_t>(static_cast<size_t>(c.pixels)));
    EXPECT_EQ(picture.Width(), c.himetric) << c.pixels << " pixels";
    const StdPicture tall(1, c.pixels, std::vector<uint32_t>(static_cast<size_t>(c.pixels)));
    EXPECT_EQ(tall.Height(), c.himetric) << c.pixels << " pixels";
  }
}

TEST(StdPictureSize, PixelsThatDoNotFillTheSizeAreRefused) {
  EXPECT_THROW(StdPicture(2, 2, std::vector<uint32_t>(3)), RuntimeError);
  EXPECT_THROW(StdPicture(-1, 0, {}), RuntimeError);
}

}  // namespace
}  // namespace kestu
