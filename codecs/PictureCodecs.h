#pragma once
// The per-format decoders behind LoadPictureFromBytes and the rules they
// share: one way to fail, one size cap, one pixel layout.

#include <cstdint>
#include <span>

#include "kestu/foundation/StdPicture.h"

namespace kestu {

enum class PictureFormat { kUnknown, kPng, kBmp, kIco, kGif, kJpeg };

// Recognises a picture by its first bytes, never by a file name.
PictureFormat SniffPictureFormat(std::span<const uint8_t> bytes);

// Throws the host's "Invalid picture": every decoder's only way to refuse.
[[noreturn]] void ThrowInvalidPicture();

// Refuses a size outside kMaxPictureSide / kMaxPicturePixels; decoders call
// it with the size a header claims, before allocating a single pixel.
void CheckPictureSize(int64_t width, int64_t height);

// One pixel as StdPicture keeps it: 0xAARRGGBB.
constexpr uint32_t Argb(uint8_t alpha, uint8_t red, uint8_t green, uint8_t blue) {
  return uint32_t{alpha} << 24 | uint32_t{red} << 16 | uint32_t{green} << 8 | blue;
}

// Each decoder takes the whole file and returns a complete picture or throws.
StdPicture DecodePng(std::span<const uint8_t> bytes);
StdPicture DecodeBmp(std::span<const uint8_t> bytes);
StdPicture DecodeIco(std::span<const uint8_t> bytes);
StdPicture DecodeGif(std::span<const uint8_t> bytes);
StdPicture DecodeJpeg(std::span<const uint8_t> bytes);

// The bitmap of one icon entry: a bitmap without its file header, twice as
// tall as the icon (colour rows, then the one-bit transparency mask).
StdPicture DecodeIconBitmap(std::span<const uint8_t> bytes);

}  // namespace kestu
