#pragma once
// A borderless top-level window that is not a form of the application: the
// shared tooltip. The host keeps its text, place, visibility and picture;
// ShowWindow and MoveWindow act on it like on any window, and showing it
// never takes the activation. A window backend shows the picture at the
// place while the window is visible.

#include <cstdint>
#include <functional>
#include <string>

#include "kestu/foundation/Surface.h"
#include "kestu/raster/Raster.h"

namespace kestu {

class ToolWindow {
 public:
  explicit ToolWindow(int32_t hwnd) : hwnd_(hwnd) {}

  int32_t hWnd() const { return hwnd_; }

  // The text the window shows.
  const std::string& Text() const { return text_; }
  void SetText(std::string text) { text_ = std::move(text); }

  // Position and size on the screen, in pixels.
  const PixelRect& ScreenRect() const { return rect_; }
  void SetScreenRect(const PixelRect& rect) { rect_ = rect; }

  bool Visible() const { return visible_; }
  void SetVisible(bool visible) { visible_ = visible; }

  // What the window shows, drawn by its owner; empty until drawn.
  const Raster& Picture() const { return picture_; }
  Raster& Picture() { return picture_; }

  // Called when the mouse pointer moves onto the visible window.
  std::function<void()> on_mouse_over;

 private:
  int32_t hwnd_;
  std::string text_;
  PixelRect rect_;
  bool visible_ = false;
  Raster picture_{0, 0};
};

}  // namespace kestu
