#include "kestu/desktop/ToolWindowView.h"

#include <SDL.h>

#include <algorithm>
#include <stdexcept>
#include <string>

#include "desktop/WindowSurface.h"
#include "kestu/host/ToolWindow.h"

namespace kestu {

namespace {

// SDL refuses a window of no pixels; a tip is never that small anyway.
int AtLeastOne(int pixels) {
  return std::max(1, pixels);
}

}  // namespace

ToolWindowView::ToolWindowView(const ToolWindow& tool) : tool_hwnd_(tool.hWnd()) {
  const PixelRect& at = tool.ScreenRect();
  // Showing the tip must leave the form that holds the pointer active: a
  // tooltip window is override-redirect on X, so no window manager gives
  // it the focus, and the hint keeps SDL from asking for it.
  SDL_SetHint(SDL_HINT_WINDOW_NO_ACTIVATION_WHEN_SHOWN, "1");
  window_ = SDL_CreateWindow("Kestu tip", at.left, at.top, AtLeastOne(at.right - at.left),
                             AtLeastOne(at.bottom - at.top),
                             SDL_WINDOW_TOOLTIP | SDL_WINDOW_BORDERLESS | SDL_WINDOW_SKIP_TASKBAR |
                                 SDL_WINDOW_ALWAYS_ON_TOP | SDL_WINDOW_SHOWN);
  SDL_ResetHint(SDL_HINT_WINDOW_NO_ACTIVATION_WHEN_SHOWN);
  if (!window_) throw std::runtime_error(std::string("cannot open a tip: ") + SDL_GetError());
  Follow(tool);
}

ToolWindowView::~ToolWindowView() {
  SDL_DestroyWindow(window_);
}

uint32_t ToolWindowView::WindowId() const {
  return SDL_GetWindowID(window_);
}

void ToolWindowView::Follow(const ToolWindow& tool) {
  const PixelRect& at = tool.ScreenRect();
  int left = 0, top = 0, width = 0, height = 0;
  SDL_GetWindowPosition(window_, &left, &top);
  SDL_GetWindowSize(window_, &width, &height);
  if (left != at.left || top != at.top) SDL_SetWindowPosition(window_, at.left, at.top);
  const int wanted_width = AtLeastOne(at.right - at.left);
  const int wanted_height = AtLeastOne(at.bottom - at.top);
  if (width != wanted_width || height != wanted_height) {
    SDL_SetWindowSize(window_, wanted_width, wanted_height);
    shown_generation_ = 0;
  }
  const uint64_t generation = tool.Picture().Generation();
  if (generation == shown_generation_) return;
  if (PresentRaster(window_, tool.Picture())) shown_generation_ = generation;
}

}  // namespace kestu
