#pragma once
// A two-pixel-thick etched line, horizontal or vertical, raised or
// lowered. It forces its own thickness to 2 pixels and fills its length
// with two parallel one-pixel lines. It takes no input and raises no
// events.

#include <cstdint>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/Integer.h"
#include "kestu/foundation/OleColor.h"
#include "kestu/foundation/UserControl.h"

namespace kestu {

// Look of the line. Only 1 is tested: any other value draws lowered.
enum KST_LineStyle : int32_t { LnRaised = 1, LnLowered = 2 };
// Direction of the line. Only 1 is tested: any other value draws vertical.
enum KST_LineOrientation : int32_t { LnVertical = 0, LnHorizontal = 1 };

class KestuLine3D : public UserControl {
 public:
  // The class's metadata: its properties and its two enumerations.
  static ClassInfo& Info();
  const ClassInfo& Class() const override { return Info(); }

  // Colour of the top (or left) row of a raised line.
  OLE_COLOR Light3DColor() const { return light_3d_color_; }
  void SetLight3DColor(OLE_COLOR color);
  // Colour of the bottom (or right) row of a raised line.
  OLE_COLOR Shadow3DColor() const { return shadow_3d_color_; }
  void SetShadow3DColor(OLE_COLOR color);
  // `KST_LineStyle`; error 6 outside 16 bits.
  int32_t LineStyle() const { return line_style_; }
  void SetLineStyle(int32_t style);
  // `KST_LineOrientation`; error 6 outside 16 bits.
  int32_t LineOrientation() const { return line_orientation_; }
  void SetLineOrientation(int32_t orientation);

  void UserControl_Initialize() override;
  void UserControl_ReadProperties(PropertyBag& bag) override;
  void UserControl_WriteProperties(PropertyBag& bag) override;
  void UserControl_Resize() override { Draw(); }
  void UserControl_Show() override { Draw(); }
  void UserControl_Paint() override { Draw(); }

 private:
  void Draw();
  void DrawVertical(OLE_COLOR first, OLE_COLOR second);
  void DrawHorizontal(OLE_COLOR first, OLE_COLOR second);

  OLE_COLOR light_3d_color_ = syscolor::k3DHighlight;
  OLE_COLOR shadow_3d_color_ = syscolor::kButtonShadow;
  int16_t line_style_ = LnRaised;
  int16_t line_orientation_ = LnHorizontal;
  Int16 pixel_width_ = 15;
  Int16 pixel_height_ = 15;
};

}  // namespace kestu
