#pragma once
// The rules of a volume set, shared by the file copier and by kestu-copy so
// that both name and cut volumes the same way: "@name" stands for name.001,
// name.002, ... and every volume but the last holds the smallest whole
// number of blocks that exceeds the volume size. Pure computation on 64-bit
// counts; whoever calls it keeps its own limits.

#include <cstdint>
#include <string>
#include <string_view>

namespace kestu::volume_set {

inline constexpr char kSetMarker = '@';

inline bool IsSetName(std::string_view name) {
  return name.starts_with(kSetMarker);
}

// ".001", ".042", ".1000": the number in at least three digits.
inline std::string VolumeSuffix(int64_t number) {
  std::string digits = std::to_string(number);
  if (digits.size() < 3) digits.insert(0, 3 - digits.size(), '0');
  return std::string(".").append(digits);
}

// The host's Trim: blanks only, tabs stay.
inline std::string TrimBlanks(std::string_view text) {
  const size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

// The first volume of a set: its name without the "@", then ".001".
inline std::string FirstVolumeName(std::string_view set_name) {
  return std::string(set_name.substr(IsSetName(set_name) ? 1 : 0)).append(VolumeSuffix(1));
}

// The volume `number` that follows `previous`: cut before the first "." of
// the whole name, blanks trimmed, then the suffix. The cut is at the first
// dot on purpose, so "data.zip.001" is followed by "data.002".
inline std::string NextVolumeName(std::string_view previous, int64_t number) {
  std::string base(previous);
  if (const size_t dot = base.find('.'); dot != std::string::npos) {
    base = TrimBlanks(base.substr(0, dot));
  }
  return base.append(VolumeSuffix(number));
}

// Whether a volume that has taken `bytes_in_volume` is full. Tested after a
// whole block was written, with "greater than": a volume passes its size
// by less than one block instead of stopping short of it.
constexpr bool VolumeIsFull(int64_t bytes_in_volume, int64_t size_limit) {
  return bytes_in_volume > size_limit;
}

// The bytes in every volume of a set but the last, for a size limit and a
// block: the smallest whole number of blocks for which VolumeIsFull holds.
// A limit below zero is passed by the first block.
constexpr int64_t FullVolumeBytes(int64_t size_limit, int64_t block_bytes) {
  if (size_limit < 0) return block_bytes;
  return (size_limit / block_bytes + 1) * block_bytes;
}

}  // namespace kestu::volume_set
