#pragma once
// The one way pixels reach the screen: rows of a picture written into an
// SDL window's surface, then that band shown. The surface keeps what was
// last shown, so it is also what a new row is compared with.

#include <SDL.h>

#include <functional>
#include <optional>

#include "kestu/desktop/FormScene.h"
#include "kestu/raster/Raster.h"

namespace kestu {

// Row `y` of a picture: a pointer to its pixels, either the source's own
// or `scratch` (room for the picture's width) filled in. `scratch` may be
// the window's own row, when the row needs no conversion or comparison.
using RowSource = std::function<const Rgb*(int y, Rgb* scratch)>;

// Writes the rows of `band` of a picture `width` pixels wide into the
// window's surface, and shows them. With `compare` a row the surface
// already holds is neither written nor shown. Returns the band of rows
// shown, or nothing when the window has no surface.
std::optional<RowBand> PresentRows(SDL_Window* window, int width, RowBand band, bool compare,
                                   const RowSource& source);

// Shows the whole of `raster` in the window.
bool PresentRaster(SDL_Window* window, const Raster& raster);

}  // namespace kestu
