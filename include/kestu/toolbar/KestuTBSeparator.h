#pragma once
// A thin etched vertical line between toolbar buttons: two one-pixel lines,
// shadow then light. It keeps its own width at 2 pixels and can size its
// height to a row of 16 x 16 or 32 x 32 buttons. It takes no input and
// raises no events.

#include <cstdint>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/Integer.h"
#include "kestu/foundation/OleColor.h"
#include "kestu/foundation/UserControl.h"

namespace kestu {

class KestuTBSeparator : public UserControl {
 public:
  static ClassInfo& Info();
  const ClassInfo& Class() const override { return Info(); }

  // The properties, set through the metadata; each assignment notifies and
  // runs the drawing routine.
  OLE_COLOR Light3DColor() const { return light_3d_color_; }    // the right line
  OLE_COLOR Shadow3DColor() const { return shadow_3d_color_; }  // the left line
  OLE_COLOR BackColor() const { return back_color_; }
  // 1: 22 pixels high, 2: 37 pixels (a button row, 4 pixels shorter than
  // the bar); any other value leaves the height alone.
  int16_t AutoHeight() const { return auto_height_; }

  void UserControl_Initialize() override;
  void UserControl_ReadProperties(PropertyBag& bag) override;
  void UserControl_Resize() override { Draw(); }
  void UserControl_Show() override { Draw(); }

 private:
  void Draw();

  // Values for a new separator, and for a key a saved one lacks, are in
  // its metadata.
  OLE_COLOR light_3d_color_ = 0;
  OLE_COLOR shadow_3d_color_ = 0;
  OLE_COLOR back_color_ = 0;
  int16_t auto_height_ = 1;
  Int16 pixel_width_ = 15;
  Int16 pixel_height_ = 15;
};

}  // namespace kestu
