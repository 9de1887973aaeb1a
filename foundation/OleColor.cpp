#include "kestu/foundation/OleColor.h"

#include <array>
#include <cstddef>

namespace kestu {
namespace {

// The classic grey desktop scheme: grey faces with white and dark-grey
// bevels, navy selection and captions, a teal desktop and pale-yellow tips.
constexpr std::array<Rgb, 31> kSystemColors = {
    0xC0C0C0,  // 0 scroll bar
    0x008080,  // 1 desktop
    0x000080,  // 2 active caption
    0x808080,  // 3 inactive caption
    0xC0C0C0,  // 4 menu
    0xFFFFFF,  // 5 window background
    0x000000,  // 6 window frame
    0x000000,  // 7 menu text
    0x000000,  // 8 window text
    0xFFFFFF,  // 9 caption text
    0xC0C0C0,  // 10 active border
    0xC0C0C0,  // 11 inactive border
    0x808080,  // 12 application workspace
    0x000080,  // 13 highlight
    0xFFFFFF,  // 14 highlight text
    0xC0C0C0,  // 15 button face
    0x808080,  // 16 button shadow
    0x808080,  // 17 grey (disabled) text
    0x000000,  // 18 button text
    0xC0C0C0,  // 19 inactive caption text
    0xFFFFFF,  // 20 3D highlight
    0x000000,  // 21 3D dark shadow
    0xDFDFDF,  // 22 3D light
    0x000000,  // 23 tooltip text
    0xFFFFE1,  // 24 tooltip background
    0xC0C0C0,  // 25 unassigned: the button face
    0x0000FF,  // 26 hot-tracked item
    0x1084D0,  // 27 active caption gradient
    0xB5B5B5,  // 28 inactive caption gradient
    0x000080,  // 29 menu highlight
    0xC0C0C0,  // 30 menu bar
};

}  // namespace

Rgb SystemColorRgb(int index) {
  if (index < 0 || index >= static_cast<int>(kSystemColors.size())) return 0x000000;
  return kSystemColors[static_cast<std::size_t>(index)];
}

Rgb ResolveColor(OLE_COLOR color) {
  if (IsSystemColor(color)) return SystemColorRgb(static_cast<int>(color & 0xFFu));
  const Rgb red = color & 0xFFu;
  const Rgb green = (color >> 8) & 0xFFu;
  const Rgb blue = (color >> 16) & 0xFFu;
  return (red << 16) | (green << 8) | blue;
}

}  // namespace kestu
