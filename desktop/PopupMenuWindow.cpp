#include "kestu/desktop/PopupMenuWindow.h"

#include <SDL.h>

#include <algorithm>
#include <stdexcept>
#include <string>

#include "desktop/Display.h"
#include "desktop/WindowSurface.h"

namespace kestu {

PopupMenuWindow::PopupMenuWindow(const PopupMenu& menu, int x, int y) : menu_(menu) {
  const SDL_Rect display = DisplayBoundsAt(x, y);
  // Past the display's right or bottom edge the menu opens to the left or
  // upward of the point instead, as the system's menus do.
  left_ = x + menu.Width() > display.x + display.w ? std::max(display.x, x - menu.Width()) : x;
  top_ = y + menu.Height() > display.y + display.h ? std::max(display.y, y - menu.Height()) : y;
  window_ =
      SDL_CreateWindow("Kestu menu", left_, top_, menu.Width(), menu.Height(),
                       SDL_WINDOW_POPUP_MENU | SDL_WINDOW_BORDERLESS | SDL_WINDOW_SKIP_TASKBAR |
                           SDL_WINDOW_ALWAYS_ON_TOP | SDL_WINDOW_SHOWN);
  if (!window_) throw std::runtime_error(std::string("cannot open a menu: ") + SDL_GetError());
  Present();
}

PopupMenuWindow::~PopupMenuWindow() {
  SDL_DestroyWindow(window_);
}

uint32_t PopupMenuWindow::WindowId() const {
  return SDL_GetWindowID(window_);
}

void PopupMenuWindow::Present() {
  PresentRaster(window_, menu_.Picture());
}

}  // namespace kestu
