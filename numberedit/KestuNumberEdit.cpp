#include "kestu/numberedit/KestuNumberEdit.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

#include "kestu/foundation/Bevel.h"
#include "kestu/foundation/KestuControlsAPI.h"
#include "kestu/foundation/Keys.h"
#include "kestu/foundation/PropertyBag.h"
#include "kestu/foundation/Text.h"
#include "numberedit/NumberText.h"

namespace kestu {

namespace {

std::u32string_view Trimmed(std::u32string_view text) {
  while (!text.empty() && text.front() == U' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == U' ') text.remove_suffix(1);
  return text;
}

bool StartsWithMinus(std::u32string_view text) {
  return !text.empty() && text.front() == U'-';
}

// A pasted character as the key code the host would pass: its UTF-16
// units, each as a 16-bit integer.
std::vector<int16_t> KeyCodesOf(char32_t c) {
  if (c <= 0xFFFF) return {static_cast<int16_t>(static_cast<uint16_t>(c))};
  const char32_t v = c - 0x10000;
  return {static_cast<int16_t>(static_cast<uint16_t>(0xD800 + (v >> 10))),
          static_cast<int16_t>(static_cast<uint16_t>(0xDC00 + (v & 0x3FF)))};
}

}  // namespace

NumberText KestuNumberEdit::Rules() const {
  return NumberText(thousands_, decimal_, dec_max_length_);
}

// ---- Properties ----

Variant KestuNumberEdit::Text() const {
  return Variant(EncodeUtf8(text_));
}

void KestuNumberEdit::StoreCanonical(const std::string& canonical) {
  text_ = Rules().FromCanonical(DecodeUtf8(canonical));
}

void KestuNumberEdit::SetText(const Variant& text) {
  StoreCanonical(text.ToString());
  PropertyChanged("Text");
  UserControl_Show();
}

double KestuNumberEdit::Value() {
  // Reading the value redraws the box and so normalises its text; callers
  // have always seen this side effect, so it stays.
  UserControl_Show();
  return Rules().ValueOf(text_);
}

void KestuNumberEdit::SetValue(double value) {
  text_ = Rules().FromCanonical(NumberText::Canonical(value));
  PropertyChanged("Text");
  UserControl_Show();
}

void KestuNumberEdit::SetIntMaxLength(int16_t length) {
  int_max_length_ = length >= 16 ? int16_t{15} : length;
  UserControl_Show();
  PropertyChanged("IntMaxLength");
}

void KestuNumberEdit::SetDecMaxLength(int16_t length) {
  // The text is not re-padded here; the redraw's normalisation pads it.
  dec_max_length_ = length >= 6 ? int16_t{5} : length;
  UserControl_Show();
  PropertyChanged("DecMaxLength");
}

void KestuNumberEdit::SetFont(FontRef font) {
  font_ = std::move(font);
  UserControl::SetFont(font_);
  UserControl_Show();
  PropertyChanged("Font");
}

void KestuNumberEdit::SetEnabled(bool on) {
  enabled_ = on;
  KestuControlsAPI::EnableWindow(hWnd(), on ? 1 : 0);
  LostFocusRoutine();
  UserControl_Show();
  PropertyChanged("Enabled");
}

void KestuNumberEdit::SetNumberFormat(int16_t format) {
  // The stored text keeps the separator it was typed with until it is set
  // again: "12,5" reads as 12 in the other format. Deliberate.
  number_format_ = format;
  NumberText::ApplyFormat(number_format_, thousands_, decimal_);
  UserControl_Show();
  PropertyChanged("NumberFormat");
}

Variant KestuNumberEdit::dcDataValue() const {
  return Variant(Rules().ValueOf(text_));
}

void KestuNumberEdit::SetdcDataValue(const Variant& value) {
  StoreCanonical(value.ToString());
  UserControl_Show();
}

// ---- Methods ----

void KestuNumberEdit::SelectAll() {
  whole_selected_ = true;
  Draw(false);
}

// ---- Lifecycle ----

void KestuNumberEdit::UserControl_Initialize() {
  CapturePixelSize();
  whole_selected_ = false;
  form_active_ = true;
}

void KestuNumberEdit::UserControl_InitProperties() {
  UserControl::UserControl_InitProperties();
  font_ = AmbientFont();
  if (font_) UserControl::SetFont(font_);
  NumberText::ApplyFormat(number_format_, thousands_, decimal_);
}

void KestuNumberEdit::UserControl_ReadProperties(PropertyBag& bag) {
  UserControl::UserControl_ReadProperties(bag);
  // The text is stored as read: the redraw below normalises it.
  KestuControlsAPI::EnableWindow(hWnd(), enabled_ ? 1 : 0);
  if (font_) UserControl::SetFont(font_);
  NumberText::ApplyFormat(number_format_, thousands_, decimal_);
  UserControl_Show();
}

void KestuNumberEdit::UserControl_Show() {
  form_window_ = KestuControlsAPI::GetActiveWindow();
  if (AmbientUserMode()) {
    Draw(true);
    return;
  }
  // At design time the box shows how wide its largest number is, and
  // keeps its own text untouched.
  std::u32string sample = allow_negative_ ? U"-" : U"";
  sample.append(static_cast<size_t>(std::max<int16_t>(int_max_length_, 0)), U'9');
  if (dec_max_length_ > 0) {
    sample += Rules().DecimalSeparator();
    sample.append(static_cast<size_t>(dec_max_length_), U'9');
  }
  std::swap(text_, sample);
  try {
    Draw(false);
  } catch (...) {
    std::swap(text_, sample);
    throw;
  }
  std::swap(text_, sample);
}

void KestuNumberEdit::FocusArrived() {
  text_at_focus_ = text_;
  if (auto_select_) SelectAll();
}

// ---- Keyboard ----

void KestuNumberEdit::ClearIfSelected() {
  if (!whole_selected_) return;
  text_.clear();
  whole_selected_ = false;
}

void KestuNumberEdit::UserControl_KeyDown(int16_t& key_code, int16_t& shift) {
  if (!RaiseEvent(KeyDown, key_code, shift)) return;
  if (locked_) return;
  if (shift == shift::kCtrl && key_code == key::kInsert) {
    // The menu item's state is the one its last showing left.
    if (menu_[kCopy].enabled) Menu_Click(kCopy);
    return;
  }
  if (shift != 0 && shift != shift::kShift) return;
  if ((key_code == key::kHome || key_code == key::kEnd) && shift == shift::kShift) {
    SelectAll();
  } else if (key_code == key::kInsert) {
    if (shift == shift::kShift && menu_[kPaste].enabled) Menu_Click(kPaste);
  } else if (key_code == key::kDelete || key_code == key::kBackspace) {
    RemoveLastCharacter();
  } else if (key_code == key::kHome || key_code == key::kEnd || key_code == key::kLeft ||
             key_code == key::kRight || key_code == key::kUp || key_code == key::kDown) {
    whole_selected_ = false;
    Draw(false);
  }
}

void KestuNumberEdit::RemoveLastCharacter() {
  // Both Delete and Backspace take the last character, wherever the user
  // believes the caret to be: editing is calculator-style.
  PropertyChanged("dcDataValue");
  ClearIfSelected();
  if (NumberText::Length(text_) >= 2) {
    text_.pop_back();
  } else {
    text_.clear();
  }
  Draw(false);
  RaiseChanged();
}

void KestuNumberEdit::UserControl_KeyPress(int16_t& key_ascii) {
  if (!RaiseEvent(KeyPress, key_ascii)) return;
  if (locked_) return;
  const auto key = static_cast<char32_t>(static_cast<uint16_t>(key_ascii));
  switch (key_ascii) {
    case key::kEscape:
      // Back to the text at focus; no Changed, by design of the box.
      text_ = text_at_focus_;
      SelectAll();
      return;
    case key::kBackspace:
      return;  // KeyDown took it
    case '+':
    case '-':
      if (allow_negative_) {
        SetSign(key == U'-');
      } else {
        Beep();
      }
      return;
    default:
      break;
  }
  if ((key == U'.' || key == U',') && dec_max_length_ > 0) {
    if (AcceptDecimalKey()) return;
    Beep();  // and the digit rule below refuses it once more
  }
  if (key >= U'0' && key <= U'9') {
    AcceptDigit(key);
  } else {
    Beep();
  }
}

void KestuNumberEdit::SetSign(bool negative) {
  // "-" sets the sign and "+" clears it; neither toggles, and neither
  // raises Changed.
  ClearIfSelected();
  if (negative && !StartsWithMinus(text_)) text_.insert(0, 1, U'-');
  if (!negative && StartsWithMinus(text_)) text_.erase(0, 1);
  Draw(false);
}

bool KestuNumberEdit::AcceptDecimalKey() {
  if (Rules().FindDecimal(text_) != std::u32string::npos) return false;
  ClearIfSelected();
  if (Trimmed(text_).empty()) text_.assign(1, U'0');
  text_ += Rules().DecimalSeparator();
  Draw(false);
  return true;
}

void KestuNumberEdit::AcceptDigit(char32_t digit) {
  if (whole_selected_) {
    ClearIfSelected();
    Draw(false);
  }
  const size_t separator = Rules().FindDecimal(text_);
  const Int16 length = NumberText::Length(text_);
  if (separator != std::u32string::npos &&
      length - Int16::From(static_cast<int64_t>(separator)) > dec_max_length_) {
    Beep();  // the decimals are full
    return;
  }
  const std::u32string_view trimmed = Trimmed(text_);
  if (digit == U'0' && (trimmed == U"0" || trimmed == U"-0")) {
    Beep();  // no leading zeros
    return;
  }
  if (digit != U'0' && text_ == U"0") text_.clear();
  if (digit != U'0' && text_ == U"-0") text_.pop_back();
  if (separator == std::u32string::npos) {
    const Int16 limit =
        StartsWithMinus(text_) ? Int16(int_max_length_) + Int16(1) : Int16(int_max_length_);
    if (NumberText::Length(text_) >= limit) {
      Beep();  // the integer part is full
      return;
    }
  }
  PropertyChanged("dcDataValue");
  ClearIfSelected();
  text_ += digit;
  Draw(false);
  RaiseChanged();
}

// ---- Context menu ----

void KestuNumberEdit::UpdateMenu() {
  menu_[kCut].enabled = whole_selected_;
  menu_[kCopy].enabled = whole_selected_;
  menu_[kPaste].enabled = !ClipboardGetText().empty();
  menu_[kDelete].enabled = !Trimmed(text_).empty();
  menu_[kSelectAll].enabled = !whole_selected_;
}

void KestuNumberEdit::Menu_Click(int index) {
  switch (index) {
    case kCut:
      Cut();
      break;
    case kCopy:
      Copy();
      break;
    case kPaste:
      Paste();
      break;
    case kDelete: {
      int16_t key_code = key::kDelete;
      int16_t shift = 0;
      UserControl_KeyDown(key_code, shift);
      break;
    }
    case kSelectAll:
      SelectAll();
      break;
    default:
      break;
  }
}

std::string KestuNumberEdit::InvariantValue() const {
  return NumberText::Invariant(Rules().ValueOf(text_));
}

void KestuNumberEdit::Cut() {
  // Cut empties the box even when it is locked: only the keys check Locked.
  ClipboardSetText(InvariantValue());
  text_.clear();
  Draw(false);
}

void KestuNumberEdit::Copy() {
  ClipboardSetText(InvariantValue());
  Draw(false);
  SelectAll();
}

void KestuNumberEdit::Paste() {
  // Every character goes through the key rules, so a paste is exactly what
  // typing it would give: "1.234,5" with two decimals leaves "1,23".
  const std::u32string pasted = DecodeUtf8(ClipboardGetText());
  // A locked box keeps its text: the keys below stop at once.
  if (!locked_) text_.clear();
  for (char32_t c : pasted) {
    for (int16_t key_ascii : KeyCodesOf(c)) UserControl_KeyPress(key_ascii);
  }
}

// ---- Drawing ----

OLE_COLOR KestuNumberEdit::TextColor() const {
  if (!enabled_) return disabled_color_;
  if (locked_) return locked_color_;
  if (StartsWithMinus(text_)) return negative_color_;
  return fore_color_;
}

void KestuNumberEdit::Draw(bool normalise_first) {
  const NumberText rules = Rules();
  if (normalise_first) text_ = rules.Normalise(text_);
  const std::string display = EncodeUtf8(rules.Display(text_, th_separator_));

  const Face face = DrawBackground();

  // Right-aligned, 3 pixels in from the face's right edge, centred in
  // height: the number grows to the left as digits are typed at its end.
  const int text_width_px = ToPixelsX(TextWidth(display));
  const int line_height_px = ToPixelsY(TextHeight("M"));
  const int text_end_px = face.right_px - 3;
  const int text_left_px = text_end_px - text_width_px;
  const int text_top_px = (face.bottom_px + 1 - line_height_px) / 2;
  const bool selected = whole_selected_ && has_focus_ && AmbientUserMode();
  if (selected && selection_3d_) {
    DrawSelectionPlate(PixelsX(text_left_px - 2), PixelsY(text_top_px - 1),
                       PixelsX(text_end_px + 1), PixelsY(text_top_px + line_height_px));
  }
  UserControl::SetForeColor(TextColor());
  SetCurrentX(PixelsX(text_left_px));
  SetCurrentY(PixelsY(text_top_px));
  Print(display);
  if (selected && !selection_3d_) {
    InvertSelection(PixelsX(text_left_px - 1), PixelsY(text_top_px), PixelsX(text_end_px),
                    PixelsY(text_top_px + line_height_px - 1));
  }
  DrawBorder(face);
  if (has_focus_ && AmbientUserMode()) PlaceCaret(text_end_px, text_top_px);
}

}  // namespace kestu
