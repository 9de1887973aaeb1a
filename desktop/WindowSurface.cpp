#include "desktop/WindowSurface.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace kestu {

namespace {

// The raster's 0x00RRGGBB is the usual X surface format: then a row is
// written as it is; anything else goes through SDL's converter.
bool TakesRgbAsItIs(const SDL_Surface& surface) {
  const Uint32 format = surface.format->format;
  return format == SDL_PIXELFORMAT_RGB888 || format == SDL_PIXELFORMAT_ARGB8888;
}

// The surface's pixels, locked while it lives.
class SurfaceLock {
 public:
  explicit SurfaceLock(SDL_Surface* surface)
      : surface_(surface), ok_(!SDL_MUSTLOCK(surface) || SDL_LockSurface(surface) == 0) {}
  ~SurfaceLock() {
    if (ok_ && SDL_MUSTLOCK(surface_)) SDL_UnlockSurface(surface_);
  }
  SurfaceLock(const SurfaceLock&) = delete;
  SurfaceLock& operator=(const SurfaceLock&) = delete;
  bool Ok() const { return ok_; }

 private:
  SDL_Surface* surface_;
  bool ok_;
};

}  // namespace

std::optional<RowBand> PresentRows(SDL_Window* window, int width, RowBand band, bool compare,
                                   const RowSource& source) {
  SDL_Surface* surface = SDL_GetWindowSurface(window);
  if (!surface) return std::nullopt;
  const int shown_width = std::min(surface->w, width);
  band.first = std::max(band.first, 0);
  band.end = std::min(band.end, surface->h);
  if (shown_width <= 0 || band.Empty()) return RowBand{};
  const SurfaceLock lock(surface);
  if (!lock.Ok()) return std::nullopt;

  const bool as_it_is = TakesRgbAsItIs(*surface);
  // A row goes straight into the window when nothing has to look at it
  // first: one pass over the pixels.
  const bool straight = as_it_is && !compare && surface->w >= width;
  const size_t row_bytes = static_cast<size_t>(shown_width) * surface->format->BytesPerPixel;
  std::vector<Rgb> scratch(straight ? 0 : static_cast<size_t>(width));
  std::vector<uint8_t> converted(as_it_is ? 0 : row_bytes);
  RowBand shown;
  for (int y = band.first; y < band.end; ++y) {
    auto* target = static_cast<uint8_t*>(surface->pixels) + static_cast<size_t>(y) * surface->pitch;
    const Rgb* row = source(y, straight ? reinterpret_cast<Rgb*>(target) : scratch.data());
    const void* bytes = row;
    if (!as_it_is) {
      SDL_ConvertPixels(shown_width, 1, SDL_PIXELFORMAT_RGB888, row,
                        static_cast<int>(width * sizeof(Rgb)), surface->format->format,
                        converted.data(), static_cast<int>(row_bytes));
      bytes = converted.data();
    }
    if (compare && std::memcmp(target, bytes, row_bytes) == 0) continue;
    if (bytes != target) std::memcpy(target, bytes, row_bytes);
    shown.Add(y, y + 1);
  }
  if (shown.Empty()) return shown;
  const SDL_Rect rect{0, shown.first, shown_width, shown.end - shown.first};
  if (SDL_UpdateWindowSurfaceRects(window, &rect, 1) != 0) return std::nullopt;
  return shown;
}

bool PresentRaster(SDL_Window* window, const Raster& raster) {
  const Rgb* pixels = raster.Pixels().data();
  const int width = raster.Width();
  return PresentRows(window, width, {0, raster.Height()}, false,
                     [&](int y, Rgb*) { return pixels + static_cast<size_t>(y) * width; })
      .has_value();
}

}  // namespace kestu
