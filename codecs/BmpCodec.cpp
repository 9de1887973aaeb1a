// Our own bounded reader of device-independent bitmaps, used both for .bmp
// files and for the bitmaps inside icons. Every size is checked against the
// data before anything is allocated.

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "codecs/LittleEndianReader.h"
#include "codecs/PictureCodecs.h"

namespace kestu {

namespace {

constexpr size_t kFileHeaderSize = 14;
constexpr uint32_t kUncompressed = 0;
constexpr uint32_t kBitFields = 3;
constexpr uint32_t kAlphaBitFields = 6;

// Where one channel sits in a 16- or 32-bit pixel and how to widen it to
// eight bits. A missing channel reads as `absent`.
class ChannelMask {
 public:
  explicit ChannelMask(uint32_t mask)
      : mask_(mask), shift_(mask == 0 ? 0 : std::countr_zero(mask)), max_(mask >> shift_) {}

  uint8_t Extract(uint32_t value, uint8_t absent) const {
    if (mask_ == 0) return absent;
    const uint64_t field = (value & mask_) >> shift_;
    return static_cast<uint8_t>((field * 255 + max_ / 2) / max_);
  }

 private:
  uint32_t mask_;
  int shift_;
  uint64_t max_;
};

struct DibHeader {
  int width = 0;
  int height = 0;  // rows of colour, without an icon's mask
  bool top_down = false;
  int bits = 0;
  uint32_t compression = kUncompressed;
  std::array<uint32_t, 4> masks{};  // red, green, blue, alpha
  uint64_t palette_offset = 0;
  uint64_t palette_entries = 0;  // as the header declares them
  uint64_t stride = 0;           // bytes per row, padded to four
  // The colour rows follow the palette directly in an icon.
  uint64_t PaletteEnd() const { return palette_offset + palette_entries * 4; }
};

bool IsKnownHeaderSize(uint32_t size) {
  return size == 40 || size == 52 || size == 56 || size == 108 || size == 124;
}

bool IsSupportedCoding(int bits, uint32_t compression) {
  const bool depth_ok =
      bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
  if (!depth_ok) return false;
  if (compression == kUncompressed) return true;
  // Run-length coded bitmaps are refused rather than half supported.
  return (compression == kBitFields || compression == kAlphaBitFields) &&
         (bits == 16 || bits == 32);
}

// Colour masks: implied when the bitmap is uncompressed, inside the header
// from the 52-byte header on, else right after the 40-byte header. Returns
// how many mask bytes sit between the header and the palette.
uint64_t ReadMasks(const LittleEndianReader& reader, uint64_t offset, uint32_t header_size,
                   DibHeader& dib) {
  if (dib.compression == kUncompressed) {
    if (dib.bits == 16) dib.masks = {0x7C00, 0x03E0, 0x001F, 0};
    // The fourth byte of a 32-bit pixel is alpha only if some pixel uses it.
    if (dib.bits == 32) dib.masks = {0xFF0000, 0xFF00, 0xFF, 0xFF000000};
    return 0;
  }
  const uint64_t masks_at = offset + 40;
  if (header_size == 40) {
    const int count = dib.compression == kAlphaBitFields ? 4 : 3;
    for (int i = 0; i < count; ++i) dib.masks[i] = reader.U32(masks_at + 4 * i);
    return 4 * count;
  }
  for (int i = 0; i < 3; ++i) dib.masks[i] = reader.U32(masks_at + 4 * i);
  if (header_size >= 56) dib.masks[3] = reader.U32(masks_at + 12);
  return 0;
}

DibHeader ReadDibHeader(const LittleEndianReader& reader, uint64_t offset, bool in_icon) {
  const uint32_t header_size = reader.U32(offset);
  if (!IsKnownHeaderSize(header_size)) ThrowInvalidPicture();
  DibHeader dib;
  const int32_t width = reader.I32(offset + 4);
  const int32_t height = reader.I32(offset + 8);
  dib.bits = reader.U16(offset + 14);
  dib.compression = reader.U32(offset + 16);
  if (reader.U16(offset + 12) != 1 || !IsSupportedCoding(dib.bits, dib.compression)) {
    ThrowInvalidPicture();
  }
  if (height == INT32_MIN || (in_icon && height < 2)) ThrowInvalidPicture();
  dib.top_down = height < 0;
  dib.width = width;
  // An icon's bitmap counts the mask rows in its height.
  dib.height = in_icon ? height / 2 : std::abs(height);
  CheckPictureSize(dib.width, dib.height);
  dib.palette_offset = offset + header_size + ReadMasks(reader, offset, header_size, dib);
  const uint32_t colors_used = reader.U32(offset + 32);
  dib.palette_entries = colors_used == 0 && dib.bits <= 8 ? 1u << dib.bits : colors_used;
  dib.stride = (uint64_t{static_cast<uint32_t>(dib.width)} * dib.bits + 31) / 32 * 4;
  return dib;
}

std::vector<uint32_t> ReadPalette(const LittleEndianReader& reader, const DibHeader& dib) {
  if (dib.bits > 8) return {};
  // Entries past what the depth can index are never used.
  const uint64_t usable = std::min<uint64_t>(dib.palette_entries, 1u << dib.bits);
  const auto bytes = reader.Bytes(dib.palette_offset, usable * 4);
  std::vector<uint32_t> palette(usable);
  for (size_t i = 0; i < usable; ++i) {
    palette[i] = Argb(0xFF, bytes[4 * i + 2], bytes[4 * i + 1], bytes[4 * i]);
  }
  return palette;
}

void DecodeIndexedRow(const uint8_t* row, const DibHeader& dib,
                      const std::vector<uint32_t>& palette, uint32_t* out) {
  const int per_byte = 8 / dib.bits;
  const unsigned index_mask = (1u << dib.bits) - 1;
  for (int x = 0; x < dib.width; ++x) {
    const int shift = 8 - dib.bits * (x % per_byte + 1);
    const unsigned index = (row[x / per_byte] >> shift) & index_mask;
    if (index >= palette.size()) ThrowInvalidPicture();
    out[x] = palette[index];
  }
}

void DecodeMaskedRow(const uint8_t* row, const DibHeader& dib, uint32_t* out) {
  const ChannelMask red(dib.masks[0]), green(dib.masks[1]), blue(dib.masks[2]), alpha(dib.masks[3]);
  const int bytes_per_pixel = dib.bits / 8;
  for (int x = 0; x < dib.width; ++x) {
    const uint8_t* p = row + static_cast<size_t>(x) * bytes_per_pixel;
    uint32_t value = p[0] | uint32_t{p[1]} << 8;
    if (bytes_per_pixel == 4) value |= uint32_t{p[2]} << 16 | uint32_t{p[3]} << 24;
    out[x] = Argb(alpha.Extract(value, 0xFF), red.Extract(value, 0), green.Extract(value, 0),
                  blue.Extract(value, 0));
  }
}

void DecodeRow(const uint8_t* row, const DibHeader& dib, const std::vector<uint32_t>& palette,
               uint32_t* out) {
  if (dib.bits <= 8) return DecodeIndexedRow(row, dib, palette, out);
  if (dib.bits == 24) {
    for (int x = 0; x < dib.width; ++x, row += 3) out[x] = Argb(0xFF, row[2], row[1], row[0]);
    return;
  }
  DecodeMaskedRow(row, dib, out);
}

// True when some pixel has a non-zero alpha. Writers that ignore alpha leave
// it zero everywhere; such a picture is opaque, not invisible.
bool UsesAlpha(const std::vector<uint32_t>& pixels) {
  return std::any_of(pixels.begin(), pixels.end(), [](uint32_t p) { return p >> 24 != 0; });
}

void MakeOpaque(std::vector<uint32_t>& pixels) {
  for (uint32_t& pixel : pixels) pixel |= 0xFF000000u;
}

std::vector<uint32_t> DecodePixels(const LittleEndianReader& reader, const DibHeader& dib,
                                   uint64_t pixel_offset) {
  const auto rows = reader.Bytes(pixel_offset, dib.stride * static_cast<uint64_t>(dib.height));
  const std::vector<uint32_t> palette = ReadPalette(reader, dib);
  std::vector<uint32_t> pixels(static_cast<size_t>(dib.width) * dib.height);
  for (int y = 0; y < dib.height; ++y) {
    const int stored_row = dib.top_down ? y : dib.height - 1 - y;
    DecodeRow(rows.data() + dib.stride * stored_row, dib, palette,
              pixels.data() + static_cast<size_t>(y) * dib.width);
  }
  return pixels;
}

// An icon's one-bit mask, stored bottom-up after the colour rows: a set bit
// makes the pixel transparent. Only the alpha is cleared, as tRNS does.
void ApplyIconMask(std::span<const uint8_t> mask, uint64_t mask_stride, const DibHeader& dib,
                   std::vector<uint32_t>& pixels) {
  for (int y = 0; y < dib.height; ++y) {
    const uint8_t* row = mask.data() + mask_stride * (dib.height - 1 - y);
    uint32_t* out = pixels.data() + static_cast<size_t>(y) * dib.width;
    for (int x = 0; x < dib.width; ++x) {
      if (row[x / 8] & (0x80 >> (x % 8))) out[x] &= 0x00FFFFFFu;
    }
  }
}

}  // namespace

StdPicture DecodeBmp(std::span<const uint8_t> bytes) {
  const LittleEndianReader reader(bytes);
  const uint32_t pixel_offset = reader.U32(10);
  const DibHeader dib = ReadDibHeader(reader, kFileHeaderSize, false);
  std::vector<uint32_t> pixels = DecodePixels(reader, dib, pixel_offset);
  if (!UsesAlpha(pixels)) MakeOpaque(pixels);
  return StdPicture(dib.width, dib.height, std::move(pixels));
}

StdPicture DecodeIconBitmap(std::span<const uint8_t> bytes) {
  const LittleEndianReader reader(bytes);
  const DibHeader dib = ReadDibHeader(reader, 0, true);
  std::vector<uint32_t> pixels = DecodePixels(reader, dib, dib.PaletteEnd());
  // The mask is always there, but a 32-bit icon with an alpha channel of its
  // own is drawn by that alpha alone.
  const uint64_t mask_stride = (uint64_t{static_cast<uint32_t>(dib.width)} + 31) / 32 * 4;
  const auto mask = reader.Bytes(dib.PaletteEnd() + dib.stride * static_cast<uint64_t>(dib.height),
                                 mask_stride * static_cast<uint64_t>(dib.height));
  const bool alpha_from_data = dib.bits == 32 && UsesAlpha(pixels);
  if (!alpha_from_data) {
    MakeOpaque(pixels);
    ApplyIconMask(mask, mask_stride, dib, pixels);
  }
  return StdPicture(dib.width, dib.height, std::move(pixels));
}

}  // namespace kestu
