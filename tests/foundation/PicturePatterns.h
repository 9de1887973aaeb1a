#pragma once
// The formulas the sample pictures in tests/data/pictures draw (written by
// make_pictures.py there), so that a test can say what every pixel must be.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "kestu/foundation/StdPicture.h"

namespace kestu::picture_test {

inline std::filesystem::path SamplePath(const std::string& name) {
  return std::filesystem::path(KESTU_TEST_DATA) / "pictures" / name;
}

inline std::vector<uint8_t> ReadSample(const std::string& name) {
  std::ifstream in(SamplePath(name), std::ios::binary);
  EXPECT_TRUE(in) << "missing sample " << name;
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// Every sample picture, found by extension, so a new file is covered at once.
inline std::vector<std::string> AllSampleNames() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(SamplePath(""))) {
    const std::string ext = entry.path().extension().string();
    if (ext == ".png" || ext == ".bmp" || ext == ".ico" || ext == ".gif" || ext == ".jpg") {
      names.push_back(entry.path().filename().string());
    }
  }
  std::sort(names.begin(), names.end());
  return names;
}

constexpr uint32_t Pixel(int alpha, int red, int green, int blue) {
  return uint32_t(alpha) << 24 | uint32_t(red) << 16 | uint32_t(green) << 8 | uint32_t(blue);
}

constexpr int PatternRed(int x, int y) {
  return (x * 37 + y * 11) & 255;
}
constexpr int PatternGreen(int x, int y) {
  return (x * 5 + y * 53) & 255;
}
constexpr int PatternBlue(int x, int y) {
  return (x * x + y * 3) & 255;
}
constexpr int PatternAlpha(int x, int y) {
  return (x * 29 + y * 71) & 255;
}
constexpr int PatternGray(int x, int y) {
  return (x * 19 + y * 41) & 255;
}
constexpr int PatternIndex(int x, int y, int count) {
  return (x + 3 * y) % count;
}

constexpr uint32_t PatternRgb(int x, int y, int alpha = 255) {
  return Pixel(alpha, PatternRed(x, y), PatternGreen(x, y), PatternBlue(x, y));
}

constexpr uint32_t PaletteColour(int i, int alpha = 255) {
  return Pixel(alpha, (i * 71 + 13) & 255, (i * 29 + 200) & 255, (i * i * 7) & 255);
}

using PixelRule = std::function<uint32_t(int x, int y)>;

// Compares every pixel, naming the first one that differs.
inline testing::AssertionResult PixelsFollow(const StdPicture& picture, const PixelRule& rule) {
  for (int y = 0; y < picture.HeightPixels(); ++y) {
    for (int x = 0; x < picture.WidthPixels(); ++x) {
      if (picture.PixelAt(x, y) != rule(x, y)) {
        return testing::AssertionFailure()
               << "pixel (" << x << ", " << y << ") is 0x" << std::hex << picture.PixelAt(x, y)
               << ", expected 0x" << rule(x, y);
      }
    }
  }
  return testing::AssertionSuccess();
}

}  // namespace kestu::picture_test
