#pragma once
// The commands of kestu-script, one member each. Every command reads its
// whole line first (names are looked up, values parsed) and only then
// acts, so a malformed line runs nothing.

#include <filesystem>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "script/ScriptLexer.h"
#include "script/ScriptValue.h"
#include "kestu/host/HostInput.h"
#include "kestu/host/HostedControl.h"

namespace kestu {

class Host;
class Form;
class HostedControl;
class PageHost;
class PropertyDialog;
class ScriptHandlers;
struct PropertyInfo;

class ScriptCommands {
 public:
  ScriptCommands(Host& host, std::ostream& out, ScriptHandlers& handlers);
  ~ScriptCommands();

  // Files the script reads are looked for here first.
  void SetBaseDir(std::filesystem::path base_dir) { base_dir_ = std::move(base_dir); }

  // Runs one line; a blank or comment line does nothing. Throws
  // ScriptError for a line it cannot run, RuntimeError for what the
  // library raised.
  void Execute(std::string_view line);

 private:
  using Command = void (ScriptCommands::*)(ScriptLexer&);
  static const std::map<std::string, Command, std::less<>>& Commands();

  // Commands of the language.
  void Screen(ScriptLexer& in);
  void FormCommand(ScriptLexer& in);
  void Activate(ScriptLexer& in);
  void Mode(ScriptLexer& in);
  void Ambient(ScriptLexer& in);
  void New(ScriptLexer& in);
  void Load(ScriptLexer& in);
  void Save(ScriptLexer& in);
  void OpenForm(ScriptLexer& in);
  void SaveForm(ScriptLexer& in);
  void Set(ScriptLexer& in);
  void Get(ScriptLexer& in);
  void Call(ScriptLexer& in);
  void Size(ScriptLexer& in);
  void Focus(ScriptLexer& in);
  void Type(ScriptLexer& in);
  void Key(ScriptLexer& in);
  void Pointer(ScriptLexer& in);
  void PressCommand(ScriptLexer& in);
  void Keys(ScriptLexer& in);
  void AccessKey(ScriptLexer& in);
  void ZOrder(HostedControl& control, const std::vector<ScriptValue>& values);
  // The form keys go to: the active one, else the current one.
  Form& ActiveForm() const;
  void KeyDown(ScriptLexer& in);
  void KeyUp(ScriptLexer& in);
  void KeyPress(ScriptLexer& in);
  void Mouse(ScriptLexer& in);
  void Click(ScriptLexer& in);
  void DblClick(ScriptLexer& in);
  void Cursor(ScriptLexer& in);
  void Tick(ScriptLexer& in);
  void Popup(ScriptLexer& in);
  void Clipboard(ScriptLexer& in);
  void On(ScriptLexer& in);
  void Trace(ScriptLexer& in);
  void Pixel(ScriptLexer& in);
  void Png(ScriptLexer& in);
  void Caret(ScriptLexer& in);
  void Echo(ScriptLexer& in);
  // Extensions.
  void Paint(ScriptLexer& in);
  void Remove(ScriptLexer& in);
  void PageCommand(ScriptLexer& in);
  void DialogCommand(ScriptLexer& in);
  void OpenPage(const std::string& name, ScriptLexer& in);
  void ClosePage(PageHost& page);
  PageHost* FindPage(std::string_view name) const;

  // Reading a line.
  Token Word(ScriptLexer& in, const char* what);
  std::string FileName(ScriptLexer& in);
  // A name for something new: a letter, then letters, digits and "_".
  Token NewName(ScriptLexer& in, const char* what);
  HostedControl& ControlArgument(ScriptLexer& in);
  // A word "NAME.MEMBER", split at its last point.
  std::pair<std::string, std::string> MemberArgument(ScriptLexer& in, const char* what);
  ScriptValue ValueArgument(ScriptLexer& in) { return ScriptValue::Parse(in); }
  void End(ScriptLexer& in);

  Variant Evaluate(const ScriptValue& value) const { return value.Evaluate(base_dir_); }
  int16_t Integer(const ScriptValue& value) const { return Evaluate(value).ToInteger(); }
  int32_t Long(const ScriptValue& value) const { return Evaluate(value).ToLong(); }
  float Single(const ScriptValue& value) const { return Evaluate(value).ToSingle(); }

  Form& CurrentForm() const;
  HostedControl* FindControl(std::string_view name) const;
  // The control's name as a trace prints it: qualified by its form when
  // the script named it so.
  static std::string PrintedName(const HostedControl& control, std::string_view as_named);
  // A property a line names, found: one of the control's class, else of
  // its extender, or one of a form.
  struct PropertyRef {
    HostedControl* control = nullptr;
    const PropertyInfo* property = nullptr;  // null for the extender's and the form's
    Form* form = nullptr;
    std::string_view name;       // as the owner spells it
    std::string_view type_name;  // for printing: "OLE_COLOR" prints as a colour
    std::string full_name;       // "n1.Text"
  };
  PropertyRef ResolveProperty(const std::string& target, const std::string& member) const;
  // A click's control, button, Shift state and point.
  struct Press {
    HostedControl& control;
    int16_t button;
    int16_t shift;
    float x;
    float y;
  };
  Press PressArguments(ScriptLexer& in);
  // The values up to the end of the line.
  std::vector<ScriptValue> Values(ScriptLexer& in);
  // Four values as a place on the form, or nothing for none.
  // [L T W H] [in CONTAINER], to the end of the line.
  std::pair<std::optional<TwipsRect>, HostedControl*> Placement(ScriptLexer& in);
  std::optional<TwipsRect> Rect(const std::vector<ScriptValue>& values) const;
  void PrintValue(std::string_view target, const Variant& value, std::string_view type_name);

  Host& host_;
  std::ostream& out_;
  ScriptHandlers& handlers_;
  HostInput input_;
  std::filesystem::path base_dir_;
  std::string current_form_ = "Form1";
  std::vector<std::unique_ptr<PageHost>> pages_;
  std::unique_ptr<PropertyDialog> dialog_;
};

}  // namespace kestu
