#pragma once
// The container runtime: forms and the controls on them, the screen, the
// virtual clock, the clipboard, the beep, popup menus, the active window,
// the focus, the one mouse capture and the one caret. It installs the
// window system the controls' operating-system calls go to, so it runs
// headless; a window backend presents its rasters and feeds it input.

#include <cstdint>
#include <deque>
#include <functional>
#include <iosfwd>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/KestuControlsAPI.h"
#include "kestu/foundation/PropertyBag.h"
#include "kestu/host/Form.h"
#include "kestu/host/HostObserver.h"
#include "kestu/host/HostedControl.h"
#include "kestu/host/TipWindow.h"
#include "kestu/host/ToolWindow.h"
#include "kestu/host/UserInput.h"

namespace kestu {

class Desktop;
class HostWindowSystem;

// The text caret: the one the operating system keeps for the whole
// screen. Position and size in pixels of its window's client area.
struct Caret {
  int32_t hwnd = 0;
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  bool shown = false;
};

class Host {
 public:
  // Period of the controls' periodic check on the virtual clock.
  static constexpr int kTickMilliseconds = 250;
  static constexpr int kDefaultFormWidth = 9600;
  static constexpr int kDefaultFormHeight = 7200;
  // The screen a headless host pretends to have, in pixels.
  static constexpr PixelRect kDefaultScreen{0, 0, 1024, 768};

  // Installs the host's window system (the one before comes back when the
  // host ends).
  Host();
  // Terminates every control, then removes the window system.
  ~Host();
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  // ---- Screen ----
  int TwipsPerPixelX() const { return twips_per_pixel_x_; }
  int TwipsPerPixelY() const { return twips_per_pixel_y_; }
  // For forms and controls created afterwards; below 1 is error 380.
  void SetTwipsPerPixel(int x, int y);
  // The screen's pixels: where a tool window must stay. A window backend
  // sets the display's.
  const PixelRect& ScreenBounds() const { return screen_bounds_; }
  void SetScreenBounds(const PixelRect& bounds) { screen_bounds_ = bounds; }

  // ---- Ambient defaults for controls created afterwards ----
  bool UserMode() const { return user_mode_; }
  void SetUserMode(bool run_mode) { user_mode_ = run_mode; }
  // The ambient UserMode for the controls created while it lives; the
  // host's own comes back afterwards, so other forms keep theirs (a
  // designer's form is designed, its property pages run).
  class UserModeScope {
   public:
    UserModeScope(Host& host, bool run_mode) : host_(host), before_(host.UserMode()) {
      host_.SetUserMode(run_mode);
    }
    ~UserModeScope() { host_.SetUserMode(before_); }
    UserModeScope(const UserModeScope&) = delete;
    UserModeScope& operator=(const UserModeScope&) = delete;

   private:
    Host& host_;
    bool before_;
  };
  // The font new forms share ("MS Sans Serif", 8.25).
  const FontRef& DefaultFont() const { return default_font_; }

  // ---- Forms ----
  // A new form, current and active; it replaces a form of the same name.
  Form& CreateForm(std::string name, int width_twips = kDefaultFormWidth,
                   int height_twips = kDefaultFormHeight);
  // A form that belongs to no one yet: form files build on it, then hand
  // it to InstallForm.
  std::unique_ptr<Form> NewDetachedForm(std::string name, int width_twips, int height_twips);
  // Puts a detached form in place of the form of the same name (whose
  // controls are terminated) or beside the others, and activates it.
  Form& InstallForm(std::unique_ptr<Form> form);
  // Terminates the form's controls and removes it.
  void CloseForm(Form& form);
  // Terminates the controls of a detached form and lets it go.
  void DiscardForm(std::unique_ptr<Form> form);
  Form* FindForm(std::string_view name) const;
  // Whether `form` is one of the host's forms (a detached form is not yet).
  bool Holds(const Form& form) const;
  const std::vector<std::unique_ptr<Form>>& Forms() const { return forms_; }
  Form* ActiveForm() const { return active_form_; }
  // Makes `form` the active window (null: none). No procedure runs: the
  // controls notice on their periodic check.
  void Activate(Form* form);

  // ---- Controls ----
  // How deep controls may sit inside containers, the form's own being 0.
  static constexpr int kMaxNesting = 16;
  // A new control on `form`: Initialize, InitProperties, Resize, Show.
  // Without `rect` it takes the class's default size at (0, 0). Inside
  // `container`, a control of a container class on the same form (else
  // error 5), `rect` is relative to it. A failing procedure takes the
  // control off again (after Terminate) and rethrows.
  HostedControl& NewControl(Form& form, const ClassInfo& info, std::string name,
                            std::optional<TwipsRect> rect = std::nullopt,
                            HostedControl* container = nullptr);
  // The same, typed, so that a program reaches the control's own members
  // and connects typed handlers to its events:
  //   auto& ok = host.New<KestuActiveCommand>(form, "ok", TwipsRect{120, 600, 1215, 495});
  //   ok.Click.Connect([&] { ... });
  template <typename C>
  C& New(Form& form, std::string name, std::optional<TwipsRect> rect = std::nullopt,
         HostedControl* container = nullptr) {
    return static_cast<C&>(NewControl(form, C::Info(), std::move(name), rect, container).Control());
  }
  // The control `name` of `form` (a form file's, say) as class C. Throws
  // std::invalid_argument naming the form, the control and both classes
  // when there is no such control or it is of another class.
  template <typename C>
  C& Get(const Form& form, std::string_view name) const {
    return static_cast<C&>(CheckedControl(form, name, C::Info()));
  }
  // A control restored from `bag`: Initialize, ReadProperties, Resize,
  // Show; all or nothing, like NewControl.
  HostedControl& LoadControl(Form& form, const ClassInfo& info, std::string name, PropertyBag bag,
                             std::optional<TwipsRect> rect = std::nullopt,
                             HostedControl* container = nullptr);
  // The first half of LoadControl: the control placed on `form` after
  // Initialize and ReadProperties, not yet resized or shown.
  HostedControl& RestoreControl(Form& form, const ClassInfo& info, std::string name,
                                PropertyBag bag, std::optional<TwipsRect> rect,
                                HostedControl* container = nullptr);
  // The second half: Resize and Show.
  void ShowControl(HostedControl& control);
  // Terminate, then off the form; a container's controls go first.
  void RemoveControl(HostedControl& control);
  // WriteProperties into a fresh bag.
  PropertyBag SaveControl(HostedControl& control);
  // UserControl_Paint, as when the window must be repainted.
  void Repaint(HostedControl& control);
  // By name on `preferred` first, then on every form; null when none.
  HostedControl* FindControl(std::string_view name, const Form* preferred = nullptr) const;

  // ---- The user's keyboard and pointer, as a window or a script sends them ----
  UserInput& User() { return user_input_; }

  // ---- Focus ----
  HostedControl* Focused() const { return focused_; }
  // Moves the keyboard focus: the old holder's UserControl_LostFocus, then
  // the new one's UserControl_GotFocus. The control's form becomes the
  // active window. A disabled control refuses the focus (false).
  bool SetFocus(HostedControl* control);

  // ---- Mouse capture, caret and cursor (as the window system keeps them) ----
  int32_t CaptureWindow() const { return capture_hwnd_; }
  HostedControl* CaptureHolder() const;
  int32_t SetCaptureWindow(int32_t hwnd);
  const std::optional<Caret>& GetCaret() const { return caret_; }
  std::optional<Caret>& MutableCaret() { return caret_; }
  POINTAPI CursorPos() const { return cursor_; }
  // Moves the screen cursor; a tool window under it hears of it.
  void SetCursorPos(int x, int y);

  // ---- Virtual clock ----
  // Runs every control's periodic check `count` times, 250 virtual
  // milliseconds apart.
  void Tick(int count = 1);
  int64_t ClockMilliseconds() const { return clock_ms_; }

  // ---- Services the controls use ----
  // The desktop's clipboard when one is attached, else the host's own.
  std::string ClipboardText() const;
  void SetClipboardText(std::string text);
  // The answer the next popup menu gets (nothing: dismissed). Answers are
  // used in order; without one a menu is dismissed.
  void QueuePopupAnswer(std::optional<int> index) { popup_answers_.push_back(index); }
  std::optional<int> ShowPopupMenu(HostedControl& control, std::span<const MenuItem> items);
  void Beep();
  // Attaches a real desktop (null: headless again). Queued popup answers
  // still come first, so scripts stay in charge.
  void SetDesktop(Desktop* desktop) { desktop_ = desktop; }

  // ---- Tool windows (the tooltip) ----
  ToolWindow& CreateToolWindow();
  void DestroyToolWindow(ToolWindow& window);
  void ShowToolWindow(ToolWindow& window, bool visible);
  // Every tool window there is, shown or not, for a window backend to show.
  const std::vector<std::unique_ptr<ToolWindow>>& ToolWindows() const { return tool_windows_; }
  // The one tooltip every control's site shows and hides.
  TipWindow& Tip() { return tip_; }

  // ---- Observers ----
  void AddObserver(HostObserver* observer);
  void RemoveObserver(HostObserver* observer);
  // Calls `report` on every observer, in the order they were added.
  template <typename Report>
  void Notify(Report&& report) {
    // Without observers (a tool on the library) nothing is built at all:
    // this runs for every event and drawing call.
    if (observers_.empty()) return;
    NotifyAll(report);
  }
  // A warning for the form's author (a form file's key no control knows):
  // one line on the warning stream, standard error unless set.
  void Warn(std::string_view text);
  // Sends warnings to `stream` (null: nowhere); returns the stream before.
  std::ostream* SetWarningStream(std::ostream* stream);

  // Runs `procedure`; a run-time error it raises goes to the observers
  // instead of the caller (timers and other host-initiated calls). False
  // when it raised one.
  bool RunReportingErrors(const std::function<void()>& procedure);

  // ---- Windows by handle ----
  struct WindowRef {
    Form* form = nullptr;
    HostedControl* control = nullptr;
    ToolWindow* tool = nullptr;
  };
  WindowRef FindWindow(int32_t hwnd) const;
  HostedControl* FindDeviceContext(int32_t hdc) const;
  // The window's rectangle on the screen, in pixels; nothing for an
  // unknown handle.
  std::optional<PixelRect> WindowScreenRect(int32_t hwnd) const;
  // A control's top-left corner on the screen, in pixels.
  POINTAPI ControlScreenOrigin(const HostedControl& control) const;

  // Handles: small integers, never reused. Sites and forms take theirs
  // here and give them back when they go.
  int32_t NewHandle() { return next_handle_++; }
  void RegisterWindow(int32_t hwnd, WindowRef ref) { windows_[hwnd] = ref; }
  void RegisterDeviceContext(int32_t hdc, HostedControl* control) {
    device_contexts_[hdc] = control;
  }
  void ForgetHandle(int32_t handle);

 private:
  UserControl& CheckedControl(const Form& form, std::string_view name,
                              const ClassInfo& wanted) const;
  HostedControl& PlaceControl(Form& form, const ClassInfo& info, std::string name,
                              std::optional<TwipsRect> rect, HostedControl* container);
  // Runs the lifecycle `steps`; when one fails the control is taken off
  // again and the error goes on to the caller.
  void RunLifecycle(HostedControl& control, const std::function<void(UserControl&)>& steps);
  void TerminateControls(Form& form);
  void ForgetControl(HostedControl& control);

  int twips_per_pixel_x_ = 15;
  int twips_per_pixel_y_ = 15;
  PixelRect screen_bounds_ = kDefaultScreen;
  bool user_mode_ = true;
  FontRef default_font_;
  int32_t next_handle_ = 1;
  std::map<int32_t, WindowRef> windows_;
  std::map<int32_t, HostedControl*> device_contexts_;
  std::vector<std::unique_ptr<Form>> forms_;
  std::vector<std::unique_ptr<ToolWindow>> tool_windows_;
  TipWindow tip_{*this};  // after the tool windows: it holds one of them
  Form* active_form_ = nullptr;
  HostedControl* focused_ = nullptr;
  int32_t capture_hwnd_ = 0;
  std::optional<Caret> caret_;
  POINTAPI cursor_;
  int64_t clock_ms_ = 0;
  std::string clipboard_;
  std::deque<std::optional<int>> popup_answers_;
  void NotifyAll(const std::function<void(HostObserver&)>& report);

  std::vector<HostObserver*> observers_;
  Desktop* desktop_ = nullptr;
  std::unique_ptr<HostWindowSystem> window_system_;
  UserInput user_input_{*this};
  std::ostream* warnings_;
  WindowSystem* previous_window_system_ = nullptr;
};

}  // namespace kestu
