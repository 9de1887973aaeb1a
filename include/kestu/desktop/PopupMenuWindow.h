#pragma once
// A popup menu on the screen: a borderless popup window at a screen point,
// kept inside the display, showing the menu's picture.

#include <cstdint>

#include "kestu/desktop/PopupMenu.h"

struct SDL_Window;

namespace kestu {

class PopupMenuWindow {
 public:
  // Opens the window for `menu` with its top-left at screen pixel
  // (x, y), moved left or up where the display would cut it. Throws
  // std::runtime_error when the window system refuses.
  PopupMenuWindow(const PopupMenu& menu, int x, int y);
  ~PopupMenuWindow();
  PopupMenuWindow(const PopupMenuWindow&) = delete;
  PopupMenuWindow& operator=(const PopupMenuWindow&) = delete;

  uint32_t WindowId() const;
  // The window's top-left on the screen.
  int Left() const { return left_; }
  int Top() const { return top_; }
  // Shows the menu's picture as it is now.
  void Present();

 private:
  const PopupMenu& menu_;
  SDL_Window* window_ = nullptr;
  int left_ = 0;
  int top_ = 0;
};

}  // namespace kestu
