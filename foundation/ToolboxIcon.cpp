#include "kestu/foundation/ToolboxIcon.h"

#include <utility>
#include <vector>

namespace kestu {

std::optional<uint32_t> ToolboxIconColor(char c) {
  constexpr uint32_t kOpaque = 0xFF000000;
  switch (c) {
    case '.':
      return 0;
    case 'k':
      return kOpaque | 0x000000;
    case 'w':
      return kOpaque | 0xFFFFFF;
    case 'l':
      return kOpaque | 0xC0C0C0;
    case 'g':
      return kOpaque | 0x808080;
    case 'b':
      return kOpaque | 0x000080;
    case 'B':
      return kOpaque | 0x0000FF;
    case 'c':
      return kOpaque | 0x008080;
    case 'C':
      return kOpaque | 0x00FFFF;
    case 'G':
      return kOpaque | 0x008000;
    case 'L':
      return kOpaque | 0x00FF00;
    case 'r':
      return kOpaque | 0x800000;
    case 'R':
      return kOpaque | 0xFF0000;
    case 'y':
      return kOpaque | 0x808000;
    case 'Y':
      return kOpaque | 0xFFFF00;
    case 'm':
      return kOpaque | 0x800080;
    case 'M':
      return kOpaque | 0xFF00FF;
    default:
      return std::nullopt;
  }
}

std::string ToolboxIconProblem(std::span<const std::string_view> art) {
  const std::string side = std::to_string(kToolboxIconSide);
  if (art.size() != static_cast<size_t>(kToolboxIconSide)) {
    return std::to_string(art.size()) + " rows, not " + side;
  }
  bool drawn = false;
  for (size_t y = 0; y < art.size(); ++y) {
    const std::string row = "row " + std::to_string(y + 1);
    if (art[y].size() != static_cast<size_t>(kToolboxIconSide)) {
      return row + " has " + std::to_string(art[y].size()) + " characters, not " + side;
    }
    for (size_t x = 0; x < art[y].size(); ++x) {
      const std::optional<uint32_t> color = ToolboxIconColor(art[y][x]);
      if (!color) {
        // A byte that is not text is shown by its number, not written raw.
        const unsigned char byte = static_cast<unsigned char>(art[y][x]);
        const std::string shown = byte >= 0x20 && byte < 0x7F ? std::string("'") + art[y][x] + "'"
                                                              : "byte " + std::to_string(byte);
        return row + ", column " + std::to_string(x + 1) + ": " + shown + " is not in the palette";
      }
      drawn = drawn || *color != 0;
    }
  }
  if (!drawn) return std::string("every pixel is transparent");
  return {};
}

std::optional<StdPicture> ToolboxIconPicture(std::span<const std::string_view> art) {
  if (!ToolboxIconProblem(art).empty()) return std::nullopt;
  std::vector<uint32_t> pixels;
  pixels.reserve(kToolboxIconSide * kToolboxIconSide);
  for (std::string_view row : art) {
    for (char c : row) pixels.push_back(*ToolboxIconColor(c));
  }
  return StdPicture(kToolboxIconSide, kToolboxIconSide, std::move(pixels));
}

}  // namespace kestu
