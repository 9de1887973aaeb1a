#pragma once
// The plain one-line text box of dialogs: the masked box's editing with no
// mask, so any character is typed. Caret, selection, clipboard, undo and
// the context menu are the masked box's. MaxLength 0 means no limit.
// Change follows every change of the text: typing, paste, cut, undo, and
// Text or SelText assigned from the program.

#include <cstdint>
#include <string>

#include "kestu/textedit/KestuTextEdit.h"

namespace kestu {

class TextBox : public KestuTextEdit {
 public:
  TextBox();

  // The class's metadata: its properties, methods and events.
  static ClassInfo& Info();
  const ClassInfo& Class() const override { return Info(); }

  std::string Text() const;
  void SetText(const std::string& text);
  int16_t MaxLength() const { return limit_; }
  // Error 380 below 0. A shorter limit keeps the text already there.
  void SetMaxLength(int16_t limit);
  void SetForeColor(OLE_COLOR color);
  // Assigning SelStart puts the caret there with nothing selected;
  // SelLength selects that many characters from SelStart.
  void SetSelStart(int16_t start);
  void SetSelLength(int16_t length);
  std::string SelText() const;
  // Replaces the selection, or types at the caret, within MaxLength.
  void SetSelText(const std::string& text);

  void UserControl_InitProperties() override;
  void UserControl_ReadProperties(PropertyBag& bag) override;

 private:
  // Brings the engine's settings that follow a property in step with
  // what was just initialised or loaded.
  void FollowProperties();
  // The engine's limit: MaxLength, or the longest text when it is 0.
  void ApplyLimit();
  // Runs `edit` and raises Change when it changed the text.
  template <typename Edit>
  void EditFromProgram(Edit&& edit);

  int16_t limit_ = 0;
};

}  // namespace kestu
