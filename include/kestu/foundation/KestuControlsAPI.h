#pragma once
// The operating-system operations the controls call, by their system
// names, over one seam: the window system that the host installs
// (headless, or real windows). Handles are 32-bit. Without an installed
// window system every call does nothing and returns 0.

#include <cstdint>
#include <string_view>

namespace kestu {

struct POINTAPI {
  int32_t x = 0;
  int32_t y = 0;
};

struct RECT {
  int32_t Left = 0;
  int32_t Top = 0;
  int32_t Right = 0;
  int32_t Bottom = 0;
  friend bool operator==(const RECT&, const RECT&) = default;
};

// DrawTextA flags the library knows.
namespace dt {
inline constexpr int32_t kCenter = 0x1;
inline constexpr int32_t kRight = 0x2;
inline constexpr int32_t kVCenter = 0x4;
inline constexpr int32_t kBottom = 0x8;
inline constexpr int32_t kWordBreak = 0x10;
inline constexpr int32_t kSingleLine = 0x20;
inline constexpr int32_t kNoClip = 0x100;
inline constexpr int32_t kCalcRect = 0x400;
inline constexpr int32_t kNoPrefix = 0x800;
}  // namespace dt

inline constexpr int32_t SW_HIDE = 0;
inline constexpr int32_t SW_SHOWNOACTIVATE = 4;

// The seam. The host implements it; the controls reach it only through the
// functions below.
class WindowSystem {
 public:
  virtual ~WindowSystem() = default;
  virtual int32_t CreateCaret(int32_t hwnd, int32_t bitmap, int32_t width, int32_t height) = 0;
  virtual int32_t SetCaretPos(int32_t x, int32_t y) = 0;
  virtual int32_t ShowCaret(int32_t hwnd) = 0;
  virtual int32_t HideCaret(int32_t hwnd) = 0;
  virtual int32_t DestroyCaret() = 0;
  virtual int32_t SetCapture(int32_t hwnd) = 0;
  virtual int32_t ReleaseCapture() = 0;
  virtual int32_t GetCursorPos(POINTAPI& point) = 0;
  virtual int32_t GetWindowRect(int32_t hwnd, RECT& rect) = 0;
  virtual int32_t DrawTextA(int32_t hdc, std::string_view text, int32_t length, RECT& rect,
                            int32_t flags) = 0;
  virtual int32_t DrawFocusRect(int32_t hdc, const RECT& rect) = 0;
  virtual int32_t EnableWindow(int32_t hwnd, int32_t enable) = 0;
  virtual int32_t GetActiveWindow() = 0;
  virtual int32_t GetFocus() = 0;
  virtual int32_t SetFocus(int32_t hwnd) = 0;
  virtual int32_t ShowWindow(int32_t hwnd, int32_t command) = 0;
  virtual int32_t MoveWindow(int32_t hwnd, int32_t x, int32_t y, int32_t width, int32_t height,
                             int32_t repaint) = 0;
};

// Installs the window system the operations below go to (null to remove).
// Returns the one installed before.
WindowSystem* InstallWindowSystem(WindowSystem* system);
WindowSystem* InstalledWindowSystem();

namespace KestuControlsAPI {
int32_t CreateCaret(int32_t hwnd, int32_t bitmap, int32_t width, int32_t height);
int32_t SetCaretPos(int32_t x, int32_t y);
int32_t ShowCaret(int32_t hwnd);
int32_t HideCaret(int32_t hwnd);
int32_t DestroyCaret();
int32_t SetCapture(int32_t hwnd);
int32_t ReleaseCapture();
int32_t GetCursorPos(POINTAPI& point);
int32_t GetWindowRect(int32_t hwnd, RECT& rect);
// `length` -1 takes the whole text. With dt::kCalcRect it only measures,
// widening or narrowing `rect` to the text.
int32_t DrawTextA(int32_t hdc, std::string_view text, int32_t length, RECT& rect, int32_t flags);
int32_t DrawFocusRect(int32_t hdc, const RECT& rect);
int32_t EnableWindow(int32_t hwnd, int32_t enable);
int32_t GetActiveWindow();
int32_t GetFocus();
int32_t SetFocus(int32_t hwnd);
int32_t ShowWindow(int32_t hwnd, int32_t command);
int32_t MoveWindow(int32_t hwnd, int32_t x, int32_t y, int32_t width, int32_t height,
                   int32_t repaint);
}  // namespace KestuControlsAPI

}  // namespace kestu
