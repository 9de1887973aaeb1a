#include "kestu/desktop/SdlDesktop.h"

#include <SDL.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <stdexcept>
#include <string_view>

#include "desktop/Display.h"
#include "desktop/XConnection.h"
#include "desktop/XErrorLog.h"
#include "kestu/desktop/KeyTable.h"
#include "kestu/desktop/PopupMenu.h"
#include "kestu/desktop/PopupMenuWindow.h"
#include "kestu/desktop/ToolWindowView.h"
#include "kestu/host/Host.h"

namespace kestu {

namespace {

// The window an event happened in, for the events that have one.
uint32_t EventWindowId(const SDL_Event& event) {
  switch (event.type) {
    case SDL_WINDOWEVENT:
      return event.window.windowID;
    case SDL_KEYDOWN:
    case SDL_KEYUP:
      return event.key.windowID;
    case SDL_TEXTINPUT:
      return event.text.windowID;
    case SDL_MOUSEMOTION:
      return event.motion.windowID;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
      return event.button.windowID;
    default:
      return 0;
  }
}

}  // namespace

std::optional<std::string> SdlDesktop::DisplayProblem() {
  if (SDL_WasInit(SDL_INIT_VIDEO)) return std::nullopt;
  // Without a window system to talk to, SDL would settle for a console or
  // an invisible driver: that is no display for a user to look at.
  if (!std::getenv("DISPLAY") && !std::getenv("WAYLAND_DISPLAY")) {
    return std::string("neither DISPLAY nor WAYLAND_DISPLAY is set");
  }
  if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0) return std::string(SDL_GetError());
  const std::string driver = SDL_GetCurrentVideoDriver();
  SDL_QuitSubSystem(SDL_INIT_VIDEO);
  if (driver != "x11" && driver != "wayland") return "no window system, only " + driver;
  return std::nullopt;
}

SdlDesktop::SdlDesktop(Host& host, Clock clock)
    : host_(host), clock_(clock ? std::move(clock) : Clock(SDL_GetTicks64)), router_(host) {
  // A form is an ordinary window: the screensaver still runs, and the
  // first click on an inactive window is still a click.
  SDL_SetHint(SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1");
  SDL_SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1");
  InstallXErrorLog();  // before SDL's set-up, which keeps it and passes errors on to it
  if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0) {
    throw std::runtime_error(std::string("no display: ") + SDL_GetError());
  }
  // On X a window's pixels go to the server through shared memory, only
  // the rows that changed, confirmed by one round trip. SDL's default there
  // is an OpenGL texture of the whole window, sent again on every present
  // and, on a server without a GPU (Xvfb), drawn by software threads:
  // milliseconds for a one-line change. Set before the first surface.
  const std::string_view driver = SDL_GetCurrentVideoDriver();
  if (driver == "x11") SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
  // Presents follow the display's refresh; a driver with no display to
  // look at is not paced.
  if (driver == "x11" || driver == "wayland") {
    SDL_DisplayMode mode{};
    const bool known = SDL_GetDesktopDisplayMode(0, &mode) == 0 && mode.refresh_rate > 0;
    frames_per_second_ = known ? mode.refresh_rate : kDefaultFramesPerSecond;
  }
  SDL_StartTextInput();
  host_.SetDesktop(this);
  FollowDisplayAt(0, 0);
  const uint64_t now = clock_();
  next_tick_ms_ = now + Host::kTickMilliseconds;
  next_blink_ms_ = now + kCaretBlinkMilliseconds;
  SyncWindows();
}

SdlDesktop::~SdlDesktop() {
  host_.SetDesktop(nullptr);
  tool_views_.clear();
  windows_.clear();
  SDL_QuitSubSystem(SDL_INIT_VIDEO);
}

// ---- Windows ----

void SdlDesktop::SyncWindows() {
  RebindReplacedForms();
  std::erase_if(windows_, [&](const auto& window) { return FormOf(*window) == nullptr; });
  for (const auto& form : host_.Forms()) {
    if (WindowOf(*form)) continue;
    windows_.push_back(std::make_unique<FormWindow>(host_, *form));
    // A form that comes up active gives the focus to its first control
    // that can take it.
    if (host_.ActiveForm() == form.get() && !host_.Focused() && !form->Designer()) {
      host_.RunReportingErrors([&] { host_.User().MoveFocus(*form, false); });
    }
  }
}

void SdlDesktop::CloseAllForms() {
  quit_ = false;
  // A program asked first may keep its forms (a designer with unsaved
  // changes asks the user); the loop then goes on.
  std::vector<Form*> forms;
  for (const auto& form : host_.Forms()) forms.push_back(form.get());
  for (Form* form : forms) {
    if (host_.Holds(*form)) RequestClose(*form);
  }
}

void SdlDesktop::RequestClose(Form& form) {
  bool close = true;
  if (close_request_) host_.RunReportingErrors([&] { close = close_request_(form); });
  // The request may have closed it already (a designer quitting).
  if (close && host_.Holds(form)) host_.CloseForm(form);
}

void SdlDesktop::RebindReplacedForms() {
  for (const auto& window : windows_) {
    if (FormOf(*window)) continue;
    const std::string& name = window->ShownName();
    for (const auto& form : host_.Forms()) {
      if (SameName(form->Name(), name) && !WindowOf(*form)) {
        window->Rebind(*form);
        break;
      }
    }
  }
}

FormWindow* SdlDesktop::WindowOf(const Form& form) const {
  for (const auto& window : windows_) {
    if (window->FormHwnd() == form.hWnd()) return window.get();
  }
  return nullptr;
}

void SdlDesktop::SyncToolWindows() {
  const auto shown = [&](const ToolWindowView& view) {
    const ToolWindow* tool = host_.FindWindow(view.ToolHwnd()).tool;
    return tool && tool->Visible();
  };
  std::erase_if(tool_views_, [&](const auto& view) { return !shown(*view); });
  for (const auto& tool : host_.ToolWindows()) {
    if (!tool->Visible()) continue;
    if (ToolWindowView* view = ViewOf(tool->hWnd())) {
      view->Follow(*tool);
      continue;
    }
    try {
      tool_views_.push_back(std::make_unique<ToolWindowView>(*tool));
    } catch (const std::runtime_error&) {
      // A tip the window system refuses is a tip not seen; the host goes on.
    }
  }
}

ToolWindowView* SdlDesktop::ViewOf(int32_t tool_hwnd) const {
  for (const auto& view : tool_views_) {
    if (view->ToolHwnd() == tool_hwnd) return view.get();
  }
  return nullptr;
}

ToolWindowView* SdlDesktop::ToolViewWithId(uint32_t window_id) const {
  for (const auto& view : tool_views_) {
    if (view->WindowId() == window_id) return view.get();
  }
  return nullptr;
}

FormWindow* SdlDesktop::WindowWithId(uint32_t window_id) const {
  for (const auto& window : windows_) {
    if (window->WindowId() == window_id) return window.get();
  }
  return nullptr;
}

Form* SdlDesktop::FormOf(const FormWindow& window) const {
  return host_.FindWindow(window.FormHwnd()).form;
}

// ---- The loop ----

void SdlDesktop::Run(const std::function<void()>& after_each_turn) {
  while (RunOnce(MillisecondsToNextTimer())) {
    if (after_each_turn) after_each_turn();
  }
}

int SdlDesktop::MillisecondsToNextTimer() const {
  const uint64_t now = clock_();
  uint64_t next = std::min(next_tick_ms_, next_blink_ms_);
  if (frame_owed_) next = std::min(next, FrameStartMs(FrameAt(now) + 1));
  return next <= now ? 0 : static_cast<int>(std::min<uint64_t>(next - now, INT32_MAX));
}

uint64_t SdlDesktop::FrameAt(uint64_t ms) const {
  return frames_per_second_ > 0 ? ms * frames_per_second_ / 1000 : ms;
}

uint64_t SdlDesktop::FrameStartMs(uint64_t frame) const {
  if (frames_per_second_ <= 0) return frame;
  return (frame * 1000 + frames_per_second_ - 1) / frames_per_second_;
}

bool SdlDesktop::RunOnce(int wait_ms) {
  HandleInput(wait_ms, [this](const SDL_Event& event) {
    Dispatch(event);
    return !quit_;
  });
  if (quit_) CloseAllForms();
  RunDueTimers();
  SyncWindows();
  PresentAll();
  return !host_.Forms().empty();
}

void SdlDesktop::HandleInput(int wait_ms, const std::function<bool(const SDL_Event&)>& handle) {
  SDL_Event event;
  if (!WaitForEvent(event, std::clamp(wait_ms, 0, MillisecondsToNextTimer()))) return;
  do {
    if (!handle(event)) return;
    RunDueTimers();
  } while (SDL_PollEvent(&event));
}

bool SdlDesktop::WaitForEvent(SDL_Event& event, int timeout_ms) {
  if (x_connection_ == kUnknown && !windows_.empty()) {
    x_connection_ = XConnectionOf(windows_[0]->Window());  // -1: not on X, asked once
  }
  if (x_connection_ >= 0) return WaitOnXConnection(x_connection_, event, timeout_ms);
  return SDL_WaitEventTimeout(&event, timeout_ms);
}

void SdlDesktop::RunDueTimers() {
  const uint64_t now = clock_();
  if (now >= next_tick_ms_) {
    // The periodic checks ask where the pointer is (a button's hover ends
    // when it has left): the pointer may have left every window since the
    // last move the windows saw.
    int x = 0, y = 0;
    SDL_GetGlobalMouseState(&x, &y);
    FollowDisplayAt(x, y);
    host_.SetCursorPos(x, y);
    host_.Tick();
    // A late turn runs the check once, not once per period missed.
    next_tick_ms_ = std::max(next_tick_ms_ + Host::kTickMilliseconds, now + 1);
  }
  if (now >= next_blink_ms_) {
    caret_lit_ = !caret_lit_;
    next_blink_ms_ = now + kCaretBlinkMilliseconds;
  }
}

void SdlDesktop::WakeCaret() {
  caret_lit_ = true;
  next_blink_ms_ = clock_() + kCaretBlinkMilliseconds;
}

void SdlDesktop::FollowDisplayAt(int x, int y) {
  const SDL_Rect display = DisplayBoundsAt(x, y);
  host_.SetScreenBounds({display.x, display.y, display.x + display.w, display.y + display.h});
}

void SdlDesktop::PresentAll() {
  SyncToolWindows();
  const uint64_t frame = FrameAt(clock_());
  frame_owed_ = false;
  for (const auto& window : windows_) {
    const Form* form = FormOf(*window);
    if (!form) continue;
    const Raster* backdrop = backdrop_ ? backdrop_(*form) : nullptr;
    // A window shown in this frame already waits for the next one; the
    // input and the timers go on meanwhile.
    if (frames_per_second_ > 0 && window->ShownInFrame() == frame) {
      if (window->Changed(caret_lit_, backdrop)) frame_owed_ = true;
      continue;
    }
    if (window->Present(caret_lit_, backdrop)) {
      window->SetShownInFrame(frame);
      ++present_count_;
    }
  }
}

void SdlDesktop::Dispatch(const SDL_Event& event) {
  if (event.type == SDL_QUIT) {
    quit_ = true;
    return;
  }
  if (ToolWindowView* view = ToolViewWithId(EventWindowId(event))) {
    DispatchToolEvent(event, *view);
    return;
  }
  FormWindow* window = WindowWithId(EventWindowId(event));
  Form* form = window ? FormOf(*window) : nullptr;
  if (!form) return;
  if (event.type == SDL_WINDOWEVENT) {
    DispatchWindowEvent(event);
    return;
  }
  // A run-time error of a control's procedure has no caller here: it goes
  // to the host's observers (the trace) and the loop goes on.
  host_.RunReportingErrors([&] { DispatchInput(event, *form); });
}

void SdlDesktop::DispatchInput(const SDL_Event& event, Form& form) {
  switch (event.type) {
    case SDL_KEYDOWN:
      WakeCaret();
      // A key the form took (an access key with Alt, Enter for the default
      // button) types nothing: the text SDL queued behind it goes too.
      if (router_.KeyDown(form, event.key.keysym.sym, event.key.keysym.mod)) {
        SDL_FlushEvent(SDL_TEXTINPUT);
      }
      return;
    case SDL_KEYUP:
      router_.KeyUp(form, event.key.keysym.sym, event.key.keysym.mod);
      return;
    case SDL_TEXTINPUT:
      WakeCaret();
      router_.Text(form, event.text.text);
      return;
    case SDL_MOUSEMOTION:
      router_.MouseMove(form, event.motion.x, event.motion.y, SDL_GetModState());
      return;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP: {
      const bool down = event.type == SDL_MOUSEBUTTONDOWN;
      WakeCaret();
      // Held buttons keep the pointer's events coming from outside the
      // window; set before the procedures, which may open a menu.
      SDL_CaptureMouse(down ? SDL_TRUE : SDL_FALSE);
      router_.MouseButton(form, down, event.button.button, event.button.clicks, event.button.x,
                          event.button.y, SDL_GetModState());
      if (!router_.ButtonsHeld()) SDL_CaptureMouse(SDL_FALSE);
      return;
    }
    default:
      return;
  }
}

void SdlDesktop::DispatchWindowEvent(const SDL_Event& event) {
  FormWindow* window = WindowWithId(event.window.windowID);
  Form* form = FormOf(*window);
  switch (event.window.event) {
    case SDL_WINDOWEVENT_FOCUS_GAINED:
      host_.Activate(form);
      WakeCaret();
      break;
    case SDL_WINDOWEVENT_FOCUS_LOST:
      if (host_.ActiveForm() == form) host_.Activate(nullptr);
      break;
    case SDL_WINDOWEVENT_MOVED:
      window->FollowWindowPosition();
      break;
    case SDL_WINDOWEVENT_LEAVE:
      host_.RunReportingErrors([&] { PointerLeft(*form); });
      break;
    case SDL_WINDOWEVENT_EXPOSED:
    case SDL_WINDOWEVENT_SIZE_CHANGED:
      window->Invalidate();
      break;
    case SDL_WINDOWEVENT_CLOSE:
      RequestClose(*form);
      break;
    default:
      break;
  }
}

void SdlDesktop::DispatchToolEvent(const SDL_Event& event, ToolWindowView& view) {
  const ToolWindow* tool = host_.FindWindow(view.ToolHwnd()).tool;
  if (!tool) return;
  if (event.type == SDL_MOUSEMOTION) {
    const PixelRect& at = tool->ScreenRect();
    host_.RunReportingErrors(
        [&] { host_.SetCursorPos(at.left + event.motion.x, at.top + event.motion.y); });
  } else if (event.type == SDL_WINDOWEVENT && event.window.event == SDL_WINDOWEVENT_EXPOSED) {
    view.Invalidate();
  }
}

void SdlDesktop::PointerLeft(Form& form) {
  // With a button held SDL keeps the pointer's moves coming by itself.
  const HostedControl* holder = host_.CaptureHolder();
  if (!holder || &holder->Owner() != &form || router_.ButtonsHeld()) return;
  int x = 0, y = 0;
  SDL_GetGlobalMouseState(&x, &y);
  const PixelRect client = form.ScreenRect();
  router_.MouseMove(form, x - client.left, y - client.top, SDL_GetModState());
}

// ---- Desktop services ----

std::optional<int> SdlDesktop::ShowPopupMenu(HostedControl& /*control*/,
                                             std::span<const MenuItem> items) {
  PopupMenu menu({items.begin(), items.end()});
  int x = 0, y = 0;
  SDL_GetGlobalMouseState(&x, &y);
  std::optional<PopupMenuWindow> shown;
  try {
    shown.emplace(menu, x, y);
  } catch (const std::runtime_error&) {
    return std::nullopt;  // a menu that cannot be shown is a menu dismissed
  }
  // The menu's input comes through the desktop's own loop: the timers run
  // and the forms keep presenting and blinking while it is open.
  std::optional<int> answer;
  bool open = true;
  while (open) {
    HandleInput(std::numeric_limits<int>::max(), [&](const SDL_Event& event) {
      open = MenuInput(event, menu, *shown, answer);
      return open;
    });
    RunDueTimers();
    PresentAll();
  }
  return answer;
}

bool SdlDesktop::MenuInput(const SDL_Event& event, PopupMenu& menu, PopupMenuWindow& popup,
                           std::optional<int>& answer) {
  // The forms' input goes to the menu, and a press anywhere else
  // dismisses it.
  const bool on_menu = EventWindowId(event) == popup.WindowId();
  const int highlighted = menu.Highlighted();
  switch (event.type) {
    case SDL_QUIT: {
      SDL_Event quit = event;
      SDL_PushEvent(&quit);  // the main loop closes the forms
      return false;
    }
    case SDL_MOUSEMOTION:
      if (on_menu)
        menu.PointAt(event.motion.x, event.motion.y);
      else
        menu.PointAt(-1, -1);
      break;
    case SDL_MOUSEBUTTONDOWN:
      if (!on_menu) return false;
      break;
    case SDL_MOUSEBUTTONUP:
      if (const auto chosen =
              on_menu ? menu.ChoiceAt(event.button.x, event.button.y) : std::nullopt) {
        answer = chosen;
        return false;
      }
      break;
    case SDL_KEYDOWN: {
      const int16_t key = VirtualKeyFor(event.key.keysym.sym, event.key.keysym.mod & KMOD_NUM);
      const MenuKeyResult result = menu.PressKey(key);
      if (result.closed) {
        // The key's text belongs to the menu too, not to the control.
        SDL_FlushEvent(SDL_TEXTINPUT);
        answer = result.chosen;
        return false;
      }
      break;
    }
    case SDL_WINDOWEVENT:
      if (on_menu) {
        if (event.window.event == SDL_WINDOWEVENT_EXPOSED) popup.Present();
      } else if (event.window.event == SDL_WINDOWEVENT_FOCUS_LOST) {
        return false;
      } else if (FormWindow* window = WindowWithId(event.window.windowID);
                 window && event.window.event == SDL_WINDOWEVENT_EXPOSED) {
        window->Invalidate();
      }
      break;
    default:
      break;
  }
  if (menu.Highlighted() != highlighted) popup.Present();
  return true;
}

std::optional<std::string> SdlDesktop::ClipboardText() {
  char* text = SDL_GetClipboardText();
  if (!text) return std::nullopt;
  std::string result(text);
  SDL_free(text);
  return result;
}

void SdlDesktop::SetClipboardText(const std::string& text) {
  SDL_SetClipboardText(text.c_str());
}

void SdlDesktop::Beep() {
  beeper_.Beep();
}

}  // namespace kestu
