#pragma once
// Where on the screens a point is: the display that holds it.

#include <SDL.h>

namespace kestu {

// The bounds of the display that holds screen pixel (x, y), or of the
// first display when none does.
SDL_Rect DisplayBoundsAt(int x, int y);

}  // namespace kestu
