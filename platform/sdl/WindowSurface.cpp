#include "platform/sdl/WindowSurface.h"

#include <algorithm>
#include <cstring>

namespace kestu {

bool PresentRows(SDL_Window* window, const Raster& raster, int first_row, int end_row) {
  SDL_Surface* surface = SDL_GetWindowSurface(window);
  if (!surface) return false;
  const int width = std::min(surface->w, raster.Width());
  first_row = std::max(first_row, 0);
  end_row = std::min({end_row, surface->h, raster.Height()});
  if (width <= 0 || first_row >= end_row) return true;
  if (SDL_MUSTLOCK(surface) && SDL_LockSurface(surface) != 0) return false;
  const size_t source_pitch = static_cast<size_t>(raster.Width()) * sizeof(Rgb);
  const Rgb* source = raster.Pixels().data() + static_cast<size_t>(first_row) * raster.Width();
  auto* target = static_cast<uint8_t*>(surface->pixels) +
                 static_cast<size_t>(first_row) * static_cast<size_t>(surface->pitch);
  const int rows = end_row - first_row;
  // The raster's 0x00RRGGBB is the usual X surface format: then a row is
  // one memcpy; anything else goes through SDL's converter.
  const Uint32 format = surface->format->format;
  if (format == SDL_PIXELFORMAT_RGB888 || format == SDL_PIXELFORMAT_ARGB8888) {
    for (int row = 0; row < rows; ++row) {
      std::memcpy(target + static_cast<size_t>(row) * surface->pitch,
                  source + static_cast<size_t>(row) * raster.Width(), width * sizeof(Rgb));
    }
  } else {
    SDL_ConvertPixels(width, rows, SDL_PIXELFORMAT_RGB888, source, static_cast<int>(source_pitch),
                      format, target, surface->pitch);
  }
  if (SDL_MUSTLOCK(surface)) SDL_UnlockSurface(surface);
  const SDL_Rect band{0, first_row, width, rows};
  return SDL_UpdateWindowSurfaceRects(window, &band, 1) == 0;
}

}  // namespace kestu
