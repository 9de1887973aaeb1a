#include "host/HostWindowSystem.h"

#include <string>

#include "kestu/foundation/Text.h"
#include "kestu/host/Host.h"
#include "kestu/raster/SystemText.h"

namespace kestu {

namespace {

PixelRect ToPixelRect(const RECT& rect) {
  return {rect.Left, rect.Top, rect.Right, rect.Bottom};
}

// The text as the call takes it: `length` characters, or all when negative.
std::string LeadingCharacters(std::string_view utf8, int32_t length) {
  if (length < 0) return std::string(utf8);
  size_t end = 0;
  for (int32_t count = 0; end < utf8.size() && count < length; ++count) NextCodePoint(utf8, end);
  return std::string(utf8.substr(0, end));
}

}  // namespace

int32_t HostWindowSystem::CreateCaret(int32_t hwnd, int32_t /*bitmap*/, int32_t width,
                                      int32_t height) {
  const Host::WindowRef window = host_.FindWindow(hwnd);
  if (!window.control && !window.form) return 0;
  // One caret for the whole screen: a new one replaces the old, hidden.
  host_.MutableCaret() = Caret{.hwnd = hwnd, .width = width, .height = height};
  return 1;
}

int32_t HostWindowSystem::SetCaretPos(int32_t x, int32_t y) {
  auto& caret = host_.MutableCaret();
  if (!caret) return 0;
  caret->x = x;
  caret->y = y;
  return 1;
}

int32_t HostWindowSystem::ShowCaret(int32_t hwnd) {
  auto& caret = host_.MutableCaret();
  if (!caret || (hwnd != 0 && caret->hwnd != hwnd)) return 0;
  caret->shown = true;
  return 1;
}

int32_t HostWindowSystem::HideCaret(int32_t hwnd) {
  auto& caret = host_.MutableCaret();
  if (!caret || (hwnd != 0 && caret->hwnd != hwnd)) return 0;
  caret->shown = false;
  return 1;
}

int32_t HostWindowSystem::DestroyCaret() {
  auto& caret = host_.MutableCaret();
  if (!caret) return 0;
  caret.reset();
  return 1;
}

int32_t HostWindowSystem::SetCapture(int32_t hwnd) {
  return host_.SetCaptureWindow(hwnd);
}

int32_t HostWindowSystem::ReleaseCapture() {
  host_.SetCaptureWindow(0);
  return 1;
}

int32_t HostWindowSystem::GetCursorPos(POINTAPI& point) {
  point = host_.CursorPos();
  return 1;
}

int32_t HostWindowSystem::GetWindowRect(int32_t hwnd, RECT& rect) {
  const auto screen = host_.WindowScreenRect(hwnd);
  if (!screen) return 0;
  rect = RECT{screen->left, screen->top, screen->right, screen->bottom};
  return 1;
}

int32_t HostWindowSystem::DrawTextA(int32_t hdc, std::string_view text, int32_t length, RECT& rect,
                                    int32_t flags) {
  HostedControl* site = host_.FindDeviceContext(hdc);
  if (!site) return 0;
  UserControl& control = site->Control();
  const std::string shown = LeadingCharacters(text, length);
  // Measuring draws nothing, so an observer of the drawing sees nothing.
  if ((flags & dt::kCalcRect) == 0 && site->ObservesDrawing()) {
    site->OnDraw(DrawCall{.kind = DrawCall::Kind::DrawText,
                          .color = control.ForeColor(),
                          .text = shown,
                          .rect = ToPixelRect(rect),
                          .flags = flags});
  }
  return DrawSystemText(site->GetSurface(), control.RenderFont(), shown, -1, rect, flags,
                        ResolveColor(control.ForeColor()));
}

int32_t HostWindowSystem::DrawFocusRect(int32_t hdc, const RECT& rect) {
  HostedControl* site = host_.FindDeviceContext(hdc);
  if (!site) return 0;
  if (site->ObservesDrawing()) {
    site->OnDraw(DrawCall{.kind = DrawCall::Kind::DrawFocusRect, .rect = ToPixelRect(rect)});
  }
  DrawSystemFocusRect(site->GetSurface(), ToPixelRect(rect));
  return 1;
}

int32_t HostWindowSystem::EnableWindow(int32_t hwnd, int32_t enable) {
  HostedControl* site = host_.FindWindow(hwnd).control;
  if (!site) return 0;
  // The answer is whether the window was disabled before, as the system's.
  const bool was_disabled = !site->WindowEnabled();
  site->SetWindowEnabled(enable != 0);
  return was_disabled ? 1 : 0;
}

int32_t HostWindowSystem::GetActiveWindow() {
  const Form* form = host_.ActiveForm();
  return form ? form->hWnd() : 0;
}

int32_t HostWindowSystem::GetFocus() {
  const HostedControl* focused = host_.Focused();
  return focused ? focused->hWnd() : 0;
}

int32_t HostWindowSystem::SetFocus(int32_t hwnd) {
  const int32_t previous = GetFocus();
  const Host::WindowRef window = host_.FindWindow(hwnd);
  if (window.control) {
    if (!host_.SetFocus(window.control)) return 0;
  } else if (window.form || hwnd == 0) {
    host_.SetFocus(nullptr);
    if (window.form) host_.Activate(window.form);
  } else {
    return 0;
  }
  return previous;
}

int32_t HostWindowSystem::ShowWindow(int32_t hwnd, int32_t command) {
  const Host::WindowRef window = host_.FindWindow(hwnd);
  const bool show = command != SW_HIDE;
  if (window.tool) {
    const bool was_visible = window.tool->Visible();
    host_.ShowToolWindow(*window.tool, show);
    return was_visible ? 1 : 0;
  }
  if (window.control) {
    const bool was_visible = window.control->Visible();
    window.control->SetExtender("Visible", Variant::Boolean(show));
    return was_visible ? 1 : 0;
  }
  return 0;
}

int32_t HostWindowSystem::MoveWindow(int32_t hwnd, int32_t x, int32_t y, int32_t width,
                                     int32_t height, int32_t /*repaint*/) {
  const Host::WindowRef window = host_.FindWindow(hwnd);
  if (window.tool) {
    window.tool->SetScreenRect({x, y, x + width, y + height});
    return 1;
  }
  if (window.control) {
    // A child window moves in its form's client pixels.
    HostedControl& site = *window.control;
    site.Move(x * site.TwipsPerPixelX(), y * site.TwipsPerPixelY());
    site.RequestSize(width * site.TwipsPerPixelX(), height * site.TwipsPerPixelY());
    return 1;
  }
  if (window.form) {
    window.form->MoveOnScreen(x, y);
    window.form->Resize(width * window.form->TwipsPerPixelX(),
                        height * window.form->TwipsPerPixelY());
    return 1;
  }
  return 0;
}

}  // namespace kestu
