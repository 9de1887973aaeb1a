#pragma once
// The operating-system operations of the controls, answered from the
// host's own state: handles are the host's, the caret and the capture are
// the host's single ones, and text and focus rectangles are drawn by the
// raster on the control that owns the device context.

#include "kestu/foundation/KestuControlsAPI.h"

namespace kestu {

class Host;

class HostWindowSystem final : public WindowSystem {
 public:
  explicit HostWindowSystem(Host& host) : host_(host) {}

  int32_t CreateCaret(int32_t hwnd, int32_t bitmap, int32_t width, int32_t height) override;
  int32_t SetCaretPos(int32_t x, int32_t y) override;
  int32_t ShowCaret(int32_t hwnd) override;
  int32_t HideCaret(int32_t hwnd) override;
  int32_t DestroyCaret() override;
  int32_t SetCapture(int32_t hwnd) override;
  int32_t ReleaseCapture() override;
  int32_t GetCursorPos(POINTAPI& point) override;
  int32_t GetWindowRect(int32_t hwnd, RECT& rect) override;
  int32_t DrawTextA(int32_t hdc, std::string_view text, int32_t length, RECT& rect,
                    int32_t flags) override;
  int32_t DrawFocusRect(int32_t hdc, const RECT& rect) override;
  int32_t EnableWindow(int32_t hwnd, int32_t enable) override;
  int32_t GetActiveWindow() override;
  int32_t GetFocus() override;
  int32_t SetFocus(int32_t hwnd) override;
  int32_t ShowWindow(int32_t hwnd, int32_t command) override;
  int32_t MoveWindow(int32_t hwnd, int32_t x, int32_t y, int32_t width, int32_t height,
                     int32_t repaint) override;

 private:
  Host& host_;
};

}  // namespace kestu
