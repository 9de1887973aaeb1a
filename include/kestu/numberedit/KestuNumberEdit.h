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
#include "kestu/foundation/EditBox.h"
#include "kestu/foundation/Event.h"
#include "kestu/foundation/Integer.h"
#include "kestu/foundation/OleColor.h"
#include "kestu/foundation/UserControl.h"
#include "kestu/foundation/Variant.h"

namespace kestu {

class NumberText;

// How the number is written: "1.234,5" or "1,234.5".
enum eNumberFormat : int16_t { BrazilFormat = 0, USFormat = 1 };

class KestuNumberEdit : public EditBox {
 public:
  KestuNumberEdit();

  // The class's metadata: properties, methods, events and eNumberFormat.
  static ClassInfo& Info();
  const ClassInfo& Class() const override { return Info(); }

  // ---- Properties, in the order of the interface ----
  // Those without a setter here are set through the metadata: assigning
  // them redraws the box and then notifies, except Selection3D, AutoSelect
  // and Locked, which only notify.
  OLE_COLOR NegativeColor() const { return negative_color_; }
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
  void SetFont(FontRef font);
  void SetEnabled(bool on);
  // The "-" and "+" keys may change the sign.
  bool AllowNegative() const { return allow_negative_; }
  // Draw thousands separators.
  bool ThSeparator() const { return th_separator_; }
  // `eNumberFormat`; another value keeps the separators as they were.
  int16_t NumberFormat() const { return number_format_; }
  void SetNumberFormat(int16_t format);
  int32_t hwnd() const { return hWnd(); }
  // The bindable data value: the number as a variant.
  Variant dcDataValue() const;
  void SetdcDataValue(const Variant& value);

  // ---- Methods ----
  // Selects the whole number: the next edit replaces it.
  void SelectAll() override;

  // ---- Procedures the host calls ----
  void UserControl_Initialize() override;
  void UserControl_InitProperties() override;
  void UserControl_ReadProperties(PropertyBag& bag) override;
  void UserControl_Show() override;
  void UserControl_Paint() override { UserControl_Show(); }
  void UserControl_Resize() override { UserControl_Show(); }
  void UserControl_KeyDown(int16_t& key_code, int16_t& shift) override;
  void UserControl_KeyPress(int16_t& key_ascii) override;

  void Menu_Click(int index) override;

 private:
  NumberText Rules() const;
  std::string InvariantValue() const;
  void ClearIfSelected();
  void RemoveLastCharacter();
  bool AcceptDecimalKey();
  void AcceptDigit(char32_t digit);
  void SetSign(bool negative);
  void StoreCanonical(const std::string& canonical);
  void Cut();
  void Copy();
  void Paste();

  void Redraw() override { Draw(false); }
  void FocusArrived() override;
  void UpdateMenu() override;
  // The drawing routine; `normalise_first` replaces the stored text by its
  // normalised form before drawing.
  void Draw(bool normalise_first);
  OLE_COLOR TextColor() const;

  // Fields start blank: a loaded box reads its keys with these as defaults.
  OLE_COLOR negative_color_ = 0;
  std::u32string text_;
  int16_t int_max_length_ = 0;
  int16_t dec_max_length_ = 0;
  bool allow_negative_ = false;
  bool th_separator_ = false;
  int16_t number_format_ = 0;

  char32_t thousands_ = 0;
  char32_t decimal_ = 0;
  bool whole_selected_ = false;
  std::u32string text_at_focus_;
};

}  // namespace kestu
