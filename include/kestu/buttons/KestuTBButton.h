#pragma once
// The toolbar's picture-and-caption button. It shares the command button's
// properties, layout and drawing, but it never takes the focus, it clicks
// on every left release (Shift or not, inside or not), it raises Click
// before it draws itself up, and it can size itself to its picture.

#include "kestu/buttons/PictureButton.h"

namespace kestu {

class KestuTBButton : public PictureButton {
 public:
  KestuTBButton();

  // The class's metadata: the command button's properties with AutoSize
  // last, its three events, no methods.
  static ClassInfo& Info();
  const ClassInfo& Class() const override { return Info(); }

  // Sizes the button to 23 x 22 pixels (16 x 16 pictures) or 37 x 37
  // pixels (32 x 32 pictures) at the start of every redraw.
  bool AutoSize() const { return auto_size_; }

  void UserControl_KeyDown(int16_t& key_code, int16_t& shift) override;
  void UserControl_KeyUp(int16_t& key_code, int16_t& shift) override;
  void UserControl_MouseDown(int16_t& button, int16_t& shift, float& x, float& y) override;
  void UserControl_MouseUp(int16_t& button, int16_t& shift, float& x, float& y) override;

 protected:
  ButtonLook FramesLook() const override;
  void BeforeDrawing() override;

 private:
  bool auto_size_ = true;
};

}  // namespace kestu
