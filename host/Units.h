#pragma once
// Twips to whole pixels, as the host places windows and sizes rasters.

#include <cmath>

namespace kestu {

// The nearest pixel, halves up: the rule the controls' drawing uses too,
// so a control's raster and its drawing agree on where an edge falls.
inline int TwipsToPixels(double twips, int twips_per_pixel) {
  return static_cast<int>(std::floor(twips / twips_per_pixel + 0.5));
}

}  // namespace kestu
