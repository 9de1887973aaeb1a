#pragma once
// The base of every control: its drawing surface and drawing members, its
// link to the container, and the lifecycle and input procedures the host
// calls. Controls derive from it and override the procedures they need.
// Drawing goes through these members only, never to a global surface.

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "kestu/foundation/ControlSite.h"
#include "kestu/foundation/Event.h"
#include "kestu/foundation/OleColor.h"
#include "kestu/foundation/StdFont.h"
#include "kestu/foundation/StdPicture.h"
#include "kestu/foundation/Surface.h"

namespace kestu {

class FaceRecording;

class PropertyBag;
struct ClassInfo;

// `ScaleMode` values.
namespace scale {
inline constexpr int16_t kUser = 0;
inline constexpr int16_t kTwips = 1;
inline constexpr int16_t kPoints = 2;
inline constexpr int16_t kPixels = 3;
inline constexpr int16_t kCharacters = 4;
inline constexpr int16_t kInches = 5;
inline constexpr int16_t kMillimeters = 6;
inline constexpr int16_t kCentimeters = 7;
}  // namespace scale

enum class LineKind { Plain, Box, FilledBox };

class UserControl {
 public:
  UserControl();
  virtual ~UserControl();
  UserControl(const UserControl&) = delete;
  UserControl& operator=(const UserControl&) = delete;

  // The class's metadata: properties, methods and events by name.
  virtual const ClassInfo& Class() const = 0;

  // Late binding through the class's metadata, as scripts, form files and
  // programs reach a property by name: error 438 for a name the class
  // lacks, 383 for a read-only one, 394 for a write-only one.
  void SetProperty(std::string_view name, const Variant& value);
  Variant GetProperty(std::string_view name);

  // ---- Called by the host ----
  // Links the control to its container before UserControl_Initialize.
  void AttachSite(ControlSite* site);
  ControlSite* Site() const { return site_; }

  // Lifecycle procedures, in the host's order: Initialize, then
  // InitProperties (new) or ReadProperties (loaded), Resize, Show; Paint
  // whenever needed; WriteProperties on save; Terminate last.
  // The last three work from the properties the class declares saved (see
  // PropertyDecl): a control overrides them only for what comes after.
  virtual void UserControl_Initialize() {}
  virtual void UserControl_InitProperties();
  virtual void UserControl_ReadProperties(PropertyBag& bag);
  virtual void UserControl_WriteProperties(PropertyBag& bag);
  virtual void UserControl_Resize() {}
  virtual void UserControl_Show() {}
  virtual void UserControl_Paint() {}
  virtual void UserControl_Terminate() {}
  virtual void UserControl_AmbientChanged(const std::string& /*property_name*/) {}
  virtual void UserControl_AccessKeyPress(int16_t& /*key_ascii*/) {}

  // Input procedures. Shift bits: 1 Shift, 2 Ctrl, 4 Alt. Button bits:
  // 1 left, 2 right, 4 middle. X and Y in twips.
  virtual void UserControl_GotFocus() {}
  virtual void UserControl_LostFocus() {}
  virtual void UserControl_KeyDown(int16_t& /*key_code*/, int16_t& /*shift*/) {}
  virtual void UserControl_KeyPress(int16_t& /*key_ascii*/) {}
  virtual void UserControl_KeyUp(int16_t& /*key_code*/, int16_t& /*shift*/) {}
  virtual void UserControl_MouseDown(int16_t& /*button*/, int16_t& /*shift*/, float& /*x*/,
                                     float& /*y*/) {}
  virtual void UserControl_MouseMove(int16_t& /*button*/, int16_t& /*shift*/, float& /*x*/,
                                     float& /*y*/) {}
  virtual void UserControl_MouseUp(int16_t& /*button*/, int16_t& /*shift*/, float& /*x*/,
                                   float& /*y*/) {}
  virtual void UserControl_Click() {}
  virtual void UserControl_DblClick() {}

  // Whether the host may give this control the focus.
  virtual bool CanGetFocus() const { return false; }
  // The control's access keys (characters that, with Alt, call
  // UserControl_AccessKeyPress).
  virtual std::string AccessKeys() const { return {}; }
  // The periodic check a focusable control runs on its own timer.
  virtual void PeriodicCheck() {}
  // The index of the popup-menu item chosen by the user.
  virtual void MenuItemChosen(int /*index*/) {}

  // ---- Drawing members (in the current scale; twips unless ScaleMode
  // says otherwise) ----
  void Cls();
  void Line(float x1, float y1, float x2, float y2, OLE_COLOR color,
            LineKind kind = LineKind::Plain);
  void Line(float x1, float y1, float x2, float y2);  // in ForeColor
  void PSet(float x, float y, OLE_COLOR color);
  // Prints at CurrentX/CurrentY in ForeColor and advances CurrentX.
  void Print(std::string_view text);
  void PaintPicture(const StdPicture& picture, float x, float y,
                    std::optional<float> width = std::nullopt,
                    std::optional<float> height = std::nullopt);
  float TextWidth(std::string_view text);
  float TextHeight(std::string_view text);
  void Refresh();

  float CurrentX() const { return current_x_; }
  float CurrentY() const { return current_y_; }
  void SetCurrentX(float x) { current_x_ = x; }
  void SetCurrentY(float y) { current_y_ = y; }

  float ScaleWidth() const;
  float ScaleHeight() const;
  int16_t ScaleMode() const { return scale_mode_; }
  void SetScaleMode(int16_t mode);

  // The control's own extent in twips; setting it asks the container.
  float Width() const;
  float Height() const;
  void SetWidth(float twips);
  void SetHeight(float twips);
  // Both at once: the container resizes the control once.
  void SetSize(float width_twips, float height_twips);

  int16_t DrawMode() const { return draw_mode_; }
  void SetDrawMode(int16_t mode);

  OLE_COLOR ForeColor() const { return fore_color_; }
  void SetForeColor(OLE_COLOR color) { fore_color_ = color; }
  OLE_COLOR BackColor() const { return back_color_; }
  // The colour Cls clears to; setting it draws nothing by itself.
  void SetBackColor(OLE_COLOR color) { back_color_ = color; }

  const FontRef& Font() const { return font_; }
  void SetFont(FontRef font);  // by reference
  // These change the font object itself, so a shared font sees them too.
  bool FontBold() const;
  void SetFontBold(bool bold);
  bool FontUnderline() const;
  void SetFontUnderline(bool underline);

  bool AutoRedraw() const { return auto_redraw_; }
  void SetAutoRedraw(bool on) { auto_redraw_ = on; }

  int32_t hDC() const;
  int32_t hWnd() const;

  // The surface's font as it is rendered (em size in pixels at this
  // control's pixels per inch). Used by the window system's text call.
  FontSpec RenderFont() const;
  // While a face is being drawn (DrawFace), the stand-in that records it.
  Surface& GetSurface() const { return face_ ? *face_ : site_->GetSurface(); }

 protected:
  // ---- Container services for the derived control ----
  ControlSite& Container() const { return *site_; }
  bool AmbientUserMode() const { return site_->AmbientUserMode(); }
  FontRef AmbientFont() const { return site_->AmbientFont(); }
  std::string AmbientDisplayName() const { return site_->AmbientDisplayName(); }
  bool AmbientDisplayAsDefault() const { return site_->AmbientDisplayAsDefault(); }
  Variant Extender(std::string_view name) const { return site_->GetExtender(name); }
  void SetExtender(std::string_view name, const Variant& v) { site_->SetExtender(name, v); }
  int ScreenTwipsPerPixelX() const { return site_->ScreenTwipsPerPixelX(); }
  int ScreenTwipsPerPixelY() const { return site_->ScreenTwipsPerPixelY(); }
  void PropertyChanged(std::string_view name) { site_->PropertyChanged(name); }
  std::optional<int> PopupMenu(std::span<const MenuItem> items) { return site_->PopupMenu(items); }
  void DoEvents() { site_->DoEvents(); }
  void Beep() { site_->Beep(); }
  std::string ClipboardGetText() { return site_->ClipboardGetText(); }
  void ClipboardSetText(std::string_view text) { site_->ClipboardSetText(text); }
  // The host's one tooltip window (see ControlSite); nothing without a site.
  void ShowTip(std::string_view text) {
    if (site_) site_->ShowTip(text);
  }
  void HideTip() {
    if (site_) site_->HideTip();
  }
  void SetTipsAllowed(bool allowed) {
    if (site_) site_->SetTipsAllowed(allowed);
  }

  // The window of the form that holds the control: the form's own, or for
  // a multiple-document child the one that was active when the control
  // was shown (`mdi_form_window`).
  int32_t HoldingFormWindow(int32_t mdi_form_window) const;
  // The first step of a focusable control's periodic check. When the
  // holding form has become the active window since the last check
  // (`form_active` remembers), the form's focused control is given XFocus
  // so that it shows its focus again (unless `restore_focus` is false);
  // returns true when the form has stopped being active, for the control
  // to drop its focus look. Does nothing while the form has no focused
  // control.
  bool FormStoppedBeingActive(bool& form_active, int32_t mdi_form_window,
                              bool restore_focus = true);

  // Raises an event: the container's generic observer first, then the
  // typed handlers. `values` are the control's own variables, so handlers
  // change by-reference arguments in place. Returns false when a handler
  // destroyed the control: the caller must return at once without touching
  // any member.
  template <typename... Args, typename... Values>
  [[nodiscard]] bool RaiseEvent(Event<Args...>& event, Values&... values);

  // Runs `draw`, the drawing calls of a face that begins by covering the
  // whole surface (a fill that does not blend with what was there). Such a
  // face shows only what its calls draw, so when they are exactly the
  // calls that drew the face still on the surface, their pixels are not
  // drawn again: a progress bar redrawn at the same percentage costs
  // little. Everything else the calls do (CurrentX, observers, measuring)
  // happens as always.
  template <typename Draw>
  void DrawFace(Draw&& draw);

 private:
  double UnitTwipsX() const;
  double UnitTwipsY() const;
  int ToPixelX(double units) const;
  int ToPixelY(double units) const;
  double FromPixelX(double pixels) const;
  double FromPixelY(double pixels) const;
  RasterOp Op() const;
  // Tells a container that watches drawing about a call; `call` makes
  // the record only then, since most containers do not watch.
  template <typename MakeCall>
  void Observe(MakeCall&& call) {
    if (site_ != nullptr && site_->ObservesDrawing()) site_->OnDraw(call());
  }
  bool RaiseToContainer(const EventInfo& info, std::span<EventArgument> arguments);
  class FaceScope;

  ControlSite* site_ = nullptr;
  int twips_per_pixel_x_ = 15;  // the screen's when the site was attached
  int twips_per_pixel_y_ = 15;
  std::shared_ptr<int> lifetime_ = std::make_shared<int>(0);
  float current_x_ = 0;
  float current_y_ = 0;
  int16_t scale_mode_ = scale::kTwips;
  int16_t draw_mode_ = 13;
  OLE_COLOR fore_color_ = syscolor::kButtonText;
  OLE_COLOR back_color_ = syscolor::kButtonFace;
  FontRef font_;
  bool auto_redraw_ = false;
  Surface* face_ = nullptr;                        // the recording while a face is drawn
  std::unique_ptr<FaceRecording> face_recording_;  // made at the first face
};

// Records while alive; brings the surface up to date when finished or
// left by an exception.
class UserControl::FaceScope {
 public:
  explicit FaceScope(UserControl& control);
  ~FaceScope();
  FaceScope(const FaceScope&) = delete;
  FaceScope& operator=(const FaceScope&) = delete;

 private:
  UserControl& control_;
  bool recording_ = false;
};

template <typename Draw>
void UserControl::DrawFace(Draw&& draw) {
  FaceScope scope(*this);
  std::forward<Draw>(draw)();
}

template <typename... Args, typename... Values>
bool UserControl::RaiseEvent(Event<Args...>& event, Values&... values) {
  static_assert(sizeof...(Args) == sizeof...(Values));
  std::weak_ptr<void> alive = lifetime_;
  const EventInfo& info = event.Info();
  if constexpr (sizeof...(Values) == 0) {
    if (!RaiseToContainer(info, {})) return false;
  } else {
    size_t i = 0;
    EventArgument arguments[] = {EventArgument{&info.params.at(i++), ArgRef(values)}...};
    if (!RaiseToContainer(info, arguments)) return false;
  }
  event.Emit(alive, values...);
  return !alive.expired();
}

}  // namespace kestu
