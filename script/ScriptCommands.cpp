#include "script/ScriptCommands.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

#include "foundation/VariantJson.h"
#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/RuntimeError.h"
#include "kestu/foundation/Text.h"
#include "kestu/host/FormFile.h"
#include "kestu/host/Host.h"
#include "kestu/host/KeyStroke.h"
#include "kestu/host/PageHost.h"
#include "kestu/host/PropertyDialog.h"
#include "kestu/host/Snapshot.h"
#include "script/ScriptError.h"
#include "script/ScriptHandlers.h"
#include "script/TraceFormat.h"

namespace kestu {

namespace {

// "NAME.MEMBER", split at its last point: NAME may be "FORM.CONTROL".
std::pair<std::string, std::string> SplitMember(const std::string& word, const char* what) {
  const size_t dot = word.rfind('.');
  if (dot == std::string::npos || dot == 0 || dot + 1 == word.size()) {
    throw ScriptError(std::string("expected ") + what);
  }
  return {word.substr(0, dot), word.substr(dot + 1)};
}

}  // namespace

ScriptCommands::ScriptCommands(Host& host, std::ostream& out, ScriptHandlers& handlers)
    : host_(host), out_(out), handlers_(handlers), input_(host) {}

ScriptCommands::~ScriptCommands() = default;

const std::map<std::string, ScriptCommands::Command, std::less<>>& ScriptCommands::Commands() {
  static const std::map<std::string, Command, std::less<>> commands = {
      {"screen", &ScriptCommands::Screen},
      {"form", &ScriptCommands::FormCommand},
      {"activate", &ScriptCommands::Activate},
      {"mode", &ScriptCommands::Mode},
      {"ambient", &ScriptCommands::Ambient},
      {"new", &ScriptCommands::New},
      {"load", &ScriptCommands::Load},
      {"save", &ScriptCommands::Save},
      {"openform", &ScriptCommands::OpenForm},
      {"saveform", &ScriptCommands::SaveForm},
      {"set", &ScriptCommands::Set},
      {"get", &ScriptCommands::Get},
      {"call", &ScriptCommands::Call},
      {"size", &ScriptCommands::Size},
      {"focus", &ScriptCommands::Focus},
      {"type", &ScriptCommands::Type},
      {"key", &ScriptCommands::Key},
      {"keydown", &ScriptCommands::KeyDown},
      {"keyup", &ScriptCommands::KeyUp},
      {"keypress", &ScriptCommands::KeyPress},
      {"mouse", &ScriptCommands::Mouse},
      {"click", &ScriptCommands::Click},
      {"dblclick", &ScriptCommands::DblClick},
      {"cursor", &ScriptCommands::Cursor},
      {"tick", &ScriptCommands::Tick},
      {"popup", &ScriptCommands::Popup},
      {"clipboard", &ScriptCommands::Clipboard},
      {"on", &ScriptCommands::On},
      {"trace", &ScriptCommands::Trace},
      {"pixel", &ScriptCommands::Pixel},
      {"png", &ScriptCommands::Png},
      {"caret", &ScriptCommands::Caret},
      {"echo", &ScriptCommands::Echo},
      {"pointer", &ScriptCommands::Pointer},
      {"press", &ScriptCommands::PressCommand},
      {"keys", &ScriptCommands::Keys},
      {"accesskey", &ScriptCommands::AccessKey},
      {"paint", &ScriptCommands::Paint},
      {"remove", &ScriptCommands::Remove},
      {"page", &ScriptCommands::PageCommand},
      {"dialog", &ScriptCommands::DialogCommand},
  };
  return commands;
}

void ScriptCommands::Execute(std::string_view line) {
  ScriptLexer in(line);
  std::optional<Token> command = in.Next();
  if (!command) return;
  if (!command->Is(Token::Kind::Word)) throw ScriptError("expected a command");
  const auto& commands = Commands();
  // Commands, like names, ignore case.
  const auto it = std::find_if(commands.begin(), commands.end(), [&](const auto& entry) {
    return SameName(entry.first, command->text);
  });
  if (it == commands.end()) throw ScriptError("unknown command '" + command->text + "'");
  (this->*(it->second))(in);
  // A dialog ended by its own button goes between commands, never inside
  // the click that ended it.
  if (dialog_ && dialog_->Done()) dialog_.reset();
}

// ---- Reading a line ----

Token ScriptCommands::Word(ScriptLexer& in, const char* what) {
  std::optional<Token> token = in.Next();
  if (!token || !token->Is(Token::Kind::Word)) throw ScriptError(std::string("expected ") + what);
  return *token;
}

std::string ScriptCommands::FileName(ScriptLexer& in) {
  std::optional<Token> token = in.Next();
  if (!token || !(token->Is(Token::Kind::Word) || token->Is(Token::Kind::String))) {
    throw ScriptError("expected a file name");
  }
  return token->text;
}

Token ScriptCommands::NewName(ScriptLexer& in, const char* what) {
  const Token name = Word(in, what);
  bool valid = std::isalpha(static_cast<unsigned char>(name.text[0])) != 0;
  for (char c : name.text)
    valid = valid && (std::isalnum(static_cast<unsigned char>(c)) || c == '_');
  if (!valid) throw ScriptError("'" + name.text + "' is not a name");
  return name;
}

HostedControl* ScriptCommands::FindControl(std::string_view name) const {
  // "FORM.CONTROL": a control of that form, such as a property page's child.
  if (const size_t dot = name.find('.'); dot != std::string_view::npos) {
    const Form* form = host_.FindForm(name.substr(0, dot));
    return form ? form->FindControl(name.substr(dot + 1)) : nullptr;
  }
  return host_.FindControl(name, host_.FindForm(current_form_));
}

std::string ScriptCommands::PrintedName(const HostedControl& control, std::string_view as_named) {
  if (as_named.find('.') == std::string_view::npos) return control.Name();
  return control.Owner().Name() + "." + control.Name();
}

HostedControl& ScriptCommands::ControlArgument(ScriptLexer& in) {
  const Token name = Word(in, "a control name");
  HostedControl* control = FindControl(name.text);
  if (!control) throw ScriptError("unknown control '" + name.text + "'");
  return *control;
}

std::pair<std::string, std::string> ScriptCommands::MemberArgument(ScriptLexer& in,
                                                                   const char* what) {
  return SplitMember(Word(in, what).text, what);
}

std::vector<ScriptValue> ScriptCommands::Values(ScriptLexer& in) {
  std::vector<ScriptValue> values;
  while (!in.AtEnd()) values.push_back(ScriptValue::Parse(in));
  return values;
}

void ScriptCommands::End(ScriptLexer& in) {
  if (std::optional<Token> extra = in.Next()) {
    throw ScriptError("unexpected '" + extra->text + "'");
  }
}

std::optional<TwipsRect> ScriptCommands::Rect(const std::vector<ScriptValue>& values) const {
  if (values.empty()) return std::nullopt;
  return TwipsRect{Long(values[0]), Long(values[1]), Long(values[2]), Long(values[3])};
}

std::pair<std::optional<TwipsRect>, HostedControl*> ScriptCommands::Placement(ScriptLexer& in) {
  std::vector<ScriptValue> rect;
  while (!in.AtEnd() && !in.Peek()->IsWord("in")) rect.push_back(ScriptValue::Parse(in));
  if (!rect.empty() && rect.size() != 4) throw ScriptError("expected L T W H");
  HostedControl* container = nullptr;
  if (!in.AtEnd()) {
    in.Next();
    container = &ControlArgument(in);
    End(in);
  }
  return {Rect(rect), container};
}

Form& ScriptCommands::CurrentForm() const {
  Form* form = host_.FindForm(current_form_);
  // The current form can only go when a form file replaced it, and then
  // the new one is current; keep a form to work on whatever happens.
  return form ? *form : host_.CreateForm(current_form_);
}

void ScriptCommands::PrintValue(std::string_view target, const Variant& value,
                                std::string_view type_name) {
  out_ << target << " = " << FormatValue(value, type_name) << "\n";
}

// ---- Forms and the screen ----

void ScriptCommands::Screen(ScriptLexer& in) {
  const ScriptValue x = ValueArgument(in);
  const ScriptValue y = ValueArgument(in);
  End(in);
  host_.SetTwipsPerPixel(Long(x), Long(y));
}

void ScriptCommands::FormCommand(ScriptLexer& in) {
  const Token name = NewName(in, "a form name");
  const std::vector<ScriptValue> size = Values(in);
  if (!size.empty() && size.size() != 2) throw ScriptError("expected a width and a height");
  Form* form = host_.FindForm(name.text);
  if (form) {
    if (!size.empty()) form->Resize(Long(size[0]), Long(size[1]));
    host_.Activate(form);
  } else if (size.empty()) {
    form = &host_.CreateForm(name.text);
  } else {
    form = &host_.CreateForm(name.text, Long(size[0]), Long(size[1]));
  }
  current_form_ = form->Name();
}

void ScriptCommands::Activate(ScriptLexer& in) {
  const Token name = Word(in, "a form name");
  End(in);
  Form* form = host_.FindForm(name.text);
  if (!form) throw ScriptError("unknown form '" + name.text + "'");
  host_.Activate(form);
}

void ScriptCommands::Mode(ScriptLexer& in) {
  const Token mode = Word(in, "design or run");
  End(in);
  if (!mode.IsWord("design") && !mode.IsWord("run")) throw ScriptError("expected design or run");
  host_.SetUserMode(mode.IsWord("run"));
}

void ScriptCommands::Ambient(ScriptLexer& in) {
  HostedControl& control = ControlArgument(in);
  const Token property = Word(in, "an ambient property");
  const auto name = HostedControl::AmbientName(property.text);
  if (!name) throw ScriptError("unknown ambient property '" + property.text + "'");
  const ScriptValue value = ValueArgument(in);
  End(in);
  control.SetAmbient(*name, Evaluate(value));
}

// ---- Controls ----

void ScriptCommands::New(ScriptLexer& in) {
  const Token type = Word(in, "a control type");
  const ClassInfo* info = ControlRegistry::Instance().Find(type.text);
  if (!info) throw ScriptError("unknown control type '" + type.text + "'");
  const Token name = NewName(in, "a control name");
  if (CurrentForm().FindControl(name.text)) {
    throw ScriptError("control '" + name.text + "' already exists");
  }
  const auto [rect, container] = Placement(in);
  host_.NewControl(CurrentForm(), *info, name.text, rect, container);
}

void ScriptCommands::Load(ScriptLexer& in) {
  const Token type = Word(in, "a control type");
  const ClassInfo* info = ControlRegistry::Instance().Find(type.text);
  if (!info) throw ScriptError("unknown control type '" + type.text + "'");
  const Token name = NewName(in, "a control name");
  if (CurrentForm().FindControl(name.text)) {
    throw ScriptError("control '" + name.text + "' already exists");
  }
  std::optional<std::string> json = in.RawJsonObject();
  std::string file;
  if (!json) {
    file = Word(in, "a JSON object or @file").text;
    if (!file.starts_with("@") || file.size() == 1) {
      throw ScriptError("expected a JSON object or @file");
    }
    file.erase(0, 1);
  }
  const auto [rect, container] = Placement(in);

  const std::string source = json ? "bag of " + name.text : file;
  const nlohmann::ordered_json parsed =
      json ? ParseJsonStrict(*json, source) : LoadJsonFile(ResolveInputPath(base_dir_, file));
  host_.LoadControl(CurrentForm(), *info, name.text, BagFromJson(parsed, source), rect, container);
}

void ScriptCommands::Save(ScriptLexer& in) {
  HostedControl& control = ControlArgument(in);
  End(in);
  const PropertyBag bag = host_.SaveControl(control);
  out_ << "bag " << control.Name() << " "
       << BagToJson(bag).dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace)
       << "\n";
}

void ScriptCommands::OpenForm(ScriptLexer& in) {
  const std::string file = FileName(in);
  End(in);
  current_form_ = LoadFormFile(host_, ResolveInputPath(base_dir_, file)).Name();
}

void ScriptCommands::SaveForm(ScriptLexer& in) {
  const std::string file = FileName(in);
  End(in);
  SaveFormFile(host_, CurrentForm(), file);
}

// ---- Properties and methods ----

ScriptCommands::PropertyRef ScriptCommands::ResolveProperty(const std::string& target,
                                                            const std::string& member) const {
  PropertyRef ref;
  if (HostedControl* control = FindControl(target)) {
    ref.control = control;
    if ((ref.property = control->Class().FindProperty(member))) {
      ref.name = ref.property->name;
      ref.type_name = ref.property->type_name;
    } else if (const auto extender = HostedControl::ExtenderName(member)) {
      ref.name = *extender;
    } else {
      throw ScriptError("unknown property '" + member + "' of " + control->Class().name);
    }
    ref.full_name = PrintedName(*control, target) + "." + std::string(ref.name);
    return ref;
  }
  ref.form = host_.FindForm(target);
  if (!ref.form) throw ScriptError("unknown control '" + target + "'");
  const auto name = Form::PropertyName(member);
  if (!name) throw ScriptError("unknown property '" + member + "' of form " + ref.form->Name());
  ref.name = *name;
  if (ref.name == "BackColor") ref.type_name = kColorTypeName;
  ref.full_name = ref.form->Name() + "." + std::string(ref.name);
  return ref;
}

void ScriptCommands::Set(ScriptLexer& in) {
  const auto [target, member] = MemberArgument(in, "NAME.PROPERTY");
  const PropertyRef ref = ResolveProperty(target, member);
  const ScriptValue value = ValueArgument(in);
  End(in);
  if (ref.property) {
    if (!ref.property->CanWrite()) throw RuntimeError(err::kPropertyReadOnly, ref.full_name);
    ref.property->set(ref.control->Control(), Evaluate(value));
  } else if (ref.control) {
    ref.control->SetExtender(ref.name, Evaluate(value));
  } else {
    ref.form->SetProperty(ref.name, Evaluate(value));
  }
}

void ScriptCommands::Get(ScriptLexer& in) {
  const Token word = Word(in, "NAME.PROPERTY");
  End(in);
  if (word.IsWord("Clipboard")) {
    PrintValue("Clipboard", Variant(host_.ClipboardText()), {});
    return;
  }
  const auto [target, member] = SplitMember(word.text, "NAME.PROPERTY");
  if (PageHost* page = FindPage(target); page && SameName(member, "Changed")) {
    PrintValue(page->Info().name + ".Changed", Variant::Boolean(page->Page().Changed()), {});
    return;
  }
  const PropertyRef ref = ResolveProperty(target, member);
  Variant value;
  if (ref.property) {
    if (!ref.property->CanRead()) throw RuntimeError(err::kPropertyWriteOnly, ref.full_name);
    value = ref.property->get(ref.control->Control());
  } else if (ref.control) {
    value = ref.control->GetExtender(ref.name);
  } else {
    value = ref.form->GetProperty(ref.name);
  }
  PrintValue(ref.full_name, value, ref.type_name);
}

// The extender's ZOrder method: 0 (or nothing) brings the control to the
// front of its container, 1 sends it to the back.
void ScriptCommands::ZOrder(HostedControl& control, const std::vector<ScriptValue>& values) {
  if (values.size() > 1) throw RuntimeError(err::kWrongArguments, "ZOrder");
  const int16_t position = values.empty() ? int16_t{0} : Integer(values[0]);
  if (position == 0) {
    control.Owner().BringToFront(control);
  } else if (position == 1) {
    control.Owner().SendToBack(control);
  } else {
    throw RuntimeError(err::kInvalidProcedureCall, "ZOrder");
  }
}

void ScriptCommands::Call(ScriptLexer& in) {
  const auto [target, member] = MemberArgument(in, "NAME.METHOD");
  HostedControl* control = FindControl(target);
  if (!control) throw ScriptError("unknown control '" + target + "'");
  const MethodInfo* method = control->Class().FindMethod(member);
  if (!method && SameName(member, "ZOrder")) {
    ZOrder(*control, Values(in));
    return;
  }
  if (!method) throw ScriptError("unknown method '" + member + "' of " + control->Class().name);
  const std::vector<ScriptValue> values = Values(in);

  if (values.size() != method->params.size()) throw RuntimeError(err::kWrongArguments, member);
  std::vector<Variant> arguments;
  for (size_t i = 0; i < values.size(); ++i) {
    const VarType type = method->params[i].type;
    Variant argument = Evaluate(values[i]);
    arguments.push_back(type == VarType::Empty ? argument : argument.ConvertTo(type));
  }
  const Variant result = method->invoke(control->Control(), arguments);

  std::string by_reference;
  for (size_t i = 0; i < arguments.size(); ++i) {
    const ParamInfo& param = method->params[i];
    if (!param.by_ref) continue;
    by_reference += by_reference.empty() ? "(" : ", ";
    by_reference += param.name + "=" + FormatValue(arguments[i], param.type_name);
  }
  if (method->return_type_name.empty() && by_reference.empty()) return;
  out_ << control->Name() << "." << method->name;
  if (!method->return_type_name.empty()) {
    out_ << " -> " << FormatValue(result, method->return_type_name);
  }
  if (!by_reference.empty()) out_ << " " << by_reference << ")";
  out_ << "\n";
}

void ScriptCommands::Size(ScriptLexer& in) {
  HostedControl& control = ControlArgument(in);
  const ScriptValue width = ValueArgument(in);
  const ScriptValue height = ValueArgument(in);
  End(in);
  control.RequestSize(Long(width), Long(height));
}

void ScriptCommands::Paint(ScriptLexer& in) {
  HostedControl& control = ControlArgument(in);
  End(in);
  host_.Repaint(control);
}

void ScriptCommands::Remove(ScriptLexer& in) {
  HostedControl& control = ControlArgument(in);
  End(in);
  host_.RemoveControl(control);
}

// ---- Input ----

void ScriptCommands::Focus(ScriptLexer& in) {
  HostedControl& control = ControlArgument(in);
  End(in);
  host_.SetFocus(&control);
}

void ScriptCommands::Type(ScriptLexer& in) {
  HostedControl& control = ControlArgument(in);
  std::optional<Token> text = in.Next();
  if (!text || !(text->Is(Token::Kind::String) || text->Is(Token::Kind::Word))) {
    throw ScriptError("expected the text to type");
  }
  End(in);
  input_.Type(control, text->text);
}

void ScriptCommands::Key(ScriptLexer& in) {
  HostedControl& control = ControlArgument(in);
  const ScriptValue code = ValueArgument(in);
  std::vector<ScriptValue> shift = Values(in);
  if (shift.size() > 1) throw ScriptError("expected CODE [SHIFT]");
  input_.PressKey(control, Integer(code), shift.empty() ? int16_t{0} : Integer(shift[0]));
}

void ScriptCommands::KeyDown(ScriptLexer& in) {
  HostedControl& control = ControlArgument(in);
  const ScriptValue code = ValueArgument(in);
  const ScriptValue shift = ValueArgument(in);
  End(in);
  input_.KeyDown(control, Integer(code), Integer(shift));
}

void ScriptCommands::KeyUp(ScriptLexer& in) {
  HostedControl& control = ControlArgument(in);
  const ScriptValue code = ValueArgument(in);
  const ScriptValue shift = ValueArgument(in);
  End(in);
  input_.KeyUp(control, Integer(code), Integer(shift));
}

void ScriptCommands::KeyPress(ScriptLexer& in) {
  HostedControl& control = ControlArgument(in);
  const ScriptValue character = ValueArgument(in);
  End(in);
  input_.KeyPress(control, Integer(character));
}

void ScriptCommands::Mouse(ScriptLexer& in) {
  HostedControl& control = ControlArgument(in);
  const Token action_word = Word(in, "down, up or move");
  MouseAction action;
  if (action_word.IsWord("down")) {
    action = MouseAction::Down;
  } else if (action_word.IsWord("up")) {
    action = MouseAction::Up;
  } else if (action_word.IsWord("move")) {
    action = MouseAction::Move;
  } else {
    throw ScriptError("expected down, up or move");
  }
  const std::vector<ScriptValue> values = Values(in);
  if (values.size() != 4) throw ScriptError("expected BUTTON SHIFT X Y");
  input_.Mouse(control, action, Integer(values[0]), Integer(values[1]), Single(values[2]),
               Single(values[3]));
}

ScriptCommands::Press ScriptCommands::PressArguments(ScriptLexer& in) {
  HostedControl& control = ControlArgument(in);
  const std::vector<ScriptValue> values = Values(in);
  if (values.size() == 3 || values.size() > 4) throw ScriptError("expected [BUTTON [SHIFT [X Y]]]");
  // The left button, no modifier, at the centre, unless the line says.
  const TwipsRect bounds = control.Bounds();
  return Press{
      .control = control,
      .button = values.size() > 0 ? Integer(values[0]) : int16_t{1},
      .shift = values.size() > 1 ? Integer(values[1]) : int16_t{0},
      .x = values.size() > 2 ? Single(values[2]) : static_cast<float>(bounds.width) / 2,
      .y = values.size() > 2 ? Single(values[3]) : static_cast<float>(bounds.height) / 2,
  };
}

void ScriptCommands::Click(ScriptLexer& in) {
  const Press press = PressArguments(in);
  input_.Click(press.control, press.button, press.shift, press.x, press.y);
}

void ScriptCommands::DblClick(ScriptLexer& in) {
  const Press press = PressArguments(in);
  input_.DblClick(press.control, press.button, press.shift, press.x, press.y);
}

// ---- The user's path: input as a window delivers it ----

Form& ScriptCommands::ActiveForm() const {
  return host_.ActiveForm() ? *host_.ActiveForm() : CurrentForm();
}

void ScriptCommands::Pointer(ScriptLexer& in) {
  const Token action = Word(in, "down, up or move");
  const ScriptValue x = ValueArgument(in);
  const ScriptValue y = ValueArgument(in);
  const std::vector<ScriptValue> rest = Values(in);
  if (rest.size() > 2) throw ScriptError("expected X Y [BUTTON [SHIFT]]");
  const int16_t button = rest.empty() ? int16_t{1} : Integer(rest[0]);
  const int16_t shift = rest.size() < 2 ? int16_t{0} : Integer(rest[1]);
  UserInput& user = host_.User();
  if (action.IsWord("down")) {
    user.PointerDown(CurrentForm(), Long(x), Long(y), button, shift);
  } else if (action.IsWord("up")) {
    user.PointerUp(CurrentForm(), Long(x), Long(y), button, shift);
  } else if (action.IsWord("move")) {
    user.PointerMove(CurrentForm(), Long(x), Long(y), shift);
  } else {
    throw ScriptError("expected down, up or move");
  }
}

void ScriptCommands::PressCommand(ScriptLexer& in) {
  const ScriptValue code = ValueArgument(in);
  const std::vector<ScriptValue> shift = Values(in);
  if (shift.size() > 1) throw ScriptError("expected CODE [SHIFT]");
  host_.User().Press(ActiveForm(), Integer(code), shift.empty() ? int16_t{0} : Integer(shift[0]));
}

void ScriptCommands::Keys(ScriptLexer& in) {
  std::optional<Token> text = in.Next();
  if (!text || !(text->Is(Token::Kind::String) || text->Is(Token::Kind::Word))) {
    throw ScriptError("expected the text to type");
  }
  End(in);
  host_.User().Keys(ActiveForm(), text->text);
}

void ScriptCommands::AccessKey(ScriptLexer& in) {
  const Token key = Word(in, "a letter or digit");
  End(in);
  if (key.text.size() != 1 || !std::isalnum(static_cast<unsigned char>(key.text[0]))) {
    throw ScriptError("expected a letter or digit");
  }
  const auto code = static_cast<int16_t>(std::toupper(static_cast<unsigned char>(key.text[0])));
  host_.User().KeyDown(ActiveForm(), code, shift::kAlt);
  host_.User().KeyUp(ActiveForm(), code, shift::kAlt);
}

void ScriptCommands::Cursor(ScriptLexer& in) {
  const ScriptValue x = ValueArgument(in);
  const ScriptValue y = ValueArgument(in);
  End(in);
  host_.SetCursorPos(Long(x), Long(y));
}

// ---- Host services ----

void ScriptCommands::Tick(ScriptLexer& in) {
  const std::vector<ScriptValue> values = Values(in);
  if (values.size() > 1) throw ScriptError("expected [N]");
  // A day of checks at the most: a script cannot hold the host for ever.
  constexpr int32_t kMaxTicks = 24 * 60 * 60 * 4;
  const int32_t count = values.empty() ? 1 : Long(values[0]);
  if (count < 0 || count > kMaxTicks) throw RuntimeError(err::kInvalidProcedureCall, "tick");
  host_.Tick(count);
}

void ScriptCommands::Popup(ScriptLexer& in) {
  const Token answer = Word(in, "choose or dismiss");
  if (answer.IsWord("dismiss")) {
    End(in);
    host_.QueuePopupAnswer(std::nullopt);
  } else if (answer.IsWord("choose")) {
    const ScriptValue index = ValueArgument(in);
    End(in);
    host_.QueuePopupAnswer(Long(index));
  } else {
    throw ScriptError("expected choose or dismiss");
  }
}

void ScriptCommands::Clipboard(ScriptLexer& in) {
  const ScriptValue value = ValueArgument(in);
  End(in);
  host_.SetClipboardText(Evaluate(value).ToString());
}

void ScriptCommands::On(ScriptLexer& in) {
  const auto [target, member] = MemberArgument(in, "NAME.EVENT");
  HostedControl* control = FindControl(target);
  if (!control) throw ScriptError("unknown control '" + target + "'");
  const EventInfo* event = control->Class().FindEvent(member);
  if (!event) throw ScriptError("unknown event '" + member + "' of " + control->Class().name);
  if (!Word(in, "set").IsWord("set")) throw ScriptError("expected set");

  std::vector<std::pair<std::string, ScriptValue>> assignments;
  bool once = false;
  while (!in.AtEnd()) {
    const Token argument = Word(in, "ARG=VALUE");
    if (argument.IsWord("once") && in.AtEnd() && !assignments.empty()) {
      once = true;
      break;
    }
    const ParamInfo* param = nullptr;
    for (const ParamInfo& p : event->params) {
      if (SameName(p.name, argument.text)) param = &p;
    }
    if (!param) throw ScriptError("unknown argument '" + argument.text + "' of " + event->name);
    if (!param->by_ref) throw ScriptError("argument '" + param->name + "' is passed by value");
    std::optional<Token> equals = in.Next();
    if (!equals || !equals->Is(Token::Kind::Equals)) throw ScriptError("expected ARG=VALUE");
    assignments.emplace_back(param->name, ValueArgument(in));
  }
  if (assignments.empty()) throw ScriptError("expected ARG=VALUE");

  std::vector<ScriptHandlers::Assignment> evaluated;
  for (const auto& [name, value] : assignments) evaluated.push_back({name, Evaluate(value)});
  handlers_.Add(control->Name(), event->name, std::move(evaluated), once);
}

void ScriptCommands::Trace(ScriptLexer& in) {
  if (!Word(in, "draw").IsWord("draw")) throw ScriptError("expected draw");
  HostedControl& control = ControlArgument(in);
  const Token state = Word(in, "on or off");
  End(in);
  if (!state.IsWord("on") && !state.IsWord("off")) throw ScriptError("expected on or off");
  control.SetDrawingObserved(state.IsWord("on"));
}

// ---- Pixels and pictures ----

void ScriptCommands::Pixel(ScriptLexer& in) {
  HostedControl& control = ControlArgument(in);
  const ScriptValue x_value = ValueArgument(in);
  const ScriptValue y_value = ValueArgument(in);
  End(in);
  const int32_t x = Long(x_value), y = Long(y_value);
  char color[8];
  std::snprintf(color, sizeof color, "#%06X", control.GetRaster().GetPixel(x, y) & 0xFFFFFFu);
  out_ << "pixel " << control.Name() << " " << x << " " << y << " = " << color << "\n";
}

void ScriptCommands::Png(ScriptLexer& in) {
  const std::string file = FileName(in);
  // A name is a control, else a whole form (a property page's).
  HostedControl* control = nullptr;
  const Form* form = &CurrentForm();
  if (!in.AtEnd()) {
    const Token name = Word(in, "a control or form name");
    control = FindControl(name.text);
    form = control ? nullptr : host_.FindForm(name.text);
    if (!control && !form) throw ScriptError("unknown control '" + name.text + "'");
  }
  End(in);
  const Raster picture = control ? RenderControl(host_, *control) : RenderForm(host_, *form);
  picture.SavePng(file);
}

void ScriptCommands::Caret(ScriptLexer& in) {
  End(in);
  const auto& caret = host_.GetCaret();
  if (!caret) {
    out_ << "caret none\n";
    return;
  }
  const Host::WindowRef window = host_.FindWindow(caret->hwnd);
  const std::string name = window.control ? window.control->Name()
                           : window.form  ? window.form->Name()
                                          : std::to_string(caret->hwnd);
  out_ << "caret " << name << " " << caret->x << " " << caret->y << " " << caret->width << " "
       << caret->height << (caret->shown ? " shown" : " hidden") << "\n";
}

void ScriptCommands::Echo(ScriptLexer& in) {
  // A quoted text prints its contents; anything else prints as written.
  ScriptLexer probe = in;
  std::optional<Token> first = probe.Next();
  if (first && first->Is(Token::Kind::String) && probe.AtEnd()) {
    out_ << first->text << "\n";
    return;
  }
  out_ << in.RestOfLine() << "\n";
}

// ---- Property pages ----

PageHost* ScriptCommands::FindPage(std::string_view name) const {
  auto it = std::find_if(pages_.begin(), pages_.end(),
                         [&](const auto& page) { return SameName(page->Info().name, name); });
  return it == pages_.end() ? nullptr : it->get();
}

void ScriptCommands::PageCommand(ScriptLexer& in) {
  const Token action = Word(in, "open, apply or close");
  const Token name = Word(in, "a page name");
  if (action.IsWord("open")) {
    OpenPage(name.text, in);
    return;
  }
  End(in);
  PageHost* page = FindPage(name.text);
  if (!page) throw ScriptError("no page '" + name.text + "' is open");
  if (action.IsWord("apply")) {
    page->ApplyChanges();
  } else if (action.IsWord("close")) {
    ClosePage(*page);
  } else {
    throw ScriptError("expected open, apply or close");
  }
}

// The page gets a form of its own, named after it, which becomes the
// active window as a dialog would; the script's current form stays.
void ScriptCommands::OpenPage(const std::string& name, ScriptLexer& in) {
  const PageInfo* info = PageRegistry::Instance().Find(name);
  if (!info) throw ScriptError("unknown page '" + name + "'");
  std::vector<HostedControl*> selected;
  while (!in.AtEnd()) selected.push_back(&ControlArgument(in));
  if (selected.empty()) throw ScriptError("expected the controls the page is opened on");
  if (PageHost* open = FindPage(info->name)) ClosePage(*open);
  Form& form = host_.CreateForm(info->name, info->width, info->height);
  form.SetCaption(info->caption);
  try {
    pages_.push_back(std::make_unique<PageHost>(host_, *info, form, selected));
  } catch (...) {
    host_.CloseForm(form);
    throw;
  }
  // A page that cannot show its selection (a control without the page's
  // properties: error 438) does not stay open half filled.
  try {
    pages_.back()->SelectionChanged();
  } catch (...) {
    ClosePage(*pages_.back());
    throw;
  }
}

void ScriptCommands::ClosePage(PageHost& page) {
  Form& form = page.Owner();
  std::erase_if(pages_, [&](const auto& open) { return open.get() == &page; });
  host_.CloseForm(form);
}

// The designer's property dialog on the controls named; its controls and
// its pages' children are PropertyDialog.NAME.
void ScriptCommands::DialogCommand(ScriptLexer& in) {
  const Token action = Word(in, "open or close");
  if (action.IsWord("close")) {
    End(in);
    dialog_.reset();
    return;
  }
  if (!action.IsWord("open")) throw ScriptError("expected open or close");
  std::vector<HostedControl*> selected;
  while (!in.AtEnd()) selected.push_back(&ControlArgument(in));
  if (selected.empty()) throw ScriptError("expected the controls the dialog is opened on");
  dialog_.reset();
  dialog_ = std::make_unique<PropertyDialog>(host_, selected);
}

}  // namespace kestu
