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

  // The properties are set through the metadata; each assignment notifies
  // and draws the line again.
  // Colours of the top (or left) and bottom (or right) rows of a raised line.
  OLE_COLOR Light3DColor() const { return light_3d_color_; }
  OLE_COLOR Shadow3DColor() const { return shadow_3d_color_; }
  // `KST_LineStyle` and `KST_LineOrientation`, Longs held in 16 bits.
  int32_t LineStyle() const { return line_style_; }
  int32_t LineOrientation() const { return line_orientation_; }

  void UserControl_Initialize() override;
  void UserControl_Resize() override { Draw(); }
  void UserControl_Show() override { Draw(); }
  void UserControl_Paint() override { Draw(); }

 private:
  void Draw();
  void DrawVertical(OLE_COLOR first, OLE_COLOR second);
  void DrawHorizontal(OLE_COLOR first, OLE_COLOR second);

  // Values for a new line, and for a key a saved one lacks, are in its
  // metadata.
  OLE_COLOR light_3d_color_ = 0;
  OLE_COLOR shadow_3d_color_ = 0;
  int16_t line_style_ = 0;
  int16_t line_orientation_ = 0;
  Int16 pixel_width_ = 15;
  Int16 pixel_height_ = 15;
};

}  // namespace kestu
