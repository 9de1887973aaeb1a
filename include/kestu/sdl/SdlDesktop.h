#pragma once
// The host on a real display: every form of the host in its own window,
// the window system's input routed to the controls, the host's timers run
// on the real clock, the caret blinking, popup menus in popup windows, the
// system clipboard and the bell. The host keeps the focus, the capture, the
// caret and the timers; the window system only says which form is active.
//
// One turn of the loop waits for input or the next timer, handles all the
// input there is, runs the timers that are due and presents each window
// that changed: at most one present per window per turn, never one per
// drawing call.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "kestu/host/Desktop.h"
#include "kestu/sdl/FormWindow.h"
#include "kestu/sdl/InputRouter.h"
#include "kestu/sdl/XBeeper.h"

union SDL_Event;

namespace kestu {

class Host;
class Form;

class SdlDesktop final : public Desktop {
 public:
  // How often the caret changes between lit and dark.
  static constexpr int kCaretBlinkMilliseconds = 530;

  // Why there is no display to open windows on, or nothing when there is.
  static std::optional<std::string> DisplayProblem();

  // Opens the display and attaches to `host`. Throws std::runtime_error
  // when there is no display.
  explicit SdlDesktop(Host& host);
  ~SdlDesktop() override;
  SdlDesktop(const SdlDesktop&) = delete;
  SdlDesktop& operator=(const SdlDesktop&) = delete;

  // Drawn over every form's picture before it is shown.
  void SetOverlay(FormOverlay overlay) { overlay_ = std::move(overlay); }

  // Turns the loop until every window is closed.
  void Run();
  // One turn, waiting at most `wait_ms` for input. False once no form is
  // left.
  bool RunOnce(int wait_ms);

  // How many times a window's pixels were presented.
  int64_t PresentCount() const { return present_count_; }
  // The window that shows `form`, or null.
  FormWindow* WindowOf(const Form& form) const;

  // ---- Desktop ----
  std::optional<int> ShowPopupMenu(HostedControl& control,
                                   std::span<const MenuItem> items) override;
  std::optional<std::string> ClipboardText() override;
  void SetClipboardText(const std::string& text) override;
  void Beep() override;

 private:
  // Opens windows for new forms and closes those of forms that went.
  void SyncWindows();
  FormWindow* WindowWithId(uint32_t window_id) const;
  Form* FormOf(const FormWindow& window) const;
  void Dispatch(const SDL_Event& event);
  void DispatchWindowEvent(const SDL_Event& event);
  void DispatchInput(const SDL_Event& event, Form& form);
  void RunDueTimers();
  void PresentAll();
  // Lit again and the blink restarted: the caret shows at once after input.
  void WakeCaret();
  int MillisecondsToNextTimer() const;

  Host& host_;
  InputRouter router_;
  XBeeper beeper_;
  FormOverlay overlay_;
  std::vector<std::unique_ptr<FormWindow>> windows_;
  uint64_t next_tick_ms_ = 0;
  uint64_t next_blink_ms_ = 0;
  bool caret_lit_ = true;
  bool quit_ = false;
  int64_t present_count_ = 0;
};

}  // namespace kestu
