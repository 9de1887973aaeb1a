// Our own reader of icon (and cursor) files: a directory of entries, each a
// bitmap with a transparency mask or a complete PNG. The best entry is shown.

#include <vector>

#include "codecs/LittleEndianReader.h"
#include "codecs/PictureCodecs.h"

namespace kestu {

namespace {

constexpr uint64_t kDirectoryHeaderSize = 6;
constexpr uint64_t kDirectoryEntrySize = 16;

struct IconEntry {
  int width = 0;
  int height = 0;
  int bits = 0;
  uint64_t offset = 0;
  uint64_t size = 0;

  // Larger first, then deeper colour; the directory's own claims decide.
  bool IsBetterThan(const IconEntry& other) const {
    const int area = width * height;
    const int other_area = other.width * other.height;
    return area != other_area ? area > other_area : bits > other.bits;
  }
};

IconEntry ReadEntry(const LittleEndianReader& reader, int index) {
  const uint64_t at = kDirectoryHeaderSize + kDirectoryEntrySize * index;
  IconEntry entry;
  // A stored width or height of 0 means 256.
  entry.width = reader.U8(at) == 0 ? 256 : reader.U8(at);
  entry.height = reader.U8(at + 1) == 0 ? 256 : reader.U8(at + 1);
  entry.bits = reader.U16(at + 6);
  entry.size = reader.U32(at + 8);
  entry.offset = reader.U32(at + 12);
  // Every entry must lie inside the file, chosen or not: a file cut short
  // is refused whole.
  if (entry.size == 0) ThrowInvalidPicture();
  reader.Bytes(entry.offset, entry.size);
  return entry;
}

IconEntry ChooseEntry(const LittleEndianReader& reader) {
  const uint16_t type = reader.U16(2);
  const int count = reader.U16(4);
  if (reader.U16(0) != 0 || (type != 1 && type != 2) || count == 0) ThrowInvalidPicture();
  IconEntry best = ReadEntry(reader, 0);
  for (int i = 1; i < count; ++i) {
    const IconEntry entry = ReadEntry(reader, i);
    if (entry.IsBetterThan(best)) best = entry;
  }
  return best;
}

}  // namespace

StdPicture DecodeIco(std::span<const uint8_t> bytes) {
  const LittleEndianReader reader(bytes);
  const IconEntry entry = ChooseEntry(reader);
  const auto image = reader.Bytes(entry.offset, entry.size);
  if (SniffPictureFormat(image) == PictureFormat::kPng) return DecodePng(image);
  return DecodeIconBitmap(image);
}

}  // namespace kestu
