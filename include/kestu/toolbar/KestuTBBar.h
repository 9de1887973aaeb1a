#pragma once
// The toolbar's strip: a one-pixel raised frame around a flat face, with
// one or two raised grip lines at its left end. It holds the toolbar's
// buttons and separators (the host places them inside it), sizes its
// height to a row of 16 x 16 or 32 x 32 buttons, docks to the top of its
// form when first placed, and reports the pointer over the grip apart from
// the pointer over the rest of the bar.

#include <cstdint>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/Event.h"
#include "kestu/foundation/Integer.h"
#include "kestu/foundation/OleColor.h"
#include "kestu/foundation/UserControl.h"

namespace kestu {

// The bar's automatic height. Any other non-zero value sizes as
// ccBarTo32x32.
enum ccSizeBar : int32_t { ccNone = 0, ccBarTo16x16 = 1, ccBarTo32x32 = 2 };

class KestuTBBar : public UserControl {
 public:
  KestuTBBar();

  static ClassInfo& Info();
  const ClassInfo& Class() const override { return Info(); }

  // ---- Events, in the order of the interface ----
  Event<int16_t> LeftLinesClick;                    // Button
  Event<int16_t, float, float> LeftLinesMouseMove;  // Button, x, y; Button 5 ends a grip drag
  Event<int16_t> Click;                             // Button
  Event<> DblClick;
  Event<int16_t, float, float> MouseMove;     // Button, x, y
  Event<int16_t&, float&, float&> MouseDown;  // Button, x, y
  Event<int16_t&, float&, float&> MouseUp;    // Button, x, y
  Event<> Resize;

  // ---- Properties, set through the metadata: each assignment notifies,
  // then clears and draws the bar again and raises Resize ----
  OLE_COLOR Light3DColor() const { return light_3d_color_; }
  OLE_COLOR Shadow3DColor() const { return shadow_3d_color_; }
  OLE_COLOR BackColor() const { return back_color_; }
  bool ShowLeftLines() const { return show_left_lines_; }
  int32_t AutoHeight() const { return auto_height_; }  // ccSizeBar
  bool ShowTwoLeftLines() const { return show_two_left_lines_; }

  // The button that, held on the grip, ends a drag when released.
  static constexpr int16_t kGripDragEnded = 5;

  void UserControl_Initialize() override;
  void UserControl_InitProperties() override;
  void UserControl_ReadProperties(PropertyBag& bag) override;
  void UserControl_Resize() override { ResizeRoutine(); }
  void UserControl_Show() override { Draw(); }
  void UserControl_MouseDown(int16_t& button, int16_t& shift, float& x, float& y) override;
  void UserControl_MouseMove(int16_t& button, int16_t& shift, float& x, float& y) override;
  void UserControl_MouseUp(int16_t& button, int16_t& shift, float& x, float& y) override;
  void UserControl_DblClick() override;

 private:
  void ResizeRoutine();
  void Draw();
  void SizeToRow();
  void DrawGrip();
  bool InGrip(float x) const;

  // Values for a new bar, and for a key a saved one lacks, are in its
  // metadata.
  OLE_COLOR light_3d_color_ = 0;
  OLE_COLOR shadow_3d_color_ = 0;
  OLE_COLOR back_color_ = 0;
  bool show_left_lines_ = true;
  int16_t auto_height_ = ccBarTo16x16;
  bool show_two_left_lines_ = true;
  bool grip_pressed_ = false;
  Int16 pixel_width_ = 15;
  Int16 pixel_height_ = 15;
};

}  // namespace kestu
