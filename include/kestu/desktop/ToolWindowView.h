#pragma once
// A tool window of the host (the tooltip) on the screen: a borderless
// window above the forms that does not take the activation (X's
// override-redirect, through SDL's tooltip window), at the tool window's
// place, showing its picture. The host decides the text, the place and
// when it shows; this only follows.

#include <cstdint>

struct SDL_Window;

namespace kestu {

class ToolWindow;

class ToolWindowView {
 public:
  // Opens the window for `tool` at its place, showing its picture. Throws
  // std::runtime_error when the window system refuses.
  explicit ToolWindowView(const ToolWindow& tool);
  ~ToolWindowView();
  ToolWindowView(const ToolWindowView&) = delete;
  ToolWindowView& operator=(const ToolWindowView&) = delete;

  int32_t ToolHwnd() const { return tool_hwnd_; }
  uint32_t WindowId() const;
  SDL_Window* Window() const { return window_; }

  // Moves and sizes the window to the tool window's place and shows its
  // picture again when it changed since the last time.
  void Follow(const ToolWindow& tool);
  // The window lost its pixels (exposed): the next Follow shows them all.
  void Invalidate() { shown_generation_ = 0; }

 private:
  int32_t tool_hwnd_;
  SDL_Window* window_ = nullptr;
  uint64_t shown_generation_ = 0;
};

}  // namespace kestu
