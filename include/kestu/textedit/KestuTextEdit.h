#pragma once
// A masked edit box: one line of text, each typed or pasted character
// checked against an input mask, position by position. The caret sits
// between characters; with a mask a typed character overwrites its place
// and the caret skips the mask's literals. See docs/textedit.md.

#include <cstdint>
#include <string>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/EditBox.h"
#include "kestu/foundation/Variant.h"

namespace kestu {

class MaskText;

// How the text is cased or padded.
enum ccTextStyle : int16_t { ccNormal = 0, ccUpperCase = 1, ccLowerCase = 2, ccPadLeft = 3 };

class KestuTextEdit : public EditBox {
 public:
  KestuTextEdit();

  // The class's metadata: properties, methods, events and ccTextStyle.
  static ClassInfo& Info();
  const ClassInfo& Class() const override { return Info(); }

  // ---- Properties with rules of their own; the rest are set through the
  // metadata ----
  // The text, literals included; reading it normalises the stored text
  // by TextStyle and MaxLength, and leaves the literals out unless
  // IncludeLiterals. Assigning it cuts it to what fits.
  Variant Text();
  void SetText(const Variant& text);
  const std::u32string& StoredText() const { return text_; }
  std::string Mask() const;
  void SetMask(const std::string& mask);
  int16_t MaxLength() const { return max_length_; }
  int16_t TextStyle() const { return text_style_; }
  void SetTextStyle(int16_t style);
  std::string FillChar() const;
  void SetFillChar(const std::string& fill);
  void SetEnabled(bool on);
  void SetFont(FontRef font);
  // Run-time, read-only.
  int16_t SelStart() const;
  int16_t SelLength() const;
  int16_t CursorPos() const { return cursor_; }
  bool IsEmpty() const;
  std::string TextWithoutMask() const;
  // Offered to the same checked insertion as a typed character.
  void SetSelText(const std::string& text);
  // The scroll offset, in pixels; TopText is kept for the host's use.
  int16_t LeftText() const { return left_text_; }
  void SetLeftText(int16_t pixels);
  Variant dcDataValue() const;
  void SetdcDataValue(const Variant& value);
  int32_t hwnd() const { return hWnd(); }

  // ---- Methods ----
  void SetPosition(int16_t position);
  bool IsValidChar(std::string& character, int16_t& position);
  void SetSelectedText(int16_t start, int16_t length);
  void SelectAll() override;

  // ---- Procedures the host calls ----
  void UserControl_Initialize() override;
  void UserControl_InitProperties() override;
  void UserControl_ReadProperties(PropertyBag& bag) override;
  void UserControl_Show() override { Redraw(); }
  void UserControl_Paint() override { Redraw(); }
  void UserControl_Resize() override { Redraw(); }
  void UserControl_KeyDown(int16_t& key_code, int16_t& shift) override;
  void UserControl_KeyPress(int16_t& key_ascii) override;
  void UserControl_MouseDown(int16_t& button, int16_t& shift, float& x, float& y) override;
  void UserControl_MouseMove(int16_t& button, int16_t& shift, float& x, float& y) override;
  void UserControl_MouseUp(int16_t& button, int16_t& shift, float& x, float& y) override;
  void Menu_Click(int index) override;

 protected:
  // For a box built on this editing with events of its own (the plain
  // text box, which is this box without a mask).
  explicit KestuTextEdit(const EditBoxEvents& events);

  MaskText Rules();
  MaskText Rules() const;
  bool HasSelection() const { return anchor_ != cursor_; }
  int Length() const { return static_cast<int>(text_.size()); }
  bool IsPlaceholder(int index) const;  // 0-based; past the mask: no

  // Every change of the text goes through here: the undo record, the
  // caret, the selection and Changed stay in step.
  void ChangeText(std::u32string text, int caret, bool by_user);
  // The typing routine; `by_user` raises Changed for a change.
  bool InsertCharacter(std::u32string character, bool by_user);
  std::u32string WithoutSelection(int& caret) const;
  void EraseSelection(bool by_user);
  void Backspace();
  void DeleteForward();
  void MoveCaret(int to, bool extend);
  int WordBoundary(int from, int step) const;
  void Cut();
  void Copy();
  void Paste();
  void Undo();

  void Redraw() override;
  void DoubleClicked() override;
  void UpdateMenu() override;
  void FocusArrived() override;
  void LostFocusRoutine() override;
  OLE_COLOR TextColor() const;
  int TextPixels(std::string_view utf8, int characters);
  int BoundaryAt(float x_twips);
  // Just after the last character typed (literals and spaces after it
  // do not count).
  int EndOfTyped() const;

  // Fields start blank: a loaded box reads its keys with its declared
  // defaults.
  OLE_COLOR select_color_ = 0;
  std::u32string text_;
  std::u32string mask_;
  int16_t max_length_ = 0;
  bool include_literals_ = false;
  int16_t text_style_ = ccNormal;
  std::u32string fill_char_;
  bool allow_space_char_ = false;
  std::u32string default_value_;
  int16_t top_text_ = 0;
  int16_t left_text_ = 0;

  int16_t cursor_ = 0;  // 0 .. length: the caret sits before text_[cursor_]
  int16_t anchor_ = 0;  // the selection runs from here to the caret
  std::u32string undo_text_;
  int16_t undo_cursor_ = 0;
  bool dragging_ = false;
  bool pasting_ = false;  // a paste in progress draws once, at its end
  bool full_ = false;     // the last character met a full box
  int text_left_px_ = 3;  // where character 0 is drawn, scroll included
};

}  // namespace kestu
