#pragma once
// What the container gives each control: its surface, the screen, the
// ambient and extender properties, and the host services (events, menus,
// clipboard, beep, yield, the shared tooltip). The host implements it; a control reaches it
// only through UserControl's members.

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "kestu/foundation/Event.h"
#include "kestu/foundation/OleColor.h"
#include "kestu/foundation/StdFont.h"
#include "kestu/foundation/Surface.h"
#include "kestu/foundation/Variant.h"

namespace kestu {

class UserControl;

// One item of a control's popup menu; an empty caption "-" is a separator.
struct MenuItem {
  std::string caption;
  bool enabled = true;
  bool IsSeparator() const { return caption == "-"; }
};

// One drawing call as a control made it, coordinates as passed (in the
// control's scale) and colours as stored. Observers (the script host's
// `trace draw`) see these; nothing is formatted unless someone listens.
struct DrawCall {
  enum class Kind {
    Cls,
    Line,
    Box,
    FilledBox,
    Print,
    PSet,
    PaintPicture,
    DrawText,
    DrawFocusRect,
    DrawMode,
    ScaleMode,
    Refresh,
  };
  Kind kind = Kind::Cls;
  double x1 = 0, y1 = 0, x2 = 0, y2 = 0;  // points; PaintPicture: x1,y1 at, x2,y2 size
  OLE_COLOR color = 0;
  std::string text;
  int picture_width = 0, picture_height = 0;  // pixels
  bool scaled = false;                        // PaintPicture given a size
  PixelRect rect;                             // DrawText, DrawFocusRect (pixels)
  int32_t flags = 0;                          // DrawText
  int value = 0;                              // DrawMode, ScaleMode
};

// One control of a form, as the form's tab order lists it.
struct FormMember {
  UserControl* control = nullptr;
  UserControl* container = nullptr;  // the control that holds it; null: the form itself
  bool can_take_focus = false;       // shown, enabled and willing, as Tab asks
};

class ControlSite {
 public:
  virtual ~ControlSite() = default;

  virtual Surface& GetSurface() = 0;

  // Screen.TwipsPerPixelX / Y at this moment.
  virtual int ScreenTwipsPerPixelX() const = 0;
  virtual int ScreenTwipsPerPixelY() const = 0;

  // Ambient properties. HasAmbient is false for a container that offers
  // no ambient object.
  virtual bool HasAmbient() const { return true; }
  virtual bool AmbientUserMode() const = 0;
  virtual FontRef AmbientFont() const = 0;
  virtual std::string AmbientDisplayName() const = 0;
  virtual bool AmbientDisplayAsDefault() const = 0;

  // Extender properties by name ("Name", "Left", "Top", "Width", "Height",
  // "Visible", "TabIndex", "ToolTipText", "Align"); an unknown name is
  // error 438.
  virtual Variant GetExtender(std::string_view name) const = 0;
  virtual void SetExtender(std::string_view name, const Variant& value) = 0;

  // The control's extent in twips, and a request to change it (the host
  // runs UserControl_Resize when the size really changes).
  virtual int WidthTwips() const = 0;
  virtual int HeightTwips() const = 0;
  virtual void RequestSize(int width_twips, int height_twips) = 0;

  virtual void PropertyChanged(std::string_view name) = 0;
  // The generic observer: every event of the control, before its typed
  // handlers. It may assign by-reference arguments.
  virtual void OnEvent(UserControl& control, const EventInfo& event,
                       std::span<EventArgument> arguments) = 0;
  // True when someone observes the control's drawing calls.
  virtual bool ObservesDrawing() const { return false; }
  virtual void OnDraw(const DrawCall& /*call*/) {}
  // The surface's drawing is complete for now: show it.
  virtual void Refresh() = 0;

  // Shows a popup menu at the mouse position; the chosen item's index, or
  // nothing when dismissed.
  virtual std::optional<int> PopupMenu(std::span<const MenuItem> items) = 0;
  virtual void DoEvents() = 0;
  virtual void Beep() = 0;
  virtual std::string ClipboardGetText() = 0;
  virtual void ClipboardSetText(std::string_view text) = 0;

  // The shared tooltip window, one per host. ShowTip sizes it to `text`
  // plus two pixels on each side and places it by the mouse cursor; while
  // tips are not allowed it shows nothing. HideTip unloads it (nothing
  // happens when it is not shown).
  virtual void ShowTip(std::string_view /*text*/) {}
  virtual void HideTip() {}
  virtual void SetTipsAllowed(bool /*allowed*/) {}

  virtual int32_t hWnd() const = 0;
  virtual int32_t hDC() const = 0;

  // The holding form: its window, whether it is a multiple-document
  // child, and the control that has its focus (null when none).
  virtual int32_t FormHwnd() const = 0;
  virtual bool FormIsMdiChild() const { return false; }
  virtual UserControl* FormActiveControl() const = 0;
  // Every control of the holding form in tab order, this one included:
  // what option buttons need to find their group and a caption's access
  // key the control after it. Empty from a container that lists none.
  virtual std::vector<FormMember> FormControls() const { return {}; }
};

}  // namespace kestu
