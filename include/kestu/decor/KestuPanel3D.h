#pragma once
// A rectangular panel framed by two one-pixel bevels: an outer one on the
// control's edge and an inner one BorderWidth pixels further in, each
// raised, lowered or absent. It takes no input and raises no events.

#include <cstdint>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/Integer.h"
#include "kestu/foundation/OleColor.h"
#include "kestu/foundation/UserControl.h"

namespace kestu {

// Style of a bevel. Only 0 and 1 are tested when drawing: any other value
// draws as lowered.
enum KST_BorderStyle : int32_t { KSTPN_None = 0, KSTPN_Raised = 1, KSTPN_Lowered = 2 };

class KestuPanel3D : public UserControl {
 public:
  // The class's metadata: its properties and the KST_BorderStyle constants.
  static ClassInfo& Info();
  const ClassInfo& Class() const override { return Info(); }

  // The properties, set through the metadata (Light3DColor, Shadow3DColor,
  // BackColor, BorderOut, BorderIn, BorderWidth): each assignment notifies,
  // clears and draws both bevels.
  // The face colour, also that of an absent bevel. It hides the surface's
  // own BackColor, which the drawing routine sets from it.
  OLE_COLOR BackColor() const { return back_color_; }
  OLE_COLOR Light3DColor() const { return light_3d_color_; }
  OLE_COLOR Shadow3DColor() const { return shadow_3d_color_; }
  // Styles of the bevels (`KST_BorderStyle`), Longs held in 16 bits.
  int32_t BorderOut() const { return border_out_; }
  int32_t BorderIn() const { return border_in_; }
  // Distance of the inner bevel from the outer one, in pixels. Not bounded:
  // a width whose twips overflow 16 bits is error 6 when the panel draws.
  int16_t BorderWidth() const { return border_width_; }

  void UserControl_Initialize() override;
  void UserControl_Resize() override { Draw(); }
  void UserControl_Show() override { Draw(); }
  void UserControl_Paint() override { Draw(); }

 private:
  void Draw();
  OLE_COLOR TopLeftColor(int16_t style) const;
  OLE_COLOR BottomRightColor(int16_t style) const;

  // Values for a new panel, and for a key a saved one lacks, are in its
  // metadata.
  OLE_COLOR back_color_ = 0;
  OLE_COLOR light_3d_color_ = 0;
  OLE_COLOR shadow_3d_color_ = 0;
  int16_t border_out_ = 0;
  int16_t border_in_ = 0;
  int16_t border_width_ = 0;
  Int16 pixel_width_ = 15;
  Int16 pixel_height_ = 15;
};

}  // namespace kestu
