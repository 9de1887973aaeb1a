#pragma once
// Colours as the host stores them, and their resolution to pixels.

#include <cstdint>

namespace kestu {

// With the high bit clear: 0x00BBGGRR. With the high bit set: the low byte
// names a system colour, resolved only when drawing, never when storing.
using OLE_COLOR = uint32_t;

namespace syscolor {
inline constexpr OLE_COLOR kWindowBackground = 0x80000005;
inline constexpr OLE_COLOR kWindowText = 0x80000008;
inline constexpr OLE_COLOR kHighlight = 0x8000000D;
inline constexpr OLE_COLOR kHighlightText = 0x8000000E;
inline constexpr OLE_COLOR kButtonFace = 0x8000000F;
inline constexpr OLE_COLOR kButtonShadow = 0x80000010;
inline constexpr OLE_COLOR kGrayText = 0x80000011;
inline constexpr OLE_COLOR kButtonText = 0x80000012;
inline constexpr OLE_COLOR k3DHighlight = 0x80000014;
inline constexpr OLE_COLOR k3DDarkShadow = 0x80000015;
inline constexpr OLE_COLOR k3DLight = 0x80000016;
}  // namespace syscolor

// A resolved colour as a pixel: 0x00RRGGBB.
using Rgb = uint32_t;

inline constexpr bool IsSystemColor(OLE_COLOR c) { return (c & 0x80000000u) != 0; }

// Colour of system index 0..30 from the library's fixed desktop scheme;
// indexes past the table resolve to black.
Rgb SystemColorRgb(int index);

// The pixel an OLE_COLOR draws as.
Rgb ResolveColor(OLE_COLOR color);

// 0x00BBGGRR from components.
inline constexpr OLE_COLOR RGB(uint8_t r, uint8_t g, uint8_t b) {
  return static_cast<OLE_COLOR>(r) | (static_cast<OLE_COLOR>(g) << 8) |
         (static_cast<OLE_COLOR>(b) << 16);
}

}  // namespace kestu
