#pragma once
// A numeric edit box: one decimal number, edited like a calculator display
// (characters are added and removed only at the end), limited in integer
// and decimal digits, drawn with thousands separators, in one of two
// number formats. The number is kept as a canonical text; its value is
// always computed from that text.

#include <array>
#include <cstdint>
#include <string>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/ControlSite.h"
#include "kestu/foundation/Event.h"
#include "kestu/foundation/Integer.h"
#include "kestu/foundation/OleColor.h"
#include "kestu/foundation/UserControl.h"
#include "kestu/foundation/Variant.h"

namespace kestu {

class NumberText;

// How the number is written: "1.234,5" or "1,234.5".
enum eNumberFormat : int16_t { BrazilFormat = 0, USFormat = 1 };

class KestuNumberEdit : public UserControl {
 public:
  KestuNumberEdit();

  // The class's metadata: properties, methods, events and eNumberFormat.
  static ClassInfo& Info();
  const ClassInfo& Class() const override { return Info(); }

  // ---- Events, in the order of the interface ----
  Event<> Click;
  Event<> DblClick;
  // An accepted digit, Backspace or Delete changed the number.
  Event<> Changed;
  Event<int16_t&, int16_t&> KeyDown;                    // KeyCode, Shift
  Event<int16_t&> KeyPress;                             // KeyAscii
  Event<int16_t&, int16_t&> KeyUp;                      // KeyCode, Shift
  Event<int16_t&, int16_t&, float&, float&> MouseDown;  // Button, Shift, x, y
  Event<int16_t&, int16_t&, float&, float&> MouseMove;
  Event<int16_t&, int16_t&, float&, float&> MouseUp;

  // ---- Properties, in the order of the interface ----
  // Those without a setter here are set through the metadata: assigning
  // them redraws the box and then notifies, except Selection3D, AutoSelect
  // and Locked, which only notify.
  // A sunken 3D frame around the face.
  bool Border3D() const { return border_3d_; }
  // A shadow 5 pixels right of and below the face.
  bool Shadow() const { return shadow_; }
  OLE_COLOR ShadowColor() const { return shadow_color_; }
  // The face colour; hides the surface's own BackColor.
  OLE_COLOR BackColor() const { return back_color_; }
  // The colour of a positive number; hides the surface's own ForeColor.
  OLE_COLOR ForeColor() const { return fore_color_; }
  OLE_COLOR NegativeColor() const { return negative_color_; }
  OLE_COLOR LockedColor() const { return locked_color_; }
  OLE_COLOR DisabledColor() const { return disabled_color_; }
  // The stored text: the format's decimal separator, no thousands
  // separators. Set with "." as the point whatever the format.
  Variant Text() const;
  void SetText(const Variant& text);
  // The number. Reading it redraws the box and normalises its text.
  double Value();
  void SetValue(double value);
  // Most digits of the integer part (16 or more is kept as 15).
  int16_t IntMaxLength() const { return int_max_length_; }
  void SetIntMaxLength(int16_t length);
  // Number of decimal digits (6 or more is kept as 5).
  int16_t DecMaxLength() const { return dec_max_length_; }
  void SetDecMaxLength(int16_t length);
  // The font, shared by reference; hides the surface's own Font.
  FontRef Font() const { return font_; }
  void SetFont(FontRef font);
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool on);
  // A selected number is drawn as a raised plate instead of highlighted.
  bool Selection3D() const { return selection_3d_; }
  // Select the whole number when the box gets the focus.
  bool AutoSelect() const { return auto_select_; }
  // The "-" and "+" keys may change the sign.
  bool AllowNegative() const { return allow_negative_; }
  // Draw thousands separators.
  bool ThSeparator() const { return th_separator_; }
  // `eNumberFormat`; another value keeps the separators as they were.
  int16_t NumberFormat() const { return number_format_; }
  void SetNumberFormat(int16_t format);
  // Keys still reach the container but change nothing.
  bool Locked() const { return locked_; }
  int32_t hwnd() const { return hWnd(); }
  // The bindable data value: the number as a variant.
  Variant dcDataValue() const;
  void SetdcDataValue(const Variant& value);

  // ---- Methods ----
  // Selects the whole number: the next edit replaces it.
  void SelectAll();
  // Runs the box's got-focus routine and gives its window the focus.
  void XFocus();

  // ---- Procedures the host calls ----
  void UserControl_Initialize() override;
  void UserControl_InitProperties() override;
  void UserControl_ReadProperties(PropertyBag& bag) override;
  void UserControl_Show() override;
  void UserControl_Paint() override { UserControl_Show(); }
  void UserControl_Resize() override { UserControl_Show(); }
  void UserControl_Terminate() override;
  void UserControl_GotFocus() override { GotFocusRoutine(); }
  void UserControl_LostFocus() override { LostFocusRoutine(); }
  void UserControl_KeyDown(int16_t& key_code, int16_t& shift) override;
  void UserControl_KeyPress(int16_t& key_ascii) override;
  void UserControl_KeyUp(int16_t& key_code, int16_t& shift) override;
  void UserControl_MouseDown(int16_t& button, int16_t& shift, float& x, float& y) override;
  void UserControl_MouseMove(int16_t& button, int16_t& shift, float& x, float& y) override;
  void UserControl_MouseUp(int16_t& button, int16_t& shift, float& x, float& y) override;
  void UserControl_Click() override;
  void UserControl_DblClick() override;
  bool CanGetFocus() const override { return true; }
  void PeriodicCheck() override;
  void MenuItemChosen(int index) override { Menu_Click(index); }

  // The context menu's command `index` (0 cut, 1 copy, 2 paste, 3 delete,
  // 4 separator, 5 select all); other indexes do nothing.
  void Menu_Click(int index);

 private:
  enum MenuIndex { kCut = 0, kCopy = 1, kPaste = 2, kDelete = 3, kSelectAll = 5 };

  NumberText Rules() const;
  std::string InvariantValue() const;
  void ClearIfSelected();
  void RaiseChanged();
  void RemoveLastCharacter();
  bool AcceptDecimalKey();
  void AcceptDigit(char32_t digit);
  void SetSign(bool negative);
  void StoreCanonical(const std::string& canonical);
  void GotFocusRoutine();
  void LostFocusRoutine();
  void UpdateMenu();
  void Cut();
  void Copy();
  void Paste();

  // The drawing routine; `normalise_first` replaces the stored text by its
  // normalised form before drawing.
  void Draw(bool normalise_first);
  OLE_COLOR TextColor() const;
  void DrawBackground(float face_right, float face_bottom);
  void DrawBorder(float face_right, float face_bottom);
  void DrawSelectionPlate(float left, float top, float right, float bottom);
  void InvertSelection(float left, float top, float right, float bottom);
  void PlaceCaret(int x_px, int y_px);
  // In 64 bits: a box's size in pixels times twips per pixel may pass int.
  float PixelsX(int pixels) const { return static_cast<float>(int64_t{pixels} * pixel_x_.value()); }
  float PixelsY(int pixels) const { return static_cast<float>(int64_t{pixels} * pixel_y_.value()); }

  // Fields start blank: a loaded box reads its keys with these as defaults.
  bool border_3d_ = false;
  bool shadow_ = false;
  OLE_COLOR shadow_color_ = 0;
  OLE_COLOR back_color_ = 0;
  OLE_COLOR fore_color_ = 0;
  OLE_COLOR negative_color_ = 0;
  OLE_COLOR locked_color_ = 0;
  OLE_COLOR disabled_color_ = 0;
  std::u32string text_;
  int16_t int_max_length_ = 0;
  int16_t dec_max_length_ = 0;
  FontRef font_;
  bool enabled_ = false;
  bool selection_3d_ = false;
  bool auto_select_ = false;
  bool allow_negative_ = false;
  bool th_separator_ = false;
  int16_t number_format_ = 0;
  bool locked_ = false;

  char32_t thousands_ = 0;
  char32_t decimal_ = 0;
  bool whole_selected_ = false;
  std::u32string text_at_focus_;
  bool has_focus_ = false;
  Int16 pixel_x_ = 15;
  Int16 pixel_y_ = 15;
  int32_t form_window_ = 0;
  bool form_active_ = true;
  std::array<MenuItem, 6> menu_;
};

}  // namespace kestu
