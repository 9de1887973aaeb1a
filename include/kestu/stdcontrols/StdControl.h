#pragma once
// What the standard dialog controls (label, check box, option button,
// frame) share: Font, Enabled, BackColor, ForeColor and Caption; the
// caption drawn through the system text call (its "&" underlines the
// access key), engraved when disabled; the dotted focus rectangle; a
// pixel-map painter for the small round and ticked shapes; and the walk
// over the form's tab order that access keys and option groups need.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/KestuControlsAPI.h"
#include "kestu/foundation/OleColor.h"
#include "kestu/foundation/StdFont.h"
#include "kestu/foundation/UserControl.h"

namespace kestu {

class StdControl : public UserControl {
 public:
  const std::string& Caption() const { return caption_; }
  void SetCaption(const std::string& caption);
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);
  // Hides the surface's own Font so that the property is the one saved:
  // Nothing for a control loaded without one, which draws in the surface's.
  FontRef Font() const { return font_; }
  void SetFont(FontRef font);

  // A new control takes the container's font and its own name as caption.
  void UserControl_InitProperties() override;
  void UserControl_ReadProperties(PropertyBag& bag) override;
  void UserControl_Resize() override { Redraw(); }
  void UserControl_Show() override { Redraw(); }
  void UserControl_Paint() override { Redraw(); }
  std::string AccessKeys() const override;

  // Draws the whole control in pixels.
  void Redraw();

 protected:
  // Font, Enabled, BackColor and ForeColor, then Caption when the class
  // has one, in the order of the interface.
  static std::vector<PropertyInfo> SharedProperties(bool with_caption);
  // Error 380 unless `value` lies from `low` to `high`: the enumerated
  // properties refuse what they cannot draw, when assigned and when loaded.
  static void CheckRange(int32_t value, int32_t low, int32_t high);
  static std::function<void(const Variant&)> RangeCheck(int32_t low, int32_t high);
  // Makes `color` the value of the colour property `name` for a new
  // control and for a bag without it.
  static void DefaultColor(std::vector<PropertyInfo>& properties, std::string_view name,
                           OLE_COLOR color);

  virtual void Draw() = 0;

  // Pixels of the control's surface, as Draw works in them.
  int PixelWidth() const;
  int PixelHeight() const;

  // The caption's extent for `flags` laid out in `area`.
  RECT MeasureCaption(RECT area, int32_t flags);
  // The caption in ForeColor, or engraved when disabled: a highlight copy
  // one pixel down and right under a shadow copy.
  void DrawCaption(RECT area, int32_t flags);
  // The dotted focus rectangle one pixel outside `text`, kept inside the
  // control.
  void DrawFocusAround(const RECT& text);
  // Paints `rows` (one string per pixel row) from (left, top): each
  // character stands for the colour `palette` gives it, a space for none.
  // A run of one colour is one line.
  template <typename Palette>
  void DrawPixelMap(int left, int top, const std::vector<std::string_view>& rows,
                    Palette&& palette) {
    for (size_t y = 0; y < rows.size(); ++y) {
      const std::string_view row = rows[y];
      for (size_t x = 0; x < row.size();) {
        size_t end = x;
        while (end < row.size() && row[end] == row[x]) ++end;
        if (row[x] != ' ') {
          const auto row_y = static_cast<float>(top + static_cast<int>(y));
          Line(static_cast<float>(left + static_cast<int>(x)), row_y,
               static_cast<float>(left + static_cast<int>(end)), row_y, palette(row[x]));
        }
        x = end;
      }
    }
  }

  // The form's controls in tab order (see ControlSite::FormControls).
  std::vector<FormMember> FormControls() const;
  // Gives the focus to the first control after this one in tab order that
  // can take it, as a label's access key does. False when there is none.
  bool FocusNextAfterSelf();
  // Gives the focus to `member`'s control and returns true when it can
  // take it.
  static bool FocusMember(const FormMember& member);
  // Whether `member` lies inside `container`, at any depth.
  static bool IsInside(const FormMember& member, const UserControl* container,
                       const std::vector<FormMember>& members);

  std::string caption_;
  bool enabled_ = true;
  FontRef font_;
  OLE_COLOR back_color_ = syscolor::kButtonFace;
  OLE_COLOR fore_color_ = syscolor::kButtonText;
};

}  // namespace kestu
