#pragma once
// What the two edit boxes share: the frame (Border3D, Shadow in
// ShadowColor), the face, the selection's two looks, the caret, the focus
// routines, the periodic check of the form's activation, the six-item
// context menu and the nine events. Each box keeps its own text, keys and
// drawing of the text, and declares its properties in its own metadata.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "kestu/foundation/Event.h"
#include "kestu/foundation/Integer.h"
#include "kestu/foundation/OleColor.h"
#include "kestu/foundation/StdFont.h"
#include "kestu/foundation/UserControl.h"

namespace kestu {

// The descriptions of an edit box's nine events: one set per class, for
// their help texts name the box.
struct EditBoxEvents {
  EventInfo click, dbl_click, changed, key_down, key_press, key_up, mouse_down, mouse_move,
      mouse_up;
  // The nine events; only what Changed says differs from box to box.
  static EditBoxEvents With(std::string changed_help);
  // In the order of the interface.
  std::vector<const EventInfo*> InOrder() const;
};

class EditBox : public UserControl {
 public:
  // ---- Events, in the order of the interface ----
  Event<> Click;
  Event<> DblClick;
  // An edit by the user changed the text.
  Event<> Changed;
  Event<int16_t&, int16_t&> KeyDown;                    // KeyCode, Shift
  Event<int16_t&> KeyPress;                             // KeyAscii
  Event<int16_t&, int16_t&> KeyUp;                      // KeyCode, Shift
  Event<int16_t&, int16_t&, float&, float&> MouseDown;  // Button, Shift, x, y
  Event<int16_t&, int16_t&, float&, float&> MouseMove;
  Event<int16_t&, int16_t&, float&, float&> MouseUp;

  // ---- What both boxes have; set through each box's metadata ----
  // A sunken 3D frame around the face, else a flat one.
  bool Border3D() const { return border_3d_; }
  // A shadow 5 pixels right of and below the face.
  bool Shadow() const { return shadow_; }
  OLE_COLOR ShadowColor() const { return shadow_color_; }
  // The face colour; hides the surface's own BackColor.
  OLE_COLOR BackColor() const { return back_color_; }
  // The text's colour; hides the surface's own ForeColor.
  OLE_COLOR ForeColor() const { return fore_color_; }
  OLE_COLOR LockedColor() const { return locked_color_; }
  OLE_COLOR DisabledColor() const { return disabled_color_; }
  // The font, shared by reference; hides the surface's own Font.
  FontRef Font() const { return font_; }
  bool Enabled() const { return enabled_; }
  // A selection is drawn as a raised plate instead of highlighted.
  bool Selection3D() const { return selection_3d_; }
  // Select the whole text when the box gets the focus.
  bool AutoSelect() const { return auto_select_; }
  // Keys still reach the container but change nothing.
  bool Locked() const { return locked_; }

  // Runs the box's got-focus routine and gives its window the focus.
  void XFocus();
  virtual void SelectAll() = 0;
  // The context menu's command `index` (0 cut, 1 copy, 2 paste, 3 delete,
  // 4 separator, 5 select all); other indexes do nothing.
  virtual void Menu_Click(int index) = 0;

  // ---- Procedures the host calls ----
  void UserControl_Terminate() override;
  void UserControl_GotFocus() override { GotFocusRoutine(); }
  void UserControl_LostFocus() override { LostFocusRoutine(); }
  void UserControl_KeyUp(int16_t& key_code, int16_t& shift) override;
  void UserControl_MouseDown(int16_t& button, int16_t& shift, float& x, float& y) override;
  void UserControl_MouseMove(int16_t& button, int16_t& shift, float& x, float& y) override;
  void UserControl_MouseUp(int16_t& button, int16_t& shift, float& x, float& y) override;
  void UserControl_Click() override;
  void UserControl_DblClick() override;
  bool CanGetFocus() const override { return true; }
  void PeriodicCheck() override;
  void MenuItemChosen(int index) override { Menu_Click(index); }

 protected:
  explicit EditBox(const EditBoxEvents& events);

  enum MenuIndex { kCut = 0, kCopy = 1, kPaste = 2, kDelete = 3, kSelectAll = 5 };

  // Draws the box as it stands.
  virtual void Redraw() = 0;
  // After the focus arrived and the box was drawn with it.
  virtual void FocusArrived() {}
  // After a double-click was raised, when the box survived it.
  virtual void DoubleClicked() {
    SelectAll();
    Redraw();
  }
  // Enables the menu's items by the selection and the clipboard.
  virtual void UpdateMenu() = 0;
  virtual void LostFocusRoutine();
  void GotFocusRoutine();
  // Raises Changed between two yields, as an edit by the user does.
  void RaiseChanged();
  // Takes the screen's pixel size, once, when the box is created.
  void CapturePixelSize();

  // The face in whole pixels, so that the face, the text and the caret
  // line up: the box less its shadow, right and bottom inclusive.
  struct Face {
    int right_px;
    int bottom_px;
  };
  // Clears the box, draws the shadow and the face, and gives the face.
  Face DrawBackground();
  void DrawBorder(const Face& face);
  void DrawSelectionPlate(float left, float top, float right, float bottom);
  void InvertSelection(float left, float top, float right, float bottom);
  void PlaceCaret(int x_px, int y_px);
  int ToPixelsX(float twips) const;
  int ToPixelsY(float twips) const;
  // In 64 bits: a box's size in pixels times twips per pixel may pass int.
  float PixelsX(int pixels) const { return static_cast<float>(int64_t{pixels} * pixel_x_.value()); }
  float PixelsY(int pixels) const { return static_cast<float>(int64_t{pixels} * pixel_y_.value()); }

  // Fields start blank: a loaded box reads its keys with these as defaults.
  bool border_3d_ = false;
  bool shadow_ = false;
  OLE_COLOR shadow_color_ = 0;
  OLE_COLOR back_color_ = 0;
  OLE_COLOR fore_color_ = 0;
  OLE_COLOR locked_color_ = 0;
  OLE_COLOR disabled_color_ = 0;
  FontRef font_;
  bool enabled_ = false;
  bool selection_3d_ = false;
  bool auto_select_ = false;
  bool locked_ = false;

  bool has_focus_ = false;
  Int16 pixel_x_ = 15;
  Int16 pixel_y_ = 15;
  int32_t form_window_ = 0;
  bool form_active_ = true;
  std::array<MenuItem, 6> menu_;
};

}  // namespace kestu
