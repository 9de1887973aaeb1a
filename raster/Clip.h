#pragma once
// Coordinates and rectangle clipping shared by the raster's primitives and the system text.

#include <algorithm>
#include <cstdint>

#include "kestu/foundation/Surface.h"

namespace kestu {

// A coordinate worked out in 64 bits, held at the ends of `int` rather
// than wrapped.
inline int Saturate(int64_t value) {
  return static_cast<int>(std::clamp<int64_t>(value, INT32_MIN, INT32_MAX));
}

inline bool IsEmpty(const PixelRect& r) {
  return r.right <= r.left || r.bottom <= r.top;
}

inline bool Contains(const PixelRect& r, int x, int y) {
  return x >= r.left && x < r.right && y >= r.top && y < r.bottom;
}

inline PixelRect Intersect(const PixelRect& a, const PixelRect& b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
          std::min(a.bottom, b.bottom)};
}

}  // namespace kestu
