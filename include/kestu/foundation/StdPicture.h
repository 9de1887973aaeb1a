#pragma once
// The container's picture object: decoded pixels with their size in
// himetric units (0.01 mm) as the host reports it.

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace kestu {

class StdPicture {
 public:
  // Pixels are 0xAARRGGBB, row-major, `width * height` of them.
  StdPicture(int width, int height, std::vector<uint32_t> pixels);

  int WidthPixels() const { return width_; }
  int HeightPixels() const { return height_; }
  // Himetric at 96 pixels per inch: 1 pixel = 2540 / 96 himetric, rounded.
  int32_t Width() const;
  int32_t Height() const;

  uint32_t PixelAt(int x, int y) const { return pixels_[static_cast<size_t>(y) * width_ + x]; }
  const std::vector<uint32_t>& Pixels() const { return pixels_; }

  friend bool operator==(const StdPicture&, const StdPicture&) = default;

 private:
  int width_;
  int height_;
  std::vector<uint32_t> pixels_;
};

using PictureRef = std::shared_ptr<const StdPicture>;

// Pictures larger than this in either direction, or in total pixels, are
// refused as invalid rather than allocated.
inline constexpr int kMaxPictureSide = 16384;
inline constexpr int64_t kMaxPicturePixels = 64ll * 1024 * 1024;

// Decodes PNG, BMP, ICO, GIF (first frame) or JPEG by their signature.
// A truncated, corrupt or unknown picture throws RuntimeError 481
// "Invalid picture"; nothing is returned half-decoded.
PictureRef LoadPictureFromBytes(std::span<const uint8_t> bytes);
// As above, from a file; a missing file is error 53, with the path named.
PictureRef LoadPicture(const std::filesystem::path& path);

// PNG of any 0xAARRGGBB pixel block, written without a time chunk, so the
// same pixels always give the same bytes.
std::vector<uint8_t> EncodePng(int width, int height, std::span<const uint32_t> pixels);

}  // namespace kestu
