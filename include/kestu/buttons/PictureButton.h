#pragma once
// What the picture-and-caption buttons share: their properties, the layout
// pass that places the picture and the caption, the drawing routine, and
// the state machine that turns the pointer and the Space key into the
// pressed and hover looks, the tooltip and Click. Each button is a thin
// class over it that says how it differs (see `ButtonRules`).

#include <cstdint>
#include <string>
#include <vector>

#include "kestu/foundation/ButtonFace.h"
#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/Event.h"
#include "kestu/foundation/Integer.h"
#include "kestu/foundation/OleColor.h"
#include "kestu/foundation/StdFont.h"
#include "kestu/foundation/StdPicture.h"
#include "kestu/foundation/UserControl.h"

namespace kestu {

enum ccPictSize : int32_t { cc16x16 = 0, cc32x32 = 1 };
enum ccPictPosition : int32_t { ccTop = 0, ccBottom = 1, ccLeft = 2, ccRight = 3 };
enum ccStyle : int32_t { cc3D = 0, ccFlat = 1 };

// Where one button differs from the other: data, not copies of routines.
struct ButtonRules {
  // The button takes the focus: a press focuses it and Click needs the
  // focus. A button that never takes it counts as always focused, and its
  // periodic check leaves the form's focus alone.
  bool takes_focus = true;
  // The Style a new button starts with.
  int16_t creation_style = cc3D;
};

class PictureButton : public UserControl {
 public:
  // ---- Events, in the order of the interface ----
  Event<> Click;
  Event<> MouseEnter;
  Event<> MouseExit;

  // ---- Properties (set through the metadata) ----
  const std::string& Caption() const { return caption_; }
  void SetCaption(const std::string& caption);
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);
  // Hides the surface's own Font: a loaded font is kept here and reaches
  // the surface only when Font is assigned. Nothing until a new button
  // takes the container's or a saved one is loaded.
  FontRef Font() const { return font_; }
  void SetFont(FontRef font);
  int32_t hwnd() const { return hWnd(); }

  // The layout pass's results, in twips, as the drawing routine uses them.
  int16_t CaptionX() const { return caption_x_; }
  int16_t CaptionY() const { return caption_y_; }
  int16_t PictureX() const { return picture_x_; }
  int16_t PictureY() const { return picture_y_; }

  // ---- Procedures the host calls ----
  void UserControl_Initialize() override;
  void UserControl_ReadProperties(PropertyBag& bag) override;
  void UserControl_Resize() override { Redraw(); }
  void UserControl_Show() override;
  void UserControl_Paint() override { Redraw(); }
  void UserControl_AmbientChanged(const std::string& /*property_name*/) override { Redraw(); }
  void UserControl_AccessKeyPress(int16_t& key_ascii) override;
  void UserControl_KeyDown(int16_t& key_code, int16_t& shift) override;
  void UserControl_KeyUp(int16_t& key_code, int16_t& shift) override;
  void UserControl_MouseDown(int16_t& button, int16_t& shift, float& x, float& y) override;
  void UserControl_MouseMove(int16_t& button, int16_t& shift, float& x, float& y) override;
  void UserControl_MouseUp(int16_t& button, int16_t& shift, float& x, float& y) override;
  std::string AccessKeys() const override { return access_key_; }
  void PeriodicCheck() override;

  // The layout pass and the drawing routine.
  void Redraw();

 protected:
  explicit PictureButton(const ButtonRules& rules);

  // The properties both buttons have, in the order of the interface, and
  // the enumerations and events they use.
  static std::vector<PropertyInfo> SharedProperties();
  static std::vector<EnumInfo> SharedEnums();
  static std::vector<const EventInfo*> SharedEvents();

  // The look of the frames as this button draws them now.
  virtual ButtonLook FramesLook() const;
  // Called at the top of the drawing routine: the toolbar button sizes
  // itself to its picture here.
  virtual void BeforeDrawing() {}
  // The focus rectangle and the default look are the command button's.
  virtual bool DrawsFocus() const { return rules_.takes_focus; }

  void GotFocusRoutine();
  void LostFocusRoutine();
  bool IsDefault() const { return is_default_; }
  int16_t Style() const { return style_; }
  int16_t PictSize() const { return pict_size_; }
  Int16 PixelX() const { return pixel_x_; }
  Int16 PixelY() const { return pixel_y_; }

  // Whether the screen's cursor lies in the button's window.
  bool PointerInside() const;
  // Hides the tip, and lets the next quiet checks show it again.
  void WithdrawTip();
  void ReleaseHover();

  // The interaction state, which each button's handlers drive.
  bool has_focus_ = false;
  bool hover_ = false;
  bool pressed_ = false;
  bool mouse_held_ = false;
  int16_t draw_state_ = 0;  // 0 up, 1 down
  bool tip_shown_ = false;
  int16_t tip_ticks_ = 0;

 private:
  struct CaptionText;
  CaptionText MeasuredCaption();
  void Layout();
  void LayoutBoth(Int16 pw, Int16 ph, float tw, float th, float sw, float sh);
  void Draw();
  void DrawCaption(bool hot);
  void DrawPicture();
  void DimPicture();
  void DrawFocusRectangle();
  ButtonFrameColors FrameColors() const;
  const PictureRef* PictureForLook(bool& shifted_by_horizontal_pixel) const;
  // Raises Click when `clicks`, with tips forbidden while its handlers run;
  // false when a handler destroyed the button.
  [[nodiscard]] bool ClickWithoutTips(bool clicks);

  ButtonRules rules_;

  // Properties; their creation values are set by UserControl_Initialize.
  std::string caption_;
  bool enabled_ = true;
  FontRef font_;
  OLE_COLOR fore_color_ = 0;
  OLE_COLOR back_color_ = 0;
  OLE_COLOR focused_fr_color_ = 0;
  OLE_COLOR focused_bk_color_ = 0;  // kept and saved, never painted
  OLE_COLOR light_color_in_ = 0;
  OLE_COLOR shadow_color_in_ = 0;
  OLE_COLOR light_color_out_ = 0;
  OLE_COLOR shadow_color_out_ = 0;
  PictureRef picture_;
  PictureRef disabled_picture_;
  PictureRef down_picture_;
  PictureRef focused_picture_;
  int16_t pict_size_ = cc16x16;
  int16_t pict_position_ = ccLeft;
  int16_t margin_ = 0;
  int16_t distance_ = 0;
  bool focused_bold_ = false;
  bool focused_underline_ = false;
  bool active_border_ = true;
  int16_t style_ = cc3D;

  // The screen's pixel, taken once when the button is created.
  Int16 pixel_x_ = 15;
  Int16 pixel_y_ = 15;

  // The layout pass's outputs: kept between passes, since a pass that
  // places only the caption or only the picture leaves the other's alone.
  int16_t caption_x_ = 0;
  int16_t caption_y_ = 0;
  int16_t picture_x_ = 0;
  int16_t picture_y_ = 0;
  int16_t picture_px_ = 16;
  std::string access_key_;

  bool form_active_ = true;
  int32_t form_window_ = 0;
  bool is_default_ = false;
};

}  // namespace kestu
