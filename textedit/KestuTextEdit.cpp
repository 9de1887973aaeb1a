#include "kestu/textedit/KestuTextEdit.h"

#include <algorithm>
#include <utility>

#include "kestu/foundation/KestuControlsAPI.h"
#include "kestu/foundation/Keys.h"
#include "kestu/foundation/PropertyBag.h"
#include "kestu/foundation/Text.h"
#include "textedit/MaskText.h"

namespace kestu {

const EditBoxEvents& TextEditEvents();  // in KestuTextEditInfo.cpp

namespace {

int16_t Narrow(int value) {
  return ToInt16(value);
}

bool IsWordCharacter(char32_t c) {
  return c != U' ' && c != U'\t';
}

}  // namespace

KestuTextEdit::KestuTextEdit() : KestuTextEdit(TextEditEvents()) {}

KestuTextEdit::KestuTextEdit(const EditBoxEvents& events) : EditBox(events) {}

MaskText KestuTextEdit::Rules() {
  return MaskText({text_, mask_, max_length_, include_literals_, text_style_, fill_char_,
                   allow_space_char_, default_value_});
}

MaskText KestuTextEdit::Rules() const {
  // The queries a const box asks (StripLiterals, IsEmpty) only read.
  return const_cast<KestuTextEdit&>(*this).Rules();
}

bool KestuTextEdit::IsPlaceholder(int index) const {
  return index >= 0 && index < static_cast<int>(mask_.size()) &&
         MaskText::IsMaskChar(mask_[static_cast<size_t>(index)]);
}

// ---- Properties ----

Variant KestuTextEdit::Text() {
  const std::u32string text = Rules().ReadText();
  Redraw();
  return Variant(EncodeUtf8(text));
}

void KestuTextEdit::SetText(const Variant& text) {
  // The rules store and cut the text; the change itself then goes through
  // the one routine, as the user's edits do.
  std::u32string before = text_;
  const bool blank =
      Rules().AssignText(text.IsNull() ? std::u32string() : DecodeUtf8(text.ToString()));
  std::u32string assigned = std::exchange(text_, std::move(before));
  ChangeText(std::move(assigned), blank ? 0 : cursor_, false);
  PropertyChanged("Text");
}

std::string KestuTextEdit::Mask() const {
  return EncodeUtf8(mask_);
}

void KestuTextEdit::SetMask(const std::string& mask) {
  Rules().AssignMask(DecodeUtf8(mask));
  cursor_ = anchor_ = Narrow(std::min<int>(cursor_, Length()));
  Redraw();
  PropertyChanged("Mask");
  PropertyChanged("MaxLength");
}

void KestuTextEdit::SetTextStyle(int16_t style) {
  text_style_ = style;
  Rules().ApplyTextStyle();
  Redraw();
  PropertyChanged("TextStyle");
}

std::string KestuTextEdit::FillChar() const {
  return EncodeUtf8(fill_char_);
}

void KestuTextEdit::SetFillChar(const std::string& fill) {
  fill_char_ = DecodeUtf8(fill).substr(0, 1);
  Rules().ApplyTextStyle();
  Redraw();
  PropertyChanged("FillChar");
}

void KestuTextEdit::SetEnabled(bool on) {
  enabled_ = on;
  KestuControlsAPI::EnableWindow(hWnd(), on ? 1 : 0);
  Redraw();
  LostFocusRoutine();
  PropertyChanged("Enabled");
}

void KestuTextEdit::SetFont(FontRef font) {
  font_ = std::move(font);
  UserControl::SetFont(font_);
  Redraw();
  PropertyChanged("Font");
}

int16_t KestuTextEdit::SelStart() const {
  return std::min(anchor_, cursor_);
}

int16_t KestuTextEdit::SelLength() const {
  return static_cast<int16_t>(std::max(anchor_, cursor_) - SelStart());
}

bool KestuTextEdit::IsEmpty() const {
  return Rules().IsEmpty();
}

std::string KestuTextEdit::TextWithoutMask() const {
  return EncodeUtf8(Rules().StripLiterals());
}

void KestuTextEdit::SetSelText(const std::string& text) {
  bool accepted = true;
  for (char32_t c : DecodeUtf8(text)) {
    if (!InsertCharacter(std::u32string(1, c), false)) accepted = false;
  }
  if (accepted) anchor_ = cursor_;
  Redraw();
}

void KestuTextEdit::SetLeftText(int16_t pixels) {
  left_text_ = pixels;
  Redraw();
}

Variant KestuTextEdit::dcDataValue() const {
  return Variant(EncodeUtf8(text_));
}

void KestuTextEdit::SetdcDataValue(const Variant& value) {
  SetText(value);
}

// ---- Methods ----

void KestuTextEdit::SetPosition(int16_t position) {
  cursor_ = anchor_ = Narrow(std::clamp<int>(position, 0, Length()));
  Redraw();
}

bool KestuTextEdit::IsValidChar(std::string& character, int16_t& position) {
  std::u32string c = DecodeUtf8(character);
  const CharVerdict verdict = Rules().IsValidChar(c, position);
  if (verdict.beep) Beep();
  character = EncodeUtf8(c);
  return verdict.accepted;
}

void KestuTextEdit::SetSelectedText(int16_t start, int16_t length) {
  anchor_ = Narrow(std::clamp<int>(start, 0, Length()));
  cursor_ = Narrow(std::clamp<int>(start + length, 0, Length()));
  Redraw();
}

void KestuTextEdit::SelectAll() {
  anchor_ = 0;
  cursor_ = Narrow(Length());
  Redraw();
}

// ---- Lifecycle ----

void KestuTextEdit::UserControl_Initialize() {
  CapturePixelSize();
}

void KestuTextEdit::UserControl_InitProperties() {
  UserControl::UserControl_InitProperties();
  font_ = AmbientFont();
  if (font_) UserControl::SetFont(font_);
  text_ = DecodeUtf8(AmbientDisplayName());
}

void KestuTextEdit::UserControl_ReadProperties(PropertyBag& bag) {
  // A missing font is the container's: the field stands as it when read.
  font_ = AmbientFont();
  UserControl::UserControl_ReadProperties(bag);
  if (font_) UserControl::SetFont(font_);
  cursor_ = anchor_ = 0;
  Redraw();
}

void KestuTextEdit::FocusArrived() {
  if (auto_select_) SelectAll();
}

void KestuTextEdit::LostFocusRoutine() {
  // The caret is hidden twice, as the box has always done.
  if (AmbientUserMode()) KestuControlsAPI::HideCaret(hWnd());
  if (const auto caret = Rules().LoseFocus()) cursor_ = anchor_ = *caret;
  cursor_ = anchor_ = Narrow(std::min<int>(cursor_, Length()));
  EditBox::LostFocusRoutine();
}

// ---- Editing: one routine changes the text ----

void KestuTextEdit::ChangeText(std::u32string text, int caret, bool by_user) {
  const bool changed = text != text_;
  if (changed) {
    undo_text_ = text_;
    undo_cursor_ = cursor_;
  }
  text_ = std::move(text);
  cursor_ = anchor_ = Narrow(std::clamp(caret, 0, Length()));
  if (!pasting_) Redraw();  // a paste draws once, at its end
  if (changed && by_user) RaiseChanged();
}

std::u32string KestuTextEdit::WithoutSelection(int& caret) const {
  const int start = SelStart();
  const int end = start + SelLength();
  caret = start;
  std::u32string text = text_;
  if (mask_.empty())
    return text.erase(static_cast<size_t>(start), static_cast<size_t>(end - start));
  // With a mask the places empty and the literals stay.
  for (int i = start; i < end; ++i) {
    if (IsPlaceholder(i)) text[static_cast<size_t>(i)] = U' ';
  }
  return text;
}

void KestuTextEdit::EraseSelection(bool by_user) {
  int caret = 0;
  std::u32string text = WithoutSelection(caret);
  ChangeText(std::move(text), caret, by_user);
}

bool KestuTextEdit::InsertCharacter(std::u32string character, bool by_user) {
  int caret = cursor_;
  std::u32string text = HasSelection() ? WithoutSelection(caret) : text_;
  if (!mask_.empty()) {
    while (caret < static_cast<int>(mask_.size()) && !IsPlaceholder(caret)) ++caret;
    // Past the mask's last place the box is full.
    if (caret >= static_cast<int>(mask_.size())) {
      full_ = true;
      Beep();
      return false;
    }
  } else if (static_cast<int>(text.size()) >= max_length_) {
    full_ = true;
    Beep();
    return false;
  }
  std::swap(text, text_);  // the character is tested against the text it joins
  const CharVerdict verdict = Rules().IsValidChar(character, Narrow(caret + 1));
  std::swap(text, text_);
  if (!verdict.accepted) {
    if (verdict.beep) Beep();
    return false;
  }
  if (mask_.empty()) {
    text.insert(static_cast<size_t>(caret), character);
    ChangeText(std::move(text), caret + static_cast<int>(character.size()), by_user);
    return true;
  }
  if (static_cast<int>(text.size()) <= caret) text.resize(static_cast<size_t>(caret) + 1, U' ');
  text[static_cast<size_t>(caret)] = character.front();
  int next = caret + 1;
  while (next < static_cast<int>(mask_.size()) && !IsPlaceholder(next)) ++next;
  ChangeText(std::move(text), next, by_user);
  return true;
}

void KestuTextEdit::Backspace() {
  if (HasSelection()) return EraseSelection(true);
  std::u32string text = text_;
  int place = cursor_ - 1;
  if (!mask_.empty()) {
    while (place >= 0 && !IsPlaceholder(place)) --place;
    if (place < 0 || place >= Length()) return;
    text[static_cast<size_t>(place)] = U' ';
  } else {
    if (place < 0) return;
    text.erase(static_cast<size_t>(place), 1);
  }
  ChangeText(std::move(text), place, true);
}

void KestuTextEdit::DeleteForward() {
  if (HasSelection()) return EraseSelection(true);
  std::u32string text = text_;
  int place = cursor_;
  if (!mask_.empty()) {
    while (place < static_cast<int>(mask_.size()) && !IsPlaceholder(place)) ++place;
    if (place >= Length() || !IsPlaceholder(place)) return;
    text[static_cast<size_t>(place)] = U' ';
  } else {
    if (place >= Length()) return;
    text.erase(static_cast<size_t>(place), 1);
  }
  ChangeText(std::move(text), cursor_, true);
}

void KestuTextEdit::MoveCaret(int to, bool extend) {
  cursor_ = Narrow(std::clamp(to, 0, Length()));
  if (!extend) anchor_ = cursor_;
  Redraw();
}

int KestuTextEdit::WordBoundary(int from, int step) const {
  int i = from;
  if (step < 0) {
    while (i > 0 && !IsWordCharacter(text_[static_cast<size_t>(i - 1)])) --i;
    while (i > 0 && IsWordCharacter(text_[static_cast<size_t>(i - 1)])) --i;
  } else {
    while (i < Length() && IsWordCharacter(text_[static_cast<size_t>(i)])) ++i;
    while (i < Length() && !IsWordCharacter(text_[static_cast<size_t>(i)])) ++i;
  }
  return i;
}

void KestuTextEdit::Cut() {
  if (!HasSelection() || locked_) return;
  Copy();
  EraseSelection(true);
}

void KestuTextEdit::Copy() {
  if (!HasSelection()) return;
  ClipboardSetText(
      EncodeUtf8(text_.substr(static_cast<size_t>(SelStart()), static_cast<size_t>(SelLength()))));
}

void KestuTextEdit::Paste() {
  // Each character goes through the typing routine: a paste is exactly
  // what typing it would give, letters refused at digit places included.
  // It is one edit: one undo step, one Changed, one drawing; and it stops
  // once the box is full, with the one beep typing on would give.
  if (locked_) return;
  const std::u32string before = text_;
  const int16_t caret_before = cursor_;
  pasting_ = true;
  full_ = false;
  try {
    for (char32_t c : DecodeUtf8(ClipboardGetText())) {
      if (c >= 32) InsertCharacter(std::u32string(1, c), false);
      if (full_) break;
    }
  } catch (...) {
    pasting_ = false;
    throw;
  }
  pasting_ = false;
  Redraw();
  if (text_ == before) return;
  undo_text_ = before;
  undo_cursor_ = caret_before;
  RaiseChanged();
}

void KestuTextEdit::Undo() {
  if (locked_) return;
  std::u32string text = undo_text_;
  ChangeText(std::move(text), undo_cursor_, true);
}

// ---- Keys ----

void KestuTextEdit::UserControl_KeyDown(int16_t& key_code, int16_t& shift) {
  if (!RaiseEvent(KeyDown, key_code, shift)) return;
  const bool with_shift = (shift & shift::kShift) != 0;
  const bool with_ctrl = (shift & shift::kCtrl) != 0;
  if (with_ctrl && !with_shift) {
    switch (key_code) {
      case 'C':
      case key::kInsert:
        return Copy();
      case 'X':
        return Cut();
      case 'V':
        return Paste();
      case 'A':
        return SelectAll();
      case 'Z':
        return Undo();
      default:
        break;
    }
  }
  if (with_ctrl && (key_code == key::kLeft || key_code == key::kRight)) {
    return MoveCaret(WordBoundary(cursor_, key_code == key::kLeft ? -1 : 1), with_shift);
  }
  if (with_ctrl && !with_shift) return;
  switch (key_code) {
    case key::kHome:
      return MoveCaret(0, with_shift);
    case key::kEnd:
      return MoveCaret(Length(), with_shift);
    case key::kLeft:
      return MoveCaret(cursor_ - 1, with_shift);
    case key::kRight:
      return MoveCaret(cursor_ + 1, with_shift);
    case key::kInsert:
      if (with_shift) Paste();
      return;
    case key::kDelete:
      if (with_shift) return Cut();
      if (!locked_) DeleteForward();
      return;
    case key::kBackspace:
      if (!locked_) Backspace();
      return;
    default:
      return;
  }
}

void KestuTextEdit::UserControl_KeyPress(int16_t& key_ascii) {
  if (!RaiseEvent(KeyPress, key_ascii)) return;
  if (locked_) return;
  // Only 32 to 255 are characters the box types; Escape and Backspace
  // are not among them.
  if (key_ascii < 32 || key_ascii > 255) return;
  InsertCharacter(std::u32string(1, static_cast<char32_t>(key_ascii)), true);
}

// ---- Mouse and context menu ----

int KestuTextEdit::EndOfTyped() const {
  int end = Length();
  while (end > 0 && (text_[static_cast<size_t>(end - 1)] == U' ' ||
                     (!mask_.empty() && !IsPlaceholder(end - 1)))) {
    --end;
  }
  return end;
}

int KestuTextEdit::BoundaryAt(float x_twips) {
  // Past what was typed the caret stops just after it: an empty date box
  // clicked anywhere starts at its first place. Widths add up character by
  // character, so one pass finds the boundary however long the text.
  const int x_px = ToPixelsX(x_twips);
  const int end = EndOfTyped();
  int best = 0;
  int best_distance = INT32_MAX;
  int boundary_px = text_left_px_;
  for (int i = 0; i <= end; ++i) {
    const int distance = std::abs(boundary_px - x_px);
    if (distance >= best_distance) break;  // moving away from the pointer
    best = i;
    best_distance = distance;
    if (i < end) {
      boundary_px +=
          ToPixelsX(TextWidth(EncodeUtf8(std::u32string(1, text_[static_cast<size_t>(i)]))));
    }
  }
  return best;
}

void KestuTextEdit::UserControl_MouseDown(int16_t& button, int16_t& shift, float& x, float& y) {
  if (!RaiseEvent(MouseDown, button, shift, x, y)) return;
  if (button != button::kLeft || !AmbientUserMode()) return;
  dragging_ = true;
  MoveCaret(BoundaryAt(x), (shift & shift::kShift) != 0);
}

void KestuTextEdit::UserControl_MouseMove(int16_t& button, int16_t& shift, float& x, float& y) {
  if (!RaiseEvent(MouseMove, button, shift, x, y)) return;
  if (dragging_ && (button & button::kLeft) != 0) MoveCaret(BoundaryAt(x), true);
}

void KestuTextEdit::UserControl_MouseUp(int16_t& button, int16_t& shift, float& x, float& y) {
  if (button == button::kLeft) dragging_ = false;
  EditBox::UserControl_MouseUp(button, shift, x, y);
}

void KestuTextEdit::DoubleClicked() {
  const int start = WordBoundary(std::min(cursor_ + 1, Length()), -1);
  int end = start;
  while (end < Length() && IsWordCharacter(text_[static_cast<size_t>(end)])) ++end;
  anchor_ = Narrow(start);
  cursor_ = Narrow(end);
  Redraw();
}

void KestuTextEdit::UpdateMenu() {
  const bool editable = !locked_;
  menu_[kCut].enabled = HasSelection() && editable;
  menu_[kCopy].enabled = HasSelection();
  menu_[kPaste].enabled = editable && !ClipboardGetText().empty();
  menu_[kDelete].enabled = HasSelection() && editable;
  menu_[kSelectAll].enabled = SelLength() < Length();
}

void KestuTextEdit::Menu_Click(int index) {
  switch (index) {
    case kCut:
      return Cut();
    case kCopy:
      return Copy();
    case kPaste:
      return Paste();
    case kDelete:
      if (!locked_ && HasSelection()) EraseSelection(true);
      return;
    case kSelectAll:
      return SelectAll();
    default:
      return;
  }
}

// ---- Drawing ----

OLE_COLOR KestuTextEdit::TextColor() const {
  if (!enabled_) return disabled_color_;
  return locked_ ? locked_color_ : fore_color_;
}

int KestuTextEdit::TextPixels(std::string_view utf8, int characters) {
  size_t bytes = 0;
  for (int i = 0; i < characters && bytes < utf8.size(); ++i) NextCodePoint(utf8, bytes);
  return ToPixelsX(TextWidth(utf8.substr(0, bytes)));
}

void KestuTextEdit::Redraw() {
  UserControl::SetForeColor(TextColor());
  KestuControlsAPI::EnableWindow(hWnd(), enabled_ ? 1 : 0);
  Rules().ApplyMask();
  cursor_ = Narrow(std::min<int>(cursor_, Length()));
  anchor_ = Narrow(std::min<int>(anchor_, Length()));

  const Face face = DrawBackground();
  const int line_height_px = ToPixelsY(TextHeight("M"));
  const int top_px = (face.bottom_px + 1 - line_height_px) / 2;
  // Left-aligned 3 pixels in; scrolled sideways so the caret stays seen.
  const int visible_px = std::max(face.right_px - 6, 1);
  // Encoded once: the caret, the selection and the text measure from it.
  const std::string utf8 = EncodeUtf8(text_);
  const int caret_px = TextPixels(utf8, cursor_);
  if (caret_px - left_text_ > visible_px) left_text_ = Narrow(caret_px - visible_px);
  if (caret_px < left_text_) left_text_ = Narrow(caret_px);
  text_left_px_ = 3 - left_text_;

  // Measured only when drawn: each measure is a pass over the text.
  const bool selected = HasSelection() && has_focus_ && AmbientUserMode();
  const int selection_left_px = selected ? text_left_px_ + TextPixels(utf8, SelStart()) : 0;
  const int selection_right_px =
      selected ? text_left_px_ + TextPixels(utf8, SelStart() + SelLength()) : 0;
  if (selected && selection_3d_) {
    DrawSelectionPlate(PixelsX(selection_left_px - 2), PixelsY(top_px - 1),
                       PixelsX(selection_right_px + 1), PixelsY(top_px + line_height_px));
  }
  SetCurrentX(PixelsX(text_left_px_));
  SetCurrentY(PixelsY(top_px));
  Print(utf8);
  if (selected && !selection_3d_) {
    InvertSelection(PixelsX(selection_left_px - 1), PixelsY(top_px), PixelsX(selection_right_px),
                    PixelsY(top_px + line_height_px - 1));
  }
  DrawBorder(face);
  if (has_focus_ && AmbientUserMode()) PlaceCaret(text_left_px_ + caret_px, top_px);
}

}  // namespace kestu
