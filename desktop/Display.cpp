#include "desktop/Display.h"

namespace kestu {

SDL_Rect DisplayBoundsAt(int x, int y) {
  SDL_Rect bounds{0, 0, 0, 0};
  const SDL_Point point{x, y};
  for (int i = 0; i < SDL_GetNumVideoDisplays(); ++i) {
    if (SDL_GetDisplayBounds(i, &bounds) == 0 && SDL_PointInRect(&point, &bounds)) return bounds;
  }
  SDL_GetDisplayBounds(0, &bounds);
  return bounds;
}

}  // namespace kestu
