#pragma once
// The host's side of one control on a form: its raster, its window and
// device-context handles, the extender values the form keeps for it (name,
// position, size, visibility, tab order, tooltip text, docking) and the
// ambient values it reads. The control reaches all of it only through the
// ControlSite interface.

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/ControlSite.h"
#include "kestu/foundation/UserControl.h"
#include "kestu/host/OwnProperty.h"
#include "kestu/raster/Raster.h"

namespace kestu {

class Host;
class Form;

// A control's place on its form, in twips.
struct TwipsRect {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  friend bool operator==(const TwipsRect&, const TwipsRect&) = default;
};

// The ambient values a site offers its control.
struct AmbientValues {
  bool user_mode = true;
  FontRef font;  // null: the form's font
  std::string display_name;
  bool display_as_default = false;
};

class HostedControl final : public ControlSite {
 public:
  // Creates the control of class `info` (no procedure runs yet) with its
  // raster sized to `rect` at the screen's current twips per pixel. Inside
  // `container` (a control of a container class on the same form) its
  // place is relative to the container's; else to the form's.
  HostedControl(Host& host, Form& form, const ClassInfo& info, std::string name,
                const TwipsRect& rect, AmbientValues ambient, HostedControl* container = nullptr);
  ~HostedControl() override;
  HostedControl(const HostedControl&) = delete;
  HostedControl& operator=(const HostedControl&) = delete;

  UserControl& Control() const { return *control_; }
  const ClassInfo& Class() const { return class_; }
  Form& Owner() const { return *form_; }
  // The control this one sits in, or null when it sits on the form.
  HostedControl* Container() const { return container_; }
  // Whether Tab or a click may give it the focus: shown, enabled and a
  // control that takes the focus.
  bool CanTakeFocus() const;
  // How many containers it sits in.
  int Depth() const { return container_ ? container_->Depth() + 1 : 0; }
  const std::string& Name() const { return name_; }
  Raster& GetRaster() { return raster_; }
  const Raster& GetRaster() const { return raster_; }

  // ---- Extender values ----
  // The extender's properties, in the order a form file writes them.
  static std::span<const OwnProperty<HostedControl>> ExtenderProperties();
  // An extender property's name as the host spells it, or nothing when the
  // extender has no such property.
  static std::optional<std::string_view> ExtenderName(std::string_view name);
  // The place is relative to the container the control sits in, if any.
  TwipsRect Bounds() const { return {left_, top_, width_, height_}; }
  // The place on the form, in twips.
  int LeftOnForm() const { return left_ + (container_ ? container_->LeftOnForm() : 0); }
  int TopOnForm() const { return top_ + (container_ ? container_->TopOnForm() : 0); }
  void Move(int left_twips, int top_twips);
  bool Visible() const { return visible_; }
  // Visible, and so is every container it sits in: it is on the screen.
  bool ShownOnForm() const { return visible_ && (!container_ || container_->ShownOnForm()); }
  const std::string& ToolTipText() const { return tool_tip_text_; }
  // The form's default control (Enter presses it) and cancel control
  // (Escape presses it): at most one of each per form. Becoming the
  // default takes it from the control that had it, and the ambient
  // DisplayAsDefault follows (see SetDefault).
  bool IsDefault() const { return default_; }
  bool IsCancel() const { return cancel_; }
  void SetDefault(bool is_default);
  void SetCancel(bool is_cancel);
  int16_t Align() const { return align_; }
  // Size and place forced by docking; runs UserControl_Resize when the
  // size changes.
  void Dock(const TwipsRect& rect);

  // Twips per pixel of this control's raster (the screen's at creation).
  int TwipsPerPixelX() const { return twips_per_pixel_x_; }
  int TwipsPerPixelY() const { return twips_per_pixel_y_; }
  // Where the control's raster lies on its form, in pixels.
  PixelRect PixelBoundsOnForm() const;
  // The part of the form a control may show itself in: the form, cut to
  // each container it sits in.
  PixelRect ClipOnForm() const;
  // What of the control the form shows: its bounds, clipped.
  PixelRect VisibleOnForm() const;

  // ---- Window state ----
  bool WindowEnabled() const { return window_enabled_; }
  void SetWindowEnabled(bool enabled) { window_enabled_ = enabled; }
  // Enabled, and so is every container it sits in: it takes input.
  bool EnabledOnForm() const {
    return window_enabled_ && (!container_ || container_->EnabledOnForm());
  }

  // ---- Ambient values ----
  // An ambient property's name as the host spells it ("UserMode",
  // "DisplayAsDefault", "Font", "DisplayName"), or nothing.
  static std::optional<std::string_view> AmbientName(std::string_view name);
  const AmbientValues& Ambient() const { return ambient_; }
  // Changes one ambient property ("UserMode", "DisplayAsDefault", "Font",
  // "DisplayName") and tells the control through UserControl_AmbientChanged.
  // An unknown name is error 438.
  void SetAmbient(std::string_view name, const Variant& value);

  // Drawing calls of this control go to the host's observers while on.
  void SetDrawingObserved(bool observed) { drawing_observed_ = observed; }

  // True until the control is destroyed: a procedure's caller checks it
  // before touching the site again.
  std::weak_ptr<int> Lifetime() const { return lifetime_; }

  // ---- ControlSite ----
  Surface& GetSurface() override { return raster_; }
  int ScreenTwipsPerPixelX() const override;
  int ScreenTwipsPerPixelY() const override;
  bool AmbientUserMode() const override { return ambient_.user_mode; }
  FontRef AmbientFont() const override;
  std::string AmbientDisplayName() const override { return ambient_.display_name; }
  bool AmbientDisplayAsDefault() const override { return ambient_.display_as_default; }
  Variant GetExtender(std::string_view name) const override;
  void SetExtender(std::string_view name, const Variant& value) override;
  int WidthTwips() const override { return width_; }
  int HeightTwips() const override { return height_; }
  void RequestSize(int width_twips, int height_twips) override;
  void PropertyChanged(std::string_view name) override;
  void OnEvent(UserControl& control, const EventInfo& event,
               std::span<EventArgument> arguments) override;
  bool ObservesDrawing() const override { return drawing_observed_; }
  void OnDraw(const DrawCall& call) override;
  void Refresh() override {}  // headless: the raster is all there is to show
  std::optional<int> PopupMenu(std::span<const MenuItem> items) override;
  void DoEvents() override {}  // headless: no messages wait
  void Beep() override;
  std::string ClipboardGetText() override;
  void ClipboardSetText(std::string_view text) override;
  void ShowTip(std::string_view text) override;
  void HideTip() override;
  void SetTipsAllowed(bool allowed) override;
  int32_t hWnd() const override { return hwnd_; }
  int32_t hDC() const override { return hdc_; }
  int32_t FormHwnd() const override;
  UserControl* FormActiveControl() const override;
  std::vector<FormMember> FormControls() const override;

 private:
  void ApplySize(int width_twips, int height_twips);
  void SetAlign(int16_t value);
  // Sets the ambient DisplayAsDefault of every control of the form to
  // whether it is the default, telling those whose value changed.
  void ShowDefaultOnForm();

  Host& host_;
  Form* form_;
  HostedControl* container_;
  const ClassInfo& class_;
  std::string name_;
  int twips_per_pixel_x_;
  int twips_per_pixel_y_;
  int32_t hwnd_;
  int32_t hdc_;
  Raster raster_;
  int left_, top_, width_, height_;
  bool visible_ = true;
  std::string tool_tip_text_;
  int16_t align_ = 0;
  bool default_ = false;
  bool cancel_ = false;
  bool window_enabled_ = true;
  bool drawing_observed_ = false;
  AmbientValues ambient_;
  std::shared_ptr<int> lifetime_ = std::make_shared<int>(0);
  std::unique_ptr<UserControl> control_;
};

}  // namespace kestu
