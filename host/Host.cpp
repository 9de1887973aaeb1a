#include "kestu/host/Host.h"

#include "kestu/foundation/Text.h"

#include <algorithm>
#include <iostream>
#include <stdexcept>
#include <utility>

#include "host/HostWindowSystem.h"
#include "host/Units.h"
#include "kestu/foundation/RuntimeError.h"
#include "kestu/host/Desktop.h"

namespace kestu {

Host::Host()
    : default_font_(MakeFont("MS Sans Serif", 8.25)),
      window_system_(std::make_unique<HostWindowSystem>(*this)),
      warnings_(&std::cerr) {
  previous_window_system_ = InstallWindowSystem(window_system_.get());
}

Host::~Host() {
  // Controls terminate while the window system still answers them (an
  // edit box destroys its caret on the way out).
  for (auto& form : forms_) TerminateControls(*form);
  forms_.clear();
  InstallWindowSystem(previous_window_system_);
}

void Host::SetTwipsPerPixel(int x, int y) {
  if (x < 1 || y < 1) throw RuntimeError(err::kInvalidPropertyValue, "TwipsPerPixel");
  twips_per_pixel_x_ = x;
  twips_per_pixel_y_ = y;
}

// ---- Forms ----

std::unique_ptr<Form> Host::NewDetachedForm(std::string name, int width_twips, int height_twips) {
  if (width_twips < 0 || height_twips < 0) throw RuntimeError(err::kInvalidPropertyValue, name);
  CheckSurfaceSize(width_twips, height_twips, twips_per_pixel_x_, twips_per_pixel_y_,
                   "form '" + name + "'");
  auto form = std::make_unique<Form>(std::move(name), NewHandle(), width_twips, height_twips,
                                     twips_per_pixel_x_, twips_per_pixel_y_, default_font_);
  RegisterWindow(form->hWnd(), {.form = form.get()});
  return form;
}

Form& Host::CreateForm(std::string name, int width_twips, int height_twips) {
  return InstallForm(NewDetachedForm(std::move(name), width_twips, height_twips));
}

Form& Host::InstallForm(std::unique_ptr<Form> form) {
  if (Form* old = FindForm(form->Name())) CloseForm(*old);
  forms_.push_back(std::move(form));
  Form& installed = *forms_.back();
  Activate(&installed);
  return installed;
}

void Host::CloseForm(Form& form) {
  TerminateControls(form);
  if (active_form_ == &form) active_form_ = nullptr;
  ForgetHandle(form.hWnd());
  std::erase_if(forms_, [&](const auto& f) { return f.get() == &form; });
}

void Host::DiscardForm(std::unique_ptr<Form> form) {
  if (!form) return;
  TerminateControls(*form);
  ForgetHandle(form->hWnd());
}

Form* Host::FindForm(std::string_view name) const {
  for (const auto& form : forms_) {
    if (SameName(form->Name(), name)) return form.get();
  }
  return nullptr;
}

bool Host::Holds(const Form& form) const {
  return std::any_of(forms_.begin(), forms_.end(), [&](const auto& f) { return f.get() == &form; });
}

void Host::Activate(Form* form) {
  active_form_ = form;
}

void Host::TerminateControls(Form& form) {
  while (!form.Controls().empty()) RemoveControl(*form.Controls().back());
}

// ---- Controls ----

HostedControl& Host::PlaceControl(Form& form, const ClassInfo& info, std::string name,
                                  std::optional<TwipsRect> rect, HostedControl* container) {
  if (container && (&container->Owner() != &form || !container->Class().is_container)) {
    throw RuntimeError(
        err::kInvalidProcedureCall,
        "'" + container->Name() + "' cannot hold controls on form '" + form.Name() + "'");
  }
  if (container && container->Depth() + 1 >= kMaxNesting) {
    throw RuntimeError(err::kInvalidProcedureCall, "containers nest only so deep");
  }
  const TwipsRect bounds = rect.value_or(TwipsRect{0, 0, info.default_width, info.default_height});
  if (bounds.width < 0 || bounds.height < 0) {
    throw RuntimeError(err::kInvalidPropertyValue, bounds.width < 0 ? "Width" : "Height");
  }
  CheckSurfaceSize(bounds.width, bounds.height, twips_per_pixel_x_, twips_per_pixel_y_,
                   "control '" + name + "'");
  AmbientValues ambient{.user_mode = user_mode_, .display_name = name};
  return form.Add(std::make_unique<HostedControl>(*this, form, info, std::move(name), bounds,
                                                  ambient, container));
}

void Host::RunLifecycle(HostedControl& control, const std::function<void(UserControl&)>& steps) {
  try {
    steps(control.Control());
  } catch (...) {
    RemoveControl(control);
    throw;
  }
}

HostedControl& Host::NewControl(Form& form, const ClassInfo& info, std::string name,
                                std::optional<TwipsRect> rect, HostedControl* container) {
  HostedControl& control = PlaceControl(form, info, std::move(name), rect, container);
  RunLifecycle(control, [](UserControl& c) {
    c.UserControl_Initialize();
    c.UserControl_InitProperties();
    c.UserControl_Resize();
    c.UserControl_Show();
  });
  return control;
}

HostedControl& Host::RestoreControl(Form& form, const ClassInfo& info, std::string name,
                                    PropertyBag bag, std::optional<TwipsRect> rect,
                                    HostedControl* container) {
  HostedControl& control = PlaceControl(form, info, std::move(name), rect, container);
  RunLifecycle(control, [&bag](UserControl& c) {
    c.UserControl_Initialize();
    c.UserControl_ReadProperties(bag);
  });
  return control;
}

void Host::ShowControl(HostedControl& control) {
  RunLifecycle(control, [](UserControl& c) {
    c.UserControl_Resize();
    c.UserControl_Show();
  });
}

HostedControl& Host::LoadControl(Form& form, const ClassInfo& info, std::string name,
                                 PropertyBag bag, std::optional<TwipsRect> rect,
                                 HostedControl* container) {
  HostedControl& control =
      RestoreControl(form, info, std::move(name), std::move(bag), rect, container);
  ShowControl(control);
  return control;
}

void Host::RemoveControl(HostedControl& control) {
  // By lifetime: a child's Terminate may remove a sibling first.
  std::vector<std::pair<std::weak_ptr<int>, HostedControl*>> children;
  for (HostedControl* child : control.Owner().ChildrenOf(&control)) {
    children.emplace_back(child->Lifetime(), child);
  }
  for (auto& [alive, child] : children) {
    if (!alive.expired()) RemoveControl(*child);
  }
  RunReportingErrors([&] { control.Control().UserControl_Terminate(); });
  ForgetControl(control);
  // Destroyed last: the form hands the control back and it goes here.
  std::unique_ptr<HostedControl> removed = control.Owner().Remove(control);
}

void Host::ForgetControl(HostedControl& control) {
  if (focused_ == &control) focused_ = nullptr;
  if (capture_hwnd_ == control.hWnd()) capture_hwnd_ = 0;
  if (caret_ && caret_->hwnd == control.hWnd()) caret_.reset();
}

PropertyBag Host::SaveControl(HostedControl& control) {
  PropertyBag bag;
  control.Control().UserControl_WriteProperties(bag);
  return bag;
}

void Host::Repaint(HostedControl& control) {
  control.Control().UserControl_Paint();
}

HostedControl* Host::FindControl(std::string_view name, const Form* preferred) const {
  if (preferred) {
    if (HostedControl* found = preferred->FindControl(name)) return found;
  }
  for (const auto& form : forms_) {
    if (HostedControl* found = form->FindControl(name)) return found;
  }
  return nullptr;
}

UserControl& Host::CheckedControl(const Form& form, std::string_view name,
                                  const ClassInfo& wanted) const {
  const HostedControl* found = form.FindControl(name);
  const std::string where = std::string("form '").append(form.Name()).append("' has ");
  if (!found) {
    throw std::invalid_argument(std::string(where).append("no control '").append(name).append("'"));
  }
  if (&found->Class() != &wanted) {
    throw std::invalid_argument(std::string(where)
                                    .append("'")
                                    .append(name)
                                    .append("' as a ")
                                    .append(found->Class().name)
                                    .append(", not a ")
                                    .append(wanted.name));
  }
  return found->Control();
}

// ---- Focus, capture, cursor ----

bool Host::SetFocus(HostedControl* control) {
  if (control == focused_) return true;
  if (control && !control->EnabledOnForm()) return false;
  HostedControl* previous = focused_;
  focused_ = control;
  if (control) {
    control->Owner().SetActiveControl(control);
    if (active_form_ != &control->Owner()) Activate(&control->Owner());
  }
  // The old holder hears first; it may be gone by the time the new one
  // hears, and the new one may move the focus again.
  if (previous) {
    std::weak_ptr<int> alive = control ? control->Lifetime() : std::weak_ptr<int>();
    previous->Control().UserControl_LostFocus();
    if (control && alive.expired()) return false;
  }
  if (control && focused_ == control) control->Control().UserControl_GotFocus();
  return true;
}

void Host::Warn(std::string_view text) {
  if (warnings_) *warnings_ << text << "\n";
}

std::ostream* Host::SetWarningStream(std::ostream* stream) {
  return std::exchange(warnings_, stream);
}

HostedControl* Host::CaptureHolder() const {
  return FindWindow(capture_hwnd_).control;
}

int32_t Host::SetCaptureWindow(int32_t hwnd) {
  const int32_t previous = capture_hwnd_;
  capture_hwnd_ = hwnd;
  return previous;
}

void Host::SetCursorPos(int x, int y) {
  cursor_ = POINTAPI{x, y};
  for (const auto& tool : tool_windows_) {
    const PixelRect& r = tool->ScreenRect();
    const bool over = x >= r.left && x < r.right && y >= r.top && y < r.bottom;
    if (over && tool->Visible() && tool->on_mouse_over) {
      tool->on_mouse_over();
      return;  // the callback may have destroyed the window
    }
  }
}

// ---- Clock ----

void Host::Tick(int count) {
  for (int i = 0; i < count; ++i) {
    clock_ms_ += kTickMilliseconds;
    // A check may remove controls (its own or others'): walk a snapshot
    // and skip the ones that went.
    std::vector<std::pair<std::weak_ptr<int>, HostedControl*>> controls;
    for (const auto& form : forms_) {
      for (const auto& control : form->Controls()) {
        controls.emplace_back(control->Lifetime(), control.get());
      }
    }
    for (auto& [alive, control] : controls) {
      if (alive.expired()) continue;
      RunReportingErrors([control = control] { control->Control().PeriodicCheck(); });
    }
  }
}

// ---- Services ----

std::optional<int> Host::ShowPopupMenu(HostedControl& control, std::span<const MenuItem> items) {
  Notify([&](HostObserver& o) { o.OnPopup(control, items); });
  std::optional<int> answer;
  if (!popup_answers_.empty()) {
    answer = popup_answers_.front();
    popup_answers_.pop_front();
  } else if (desktop_) {
    answer = desktop_->ShowPopupMenu(control, items);
  }
  // A real menu cannot choose a disabled item, a separator or nothing at
  // all: any of these leaves the menu dismissed.
  if (answer && (*answer < 0 || *answer >= static_cast<int>(items.size()) ||
                 !items[*answer].enabled || items[*answer].IsSeparator())) {
    answer.reset();
  }
  return answer;
}

void Host::Beep() {
  Notify([](HostObserver& o) { o.OnBeep(); });
  if (desktop_) desktop_->Beep();
}

std::string Host::ClipboardText() const {
  if (desktop_) {
    if (auto text = desktop_->ClipboardText()) return *text;
  }
  return clipboard_;
}

void Host::SetClipboardText(std::string text) {
  clipboard_ = std::move(text);
  if (desktop_) desktop_->SetClipboardText(clipboard_);
}

// ---- Tool windows ----

ToolWindow& Host::CreateToolWindow() {
  tool_windows_.push_back(std::make_unique<ToolWindow>(NewHandle()));
  ToolWindow& window = *tool_windows_.back();
  RegisterWindow(window.hWnd(), {.tool = &window});
  return window;
}

void Host::DestroyToolWindow(ToolWindow& window) {
  ShowToolWindow(window, false);
  ForgetHandle(window.hWnd());
  std::erase_if(tool_windows_, [&](const auto& w) { return w.get() == &window; });
}

void Host::ShowToolWindow(ToolWindow& window, bool visible) {
  if (window.Visible() == visible) return;
  window.SetVisible(visible);
  if (visible) {
    Notify([&](HostObserver& o) { o.OnToolWindowShown(window); });
  } else {
    Notify([&](HostObserver& o) { o.OnToolWindowHidden(window); });
  }
}

// ---- Observers ----

void Host::AddObserver(HostObserver* observer) {
  observers_.push_back(observer);
}

void Host::RemoveObserver(HostObserver* observer) {
  std::erase(observers_, observer);
}

void Host::NotifyAll(const std::function<void(HostObserver&)>& report) {
  // An observer may add or remove observers while it is told.
  const std::vector<HostObserver*> snapshot = observers_;
  for (HostObserver* observer : snapshot) {
    if (std::find(observers_.begin(), observers_.end(), observer) != observers_.end()) {
      report(*observer);
    }
  }
}

bool Host::RunReportingErrors(const std::function<void()>& procedure) {
  try {
    procedure();
    return true;
  } catch (const RuntimeError& error) {
    Notify([&](HostObserver& o) { o.OnError(error); });
    return false;
  }
}

// ---- Windows by handle ----

Host::WindowRef Host::FindWindow(int32_t hwnd) const {
  auto it = windows_.find(hwnd);
  return it == windows_.end() ? WindowRef{} : it->second;
}

HostedControl* Host::FindDeviceContext(int32_t hdc) const {
  auto it = device_contexts_.find(hdc);
  return it == device_contexts_.end() ? nullptr : it->second;
}

void Host::ForgetHandle(int32_t handle) {
  windows_.erase(handle);
  device_contexts_.erase(handle);
}

POINTAPI Host::ControlScreenOrigin(const HostedControl& control) const {
  const PixelRect form = control.Owner().ScreenRect();
  const PixelRect bounds = control.PixelBoundsOnForm();
  return {form.left + bounds.left, form.top + bounds.top};
}

std::optional<PixelRect> Host::WindowScreenRect(int32_t hwnd) const {
  const WindowRef window = FindWindow(hwnd);
  if (window.form) return window.form->ScreenRect();
  if (window.tool) return window.tool->ScreenRect();
  if (window.control) {
    const POINTAPI origin = ControlScreenOrigin(*window.control);
    const Raster& raster = window.control->GetRaster();
    return PixelRect{origin.x, origin.y, origin.x + raster.Width(), origin.y + raster.Height()};
  }
  return std::nullopt;
}

}  // namespace kestu
