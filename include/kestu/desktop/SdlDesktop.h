#pragma once
// The host on a real display: every form of the host in its own window,
// the window system's input routed to the controls, the host's timers run
// on the real clock, the caret blinking, popup menus in popup windows, the
// tooltip in a window of its own, the system clipboard and the bell. The host keeps the focus, the
// capture, the caret and the timers; the window system only says which form is active.
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

#include "kestu/desktop/FormWindow.h"
#include "kestu/desktop/InputRouter.h"
#include "kestu/desktop/XBeeper.h"
#include "kestu/host/Desktop.h"

union SDL_Event;

namespace kestu {

class Host;
class Form;
class PopupMenu;
class PopupMenuWindow;
class ToolWindowView;

class SdlDesktop final : public Desktop {
 public:
  // How often the caret changes between lit and dark.
  static constexpr int kCaretBlinkMilliseconds = 530;
  // The frame rate presents keep to when the display does not say its own.
  static constexpr int kDefaultFramesPerSecond = 60;

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

  // What each form is drawn over instead of its plain colour.
  void SetBackdrop(FormBackdrop backdrop) { backdrop_ = std::move(backdrop); }
  // At most this many presents per window per second, on the desktop's
  // clock: a window that changes again within a frame is shown at the
  // next. 0: a present every turn that changed something (the default
  // where there is no display to keep to).
  void SetFrameRate(int frames_per_second) { frames_per_second_ = frames_per_second; }

  // Asked when the user closes `form`'s window, and for every form when
  // the system asks the program to quit: false keeps it open (a designer
  // asks first whether to save). Without one the form closes.
  using CloseRequest = std::function<bool(Form&)>;
  void SetCloseRequest(CloseRequest request) { close_request_ = std::move(request); }

  // Turns the loop until every window is closed, calling `after_each_turn`
  // (when given) between turns, where no input is being handled: a program
  // lets a finished dialog go there.
  void Run(const std::function<void()>& after_each_turn = {});
  // One turn, waiting at most `wait_ms` for input. False once no form is
  // left.
  bool RunOnce(int wait_ms);

  // How many times a window's pixels were presented.
  int64_t PresentCount() const { return present_count_; }
  // The window that shows `form`, or null.
  FormWindow* WindowOf(const Form& form) const;
  // The window that shows the host's tool window `tool_hwnd` (the
  // tooltip), or null while it is not on the screen.
  ToolWindowView* ViewOf(int32_t tool_hwnd) const;

  // ---- Desktop ----
  std::optional<int> ShowPopupMenu(HostedControl& control,
                                   std::span<const MenuItem> items) override;
  std::optional<std::string> ClipboardText() override;
  void SetClipboardText(const std::string& text) override;
  void Beep() override;

 private:
  // Opens windows for new forms and closes those of forms that went.
  void SyncWindows();
  // A window whose form was replaced by one of the same name shows the
  // new one.
  void RebindReplacedForms();
  // The system asked to quit: every form closes that the close request
  // lets go.
  void CloseAllForms();
  // Closes `form` unless the close request keeps it.
  void RequestClose(Form& form);
  // Opens a window for each tool window the host shows, moves those that
  // stay and closes the others.
  void SyncToolWindows();
  FormWindow* WindowWithId(uint32_t window_id) const;
  ToolWindowView* ToolViewWithId(uint32_t window_id) const;
  // An event in a tool window's window: the pointer over it is the host's
  // cursor there (a tip goes when the pointer reaches it).
  void DispatchToolEvent(const SDL_Event& event, ToolWindowView& view);
  // The pointer left `form`'s window: the control holding the capture
  // sees it go, as SDL sends no moves from outside a window.
  void PointerLeft(Form& form);
  Form* FormOf(const FormWindow& window) const;
  // Waits up to `wait_ms`, and never past the next timer, for input, then
  // gives `handle` each event there is until it returns false. Due timers
  // run after every event: a stream of input never holds them up.
  void HandleInput(int wait_ms, const std::function<bool(const SDL_Event&)>& handle);
  // SDL_WaitEventTimeout, without SDL's wake-up messages on X.
  bool WaitForEvent(SDL_Event& event, int timeout_ms);
  void Dispatch(const SDL_Event& event);
  void DispatchWindowEvent(const SDL_Event& event);
  void DispatchInput(const SDL_Event& event, Form& form);
  // One event while `menu` is open in `popup`: false once it closed, with
  // the choice in `answer`.
  bool MenuInput(const SDL_Event& event, PopupMenu& menu, PopupMenuWindow& popup,
                 std::optional<int>& answer);
  void RunDueTimers();
  // The host's screen becomes the display that holds screen pixel (x, y):
  // a tip stays on the display the pointer is on.
  void FollowDisplayAt(int x, int y);
  void PresentAll();
  // Lit again and the blink restarted: the caret shows at once after input.
  void WakeCaret();
  // Until the next timer, or the next frame when a present waits for it.
  int MillisecondsToNextTimer() const;
  // The display's frame at `ms` on the desktop's clock, and where a frame
  // starts.
  uint64_t FrameAt(uint64_t ms) const;
  uint64_t FrameStartMs(uint64_t frame) const;

  Host& host_;
  Clock clock_;
  InputRouter router_;
  XBeeper beeper_;
  FormBackdrop backdrop_;
  CloseRequest close_request_;
  int frames_per_second_ = 0;
  bool frame_owed_ = false;  // a window waits for the next frame
  static constexpr int kUnknown = -2;
  int x_connection_ = kUnknown;  // the X connection to wait on; -1: not on X
  std::vector<std::unique_ptr<FormWindow>> windows_;
  std::vector<std::unique_ptr<ToolWindowView>> tool_views_;
  uint64_t next_tick_ms_ = 0;
  uint64_t next_blink_ms_ = 0;
  bool caret_lit_ = true;
  bool quit_ = false;
  int64_t present_count_ = 0;
};

}  // namespace kestu
