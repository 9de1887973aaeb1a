#include "kestu/foundation/KestuControlsAPI.h"

namespace kestu {

namespace {
WindowSystem* installed = nullptr;

// Forwards to the installed window system; without one, a call does
// nothing and answers 0, as a call on a missing window would.
template <typename F>
int32_t Forward(F call) {
  return installed ? call(*installed) : 0;
}
}  // namespace

WindowSystem* InstallWindowSystem(WindowSystem* system) {
  WindowSystem* previous = installed;
  installed = system;
  return previous;
}

WindowSystem* InstalledWindowSystem() { return installed; }

namespace KestuControlsAPI {

int32_t CreateCaret(int32_t hwnd, int32_t bitmap, int32_t width, int32_t height) {
  return Forward([&](WindowSystem& w) { return w.CreateCaret(hwnd, bitmap, width, height); });
}
int32_t SetCaretPos(int32_t x, int32_t y) {
  return Forward([&](WindowSystem& w) { return w.SetCaretPos(x, y); });
}
int32_t ShowCaret(int32_t hwnd) { return Forward([&](WindowSystem& w) { return w.ShowCaret(hwnd); }); }
int32_t HideCaret(int32_t hwnd) { return Forward([&](WindowSystem& w) { return w.HideCaret(hwnd); }); }
int32_t DestroyCaret() { return Forward([&](WindowSystem& w) { return w.DestroyCaret(); }); }
int32_t SetCapture(int32_t hwnd) {
  return Forward([&](WindowSystem& w) { return w.SetCapture(hwnd); });
}
int32_t ReleaseCapture() { return Forward([&](WindowSystem& w) { return w.ReleaseCapture(); }); }
int32_t GetCursorPos(POINTAPI& point) {
  return Forward([&](WindowSystem& w) { return w.GetCursorPos(point); });
}
int32_t GetWindowRect(int32_t hwnd, RECT& rect) {
  return Forward([&](WindowSystem& w) { return w.GetWindowRect(hwnd, rect); });
}
int32_t DrawTextA(int32_t hdc, std::string_view text, int32_t length, RECT& rect, int32_t flags) {
  return Forward([&](WindowSystem& w) { return w.DrawTextA(hdc, text, length, rect, flags); });
}
int32_t DrawFocusRect(int32_t hdc, const RECT& rect) {
  return Forward([&](WindowSystem& w) { return w.DrawFocusRect(hdc, rect); });
}
int32_t EnableWindow(int32_t hwnd, int32_t enable) {
  return Forward([&](WindowSystem& w) { return w.EnableWindow(hwnd, enable); });
}
int32_t GetActiveWindow() { return Forward([&](WindowSystem& w) { return w.GetActiveWindow(); }); }
int32_t GetFocus() { return Forward([&](WindowSystem& w) { return w.GetFocus(); }); }
int32_t SetFocus(int32_t hwnd) { return Forward([&](WindowSystem& w) { return w.SetFocus(hwnd); }); }
int32_t ShowWindow(int32_t hwnd, int32_t command) {
  return Forward([&](WindowSystem& w) { return w.ShowWindow(hwnd, command); });
}
int32_t MoveWindow(int32_t hwnd, int32_t x, int32_t y, int32_t width, int32_t height,
                   int32_t repaint) {
  return Forward(
      [&](WindowSystem& w) { return w.MoveWindow(hwnd, x, y, width, height, repaint); });
}

}  // namespace KestuControlsAPI
}  // namespace kestu
