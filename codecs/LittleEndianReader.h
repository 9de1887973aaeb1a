#pragma once
// Bounds-checked little-endian reads at absolute offsets, for the picture
// formats we parse ourselves: a read past the end is an invalid picture.

#include <cstddef>
#include <cstdint>
#include <span>

#include "codecs/PictureCodecs.h"

namespace kestu {

class LittleEndianReader {
 public:
  explicit LittleEndianReader(std::span<const uint8_t> bytes) : bytes_(bytes) {}

  size_t Size() const { return bytes_.size(); }

  // `length` bytes from `offset`; refuses a range that leaves the data.
  std::span<const uint8_t> Bytes(uint64_t offset, uint64_t length) const {
    if (offset > bytes_.size() || length > bytes_.size() - offset) ThrowInvalidPicture();
    return bytes_.subspan(static_cast<size_t>(offset), static_cast<size_t>(length));
  }

  uint8_t U8(uint64_t offset) const { return Bytes(offset, 1)[0]; }

  uint16_t U16(uint64_t offset) const {
    const auto b = Bytes(offset, 2);
    return static_cast<uint16_t>(b[0] | b[1] << 8);
  }

  uint32_t U32(uint64_t offset) const {
    const auto b = Bytes(offset, 4);
    return uint32_t{b[0]} | uint32_t{b[1]} << 8 | uint32_t{b[2]} << 16 | uint32_t{b[3]} << 24;
  }

  int32_t I32(uint64_t offset) const { return static_cast<int32_t>(U32(offset)); }

 private:
  std::span<const uint8_t> bytes_;
};

}  // namespace kestu
