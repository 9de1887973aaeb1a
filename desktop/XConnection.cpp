#include "desktop/XConnection.h"

#include <SDL_syswm.h>
#include <poll.h>

namespace kestu {

int XConnectionOf(SDL_Window* window) {
  SDL_SysWMinfo info;
  SDL_VERSION(&info.version);
  if (!window || !SDL_GetWindowWMInfo(window, &info) || info.subsystem != SDL_SYSWM_X11) return -1;
  return ConnectionNumber(info.info.x11.display);
}

bool WaitOnXConnection(int connection, SDL_Event& event, int timeout_ms) {
  const Uint64 deadline = SDL_GetTicks64() + static_cast<Uint64>(timeout_ms < 0 ? 0 : timeout_ms);
  for (;;) {
    // Pumping reads everything the connection holds, so a quiet poll
    // below means nothing is waiting: no event can be missed.
    SDL_PumpEvents();
    if (SDL_PeepEvents(&event, 1, SDL_GETEVENT, SDL_FIRSTEVENT, SDL_LASTEVENT) > 0) return true;
    const Uint64 now = SDL_GetTicks64();
    if (now >= deadline) return false;
    pollfd input{connection, POLLIN, 0};
    poll(&input, 1, static_cast<int>(deadline - now));
  }
}

}  // namespace kestu
