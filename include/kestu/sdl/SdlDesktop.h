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
// drawing call. An open popup menu turns the same loop with its own input
// rules, so the timers and the caret go on while the user chooses.

#include <cstdint>
#include <functional>
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
class PopupMenu;
class PopupMenuWindow;

class SdlDesktop final : public Desktop {
 public:
  // How often the caret changes between lit and dark.
  static constexpr int kCaretBlinkMilliseconds = 530;

  // Why there is no display to open windows on, or nothing when there is.
  static std::optional<std::string> DisplayProblem();

  // Milliseconds on a clock that only goes forward; the timers run on it.
  using Clock = std::function<uint64_t()>;

  // Opens the display and attaches to `host`; the timers run on `clock`
  // (none: the system's). Throws std::runtime_error when there is no
  // display.
  explicit SdlDesktop(Host& host, Clock clock = {});
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
  // Waits up to `wait_ms`, and never past the next timer, for input, then
  // gives `handle` each event there is until it returns false. Due timers
  // run after every event: a stream of input never holds them up.
  void HandleInput(int wait_ms, const std::function<bool(const SDL_Event&)>& handle);
  void Dispatch(const SDL_Event& event);
  void DispatchWindowEvent(const SDL_Event& event);
  void DispatchInput(const SDL_Event& event, Form& form);
  // One event while `menu` is open in `popup`: false once it closed, with
  // the choice in `answer`.
  bool MenuInput(const SDL_Event& event, PopupMenu& menu, PopupMenuWindow& popup,
                 std::optional<int>& answer);
  void RunDueTimers();
  void PresentAll();
  // Lit again and the blink restarted: the caret shows at once after input.
  void WakeCaret();
  int MillisecondsToNextTimer() const;

  Host& host_;
  Clock clock_;
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
