#pragma once
// A form of the host: a top-level window with a caption, a size in twips, a
// font and a background, holding its controls in tab order. It remembers
// its active control (the one that has or last had its focus) and whether
// anything on it changed since it was loaded or saved.

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "kestu/foundation/OleColor.h"
#include "kestu/foundation/StdFont.h"
#include "kestu/foundation/Surface.h"
#include "kestu/foundation/Variant.h"
#include "kestu/host/OwnProperty.h"

namespace kestu {

class FormDesigner;
class HostedControl;

// The extender's `Align` values.
namespace align {
inline constexpr int16_t kNone = 0;
inline constexpr int16_t kTop = 1;
inline constexpr int16_t kBottom = 2;
inline constexpr int16_t kLeft = 3;
inline constexpr int16_t kRight = 4;
}  // namespace align

class Form {
 public:
  // A form of `width_twips` x `height_twips` whose pixels are
  // `twips_per_pixel_x` x `twips_per_pixel_y` twips.
  Form(std::string name, int32_t hwnd, int width_twips, int height_twips, int twips_per_pixel_x,
       int twips_per_pixel_y, FontRef font);
  ~Form();
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  const std::string& Name() const { return name_; }
  int32_t hWnd() const { return hwnd_; }

  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string caption) { caption_ = std::move(caption); }

  // Client size in twips. Resizing keeps docked controls docked.
  int WidthTwips() const { return width_twips_; }
  int HeightTwips() const { return height_twips_; }
  void Resize(int width_twips, int height_twips);

  int TwipsPerPixelX() const { return twips_per_pixel_x_; }
  int TwipsPerPixelY() const { return twips_per_pixel_y_; }
  int WidthPixels() const;
  int HeightPixels() const;

  // The client area on the screen, in pixels.
  PixelRect ScreenRect() const;
  void MoveOnScreen(int left, int top);

  // The form's font: the ambient font of its controls.
  const FontRef& Font() const { return font_; }
  void SetFont(FontRef font) { font_ = std::move(font); }

  OLE_COLOR BackColor() const { return back_color_; }
  void SetBackColor(OLE_COLOR color) { back_color_ = color; }

  // Every control of the form, those inside containers too, in tab order.
  const std::vector<std::unique_ptr<HostedControl>>& Controls() const { return controls_; }
  // The controls in the order they are drawn: those on the form in their
  // stacking order, back to front, each container followed by what it
  // holds, in the same way. A control inside a container is always drawn
  // above it; the tab order plays no part.
  const std::vector<HostedControl*>& PaintOrder() const;
  // The controls `container` holds (null: the form's own), back to front.
  std::vector<HostedControl*> ChildrenOf(const HostedControl* container) const;
  // Puts a control in front of the others of its container, or behind
  // them.
  void BringToFront(const HostedControl& control);
  void SendToBack(const HostedControl& control);
  // The innermost shown control under form pixel (x, y), the one in front
  // where they overlap; null when the pointer is over the form itself.
  HostedControl* ControlAt(int x, int y) const;
  // By name, ignoring case; null when there is none.
  HostedControl* FindControl(std::string_view name) const;
  // Appends a control last in the tab order and in front of the others.
  HostedControl& Add(std::unique_ptr<HostedControl> control);
  // Takes a control off the form and hands it back.
  std::unique_ptr<HostedControl> Remove(const HostedControl& control);

  int TabIndexOf(const HostedControl& control) const;
  // Moves a control to `index` in the tab order, the others closing up
  // behind it; an index past the end puts it last, a negative one is
  // error 380.
  void SetTabIndex(const HostedControl& control, int index);

  HostedControl* ActiveControl() const { return active_control_; }
  void SetActiveControl(HostedControl* control) { active_control_ = control; }

  // The designer the user's input on the form goes to, and whose marks
  // its picture shows; null for a form that runs.
  FormDesigner* Designer() const { return designer_; }
  void SetDesigner(FormDesigner* designer) { designer_ = designer; }
  bool Modified() const { return modified_; }
  void SetModified(bool modified) { modified_ = modified; }

  // The form's properties by name, for late-bound callers and form files:
  // Caption, Width and Height (twips), BackColor, Font and the read-only
  // Modified. PropertyName gives the name as the form spells it, or
  // nothing for a name it does not have (GetProperty and SetProperty raise
  // 438 for those, and 383 for assigning a read-only one).
  static std::span<const OwnProperty<Form>> Properties();
  static std::optional<std::string_view> PropertyName(std::string_view name);
  Variant GetProperty(std::string_view name) const;
  void SetProperty(std::string_view name, const Variant& value);

  // Places every docked control (extender `Align`) along its edge, of the
  // form or of the container it sits in, in tab order, each one taking
  // its strip from what the ones before it left.
  void DockControls();

 private:
  std::string name_;
  int32_t hwnd_;
  std::string caption_;
  int width_twips_;
  int height_twips_;
  int twips_per_pixel_x_;
  int twips_per_pixel_y_;
  int screen_left_ = 0;
  int screen_top_ = 0;
  FontRef font_;
  OLE_COLOR back_color_ = syscolor::kButtonFace;
  void DockWithin(const HostedControl* container, int width_twips, int height_twips);
  void Restacked() { paint_order_valid_ = false; }

  std::vector<std::unique_ptr<HostedControl>> controls_;
  std::vector<HostedControl*> stacking_;  // back to front, every control
  mutable std::vector<HostedControl*> paint_order_;
  mutable bool paint_order_valid_ = false;
  HostedControl* active_control_ = nullptr;
  FormDesigner* designer_ = nullptr;
  bool modified_ = false;
  bool docking_ = false;
};

}  // namespace kestu
