#pragma once
// The one way pixels reach the screen: rows of a raster copied into an SDL
// window's surface, then that band shown. No drawing happens here.

#include <SDL.h>

#include "kestu/raster/Raster.h"

namespace kestu {

// Copies rows [first_row, end_row) of `raster` into the window's surface at
// the same place and shows them. False when the window has no surface.
bool PresentRows(SDL_Window* window, const Raster& raster, int first_row, int end_row);

}  // namespace kestu
