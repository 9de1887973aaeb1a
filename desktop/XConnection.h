#pragma once
// Waiting for input on X without SDL's wake-up messages. SDL's own wait
// names the newest window as the target of a message it sends over a
// second connection whenever input arrives; a window destroyed meanwhile
// (a menu just closed, a form just closed) turns that message into an X
// error. Waiting on the display connection itself sends nothing.

#include <SDL.h>

namespace kestu {

// The X connection's file descriptor behind `window`, or -1 when the
// window is not on X.
int XConnectionOf(SDL_Window* window);

// Takes the next event into `event`, waiting up to `timeout_ms` for input
// on `connection` (an X connection's descriptor). False when none came.
bool WaitOnXConnection(int connection, SDL_Event& event, int timeout_ms);

}  // namespace kestu
