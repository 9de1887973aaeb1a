#pragma once
// Twips to whole pixels, as the host places windows and sizes rasters, and
// how large a surface may be.

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "kestu/foundation/RuntimeError.h"

namespace kestu {

// The nearest pixel, halves up: the rule the controls' drawing uses too,
// so a control's raster and its drawing agree on where an edge falls. A
// distance beyond any screen is held at the ends of `int`, never wrapped.
inline int TwipsToPixels(double twips, int twips_per_pixel) {
  const double pixels = std::floor(twips / twips_per_pixel + 0.5);
  if (!(pixels > INT32_MIN)) return INT32_MIN;  // also NaN
  if (pixels > INT32_MAX) return INT32_MAX;
  return static_cast<int>(pixels);
}

// A form's or a control's surface: at most this many pixels a side, and
// this many in all (128 MiB of them).
inline constexpr int kMaxSurfaceSide = 32767;
inline constexpr int64_t kMaxSurfacePixels = int64_t{1} << 25;

// Error 380, naming `what`, when a surface of `width` x `height` twips
// would pass those limits: a size from outside never allocates gigabytes.
inline void CheckSurfaceSize(int width_twips, int height_twips, int twips_per_pixel_x,
                             int twips_per_pixel_y, std::string_view what) {
  const int64_t width = TwipsToPixels(width_twips, twips_per_pixel_x);
  const int64_t height = TwipsToPixels(height_twips, twips_per_pixel_y);
  if (width <= kMaxSurfaceSide && height <= kMaxSurfaceSide &&
      width * height <= kMaxSurfacePixels) {
    return;
  }
  std::string detail(what);
  detail += ": ";
  detail += std::to_string(width);
  detail += " x ";
  detail += std::to_string(height);
  detail += " pixels is larger than a surface may be (";
  detail += std::to_string(kMaxSurfaceSide);
  detail += " a side, ";
  detail += std::to_string(kMaxSurfacePixels);
  detail += " in all)";
  throw RuntimeError(err::kInvalidPropertyValue, std::move(detail));
}

}  // namespace kestu
