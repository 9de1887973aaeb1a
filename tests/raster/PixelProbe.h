#pragma once
// Reading a raster back in tests: which pixels changed, and where.

#include <optional>

#include "kestu/raster/Raster.h"

namespace kestu::test {

// Number of pixels inside `area` (clipped to the raster) equal to `color`.
inline int CountPixels(const Raster& raster, const PixelRect& area, Rgb color) {
  int count = 0;
  for (int y = std::max(area.top, 0); y < std::min(area.bottom, raster.Height()); ++y) {
    for (int x = std::max(area.left, 0); x < std::min(area.right, raster.Width()); ++x) {
      if (raster.GetPixel(x, y) == color) ++count;
    }
  }
  return count;
}

inline int CountPixels(const Raster& raster, Rgb color) {
  return CountPixels(raster, {0, 0, raster.Width(), raster.Height()}, color);
}

// The smallest rectangle holding every pixel that is not `background`.
inline std::optional<PixelRect> InkBounds(const Raster& raster, Rgb background) {
  std::optional<PixelRect> bounds;
  for (int y = 0; y < raster.Height(); ++y) {
    for (int x = 0; x < raster.Width(); ++x) {
      if (raster.GetPixel(x, y) == background) continue;
      if (!bounds) bounds = PixelRect{x, y, x + 1, y + 1};
      bounds->left = std::min(bounds->left, x);
      bounds->top = std::min(bounds->top, y);
      bounds->right = std::max(bounds->right, x + 1);
      bounds->bottom = std::max(bounds->bottom, y + 1);
    }
  }
  return bounds;
}

// Whether every pixel of two rasters of one size is equal.
inline bool SamePixels(const Raster& a, const Raster& b) {
  return a.Width() == b.Width() && a.Height() == b.Height() &&
         std::equal(a.Pixels().begin(), a.Pixels().end(), b.Pixels().begin());
}

}  // namespace kestu::test
