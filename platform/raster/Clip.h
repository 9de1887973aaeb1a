#pragma once
// Rectangle clipping shared by the raster's primitives and the system text.

#include <algorithm>

#include "kestu/foundation/Surface.h"

namespace kestu {

inline bool IsEmpty(const PixelRect& r) {
  return r.right <= r.left || r.bottom <= r.top;
}

inline PixelRect Intersect(const PixelRect& a, const PixelRect& b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
          std::min(a.bottom, b.bottom)};
}

}  // namespace kestu
