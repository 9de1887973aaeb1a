#include "designer/Designer.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <nlohmann/json.hpp>

#include "designer/PixelLayout.h"
#include "designer/PropertyGrid.h"
#include "designer/PropertyRows.h"
#include "designer/QuestionWindow.h"
#include "kestu/foundation/Keys.h"
#include "kestu/foundation/RuntimeError.h"
#include "kestu/foundation/StdPicture.h"
#include "kestu/foundation/Text.h"
#include "kestu/foundation/ToolboxIcon.h"
#include "kestu/host/Form.h"
#include "kestu/host/FormFile.h"
#include "kestu/host/Host.h"
#include "kestu/host/PropertyDialog.h"
#include "raster/Clip.h"

namespace kestu {

namespace {

// The designer's window, in pixels.
constexpr int kWindowWidth = 600;
constexpr int kWindowHeight = 470;
constexpr int kMargin = 6;
constexpr int kToolboxWidth = 168;
constexpr int kToolboxButtonHeight = 26;
constexpr int kGridRows = 16;
constexpr int kEditorHeight = 21;
// Selection handles: squares this wide centred on the edges they drag.
constexpr int kHandle = 6;
constexpr Rgb kHandleColor = 0x000000;
constexpr Rgb kFrameColor = 0x000080;
constexpr Rgb kGhostColor = 0x808080;

constexpr int16_t kF4 = 115;
constexpr int16_t kF5 = 116;

struct Command {
  const char* name;
  const char* caption;
  int width;
  const char* tip;
};

// The toolbar, left to right.
constexpr Command kCommands[] = {
    {"tbNew", "New", 40, "New form (Ctrl+N)"},
    {"tbOpen", "Open", 44, "Open a form file (Ctrl+O)"},
    {"tbSave", "Save", 42, "Save the form (Ctrl+S)"},
    {"tbSaveAs", "Save As", 58, "Save the form under another name"},
    {"tbUndo", "Undo", 44, "Undo (Ctrl+Z)"},
    {"tbRedo", "Redo", 44, "Redo (Ctrl+Y)"},
    {"tbCopy", "Copy", 44, "Copy (Ctrl+C)"},
    {"tbPaste", "Paste", 46, "Paste (Ctrl+V)"},
    {"tbDelete", "Delete", 50, "Delete (Del)"},
    {"tbPages", "Properties", 72, "Property pages (F4 or a double-click)"},
    {"tbRun", "Run", 40, "Run the form (F5)"},
};

// A toolbar button sizes itself to its picture when placed: the
// designer's carry captions, so they keep the size they were given.
void KeepSize(HostedControl& button, int width, int height) {
  button.Control().SetProperty("AutoSize", Variant::Boolean(false));
  const int tx = button.TwipsPerPixelX();
  const int ty = button.TwipsPerPixelY();
  button.SetExtender("Width", static_cast<int32_t>(width * tx));
  button.SetExtender("Height", static_cast<int32_t>(height * ty));
}

// A method of a control the designer made itself, so known to be there.
void CallMethod(UserControl& control, std::string_view name, std::vector<Variant> arguments) {
  control.Class().FindMethod(name)->invoke(control, arguments);
}

PixelRect Normalized(int x1, int y1, int x2, int y2) {
  return {std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2)};
}

PixelRect Frame(const PixelRect& r) {
  return {r.left - 1, r.top - 1, r.right + 1, r.bottom + 1};
}

// The sizing handles of a control at `r`: each square and the edges it
// drags (1 the right, 2 the bottom, 3 both). Only these size a control,
// so only these are drawn.
struct SizingHandle {
  PixelRect square;
  int edges;
};
std::array<SizingHandle, 3> HandlesOf(const PixelRect& r) {
  const auto square = [](int x, int y) {
    return PixelRect{x - kHandle / 2, y - kHandle / 2, x + kHandle / 2, y + kHandle / 2};
  };
  return {{{square(r.right, r.bottom), 3},
           {square(r.right, (r.top + r.bottom) / 2), 1},
           {square((r.left + r.right) / 2, r.bottom), 2}}};
}

bool Overlaps(const PixelRect& a, const PixelRect& b) {
  return !IsEmpty(Intersect(a, b));
}

// Form names the designer's own windows take: a form file of one of these
// names would replace one of them.
bool ReservedFormName(std::string_view name) {
  for (const char* own :
       {Designer::kFormName, QuestionWindow::kFormName, PropertyDialog::kFormName}) {
    if (SameName(name, own)) return true;
  }
  return false;
}

// The name of the form a form file holds, without loading it; nothing
// when the file cannot say (loading it will say why).
std::optional<std::string> FormNameIn(const std::filesystem::path& path) {
  std::ifstream in(path);
  const nlohmann::json file = nlohmann::json::parse(in, nullptr, /*allow_exceptions=*/false);
  if (!file.is_object() || !file.contains("Name") || !file["Name"].is_string()) return {};
  return file["Name"].get<std::string>();
}

}  // namespace

// A question open, and what to do with its answer.
struct Designer::Ask {
  std::unique_ptr<QuestionWindow> window;
  std::function<void(const std::string&, const std::string&)> then;
};

Designer::Designer(Host& host, const std::filesystem::path& file) : host_(host), document_(host) {
  document_.SetGrid(kDefaultGrid);
  document_.SetFormDesigner(this);
  try {
    BuildWindow();
    if (!file.empty() && std::filesystem::exists(file)) OpenChecked(file);
  } catch (...) {
    // Nothing may point at a designer that never was: its window goes,
    // and the designed form stays with the host without it.
    document_.SetFormDesigner(nullptr);
    if (window_ && host_.Holds(*window_)) host_.CloseForm(*window_);
    throw;
  }
  file_ = file;
  host_.AddObserver(this);
  AfterTurn();
}

Designer::~Designer() {
  host_.RemoveObserver(this);
  dialog_.reset();
  document_.SetFormDesigner(nullptr);
}

std::string Designer::Title() const {
  const std::string name =
      file_.empty() ? document_.DesignedForm().Name() : file_.filename().string();
  return std::string("Kestu Designer - ") + name + (document_.Modified() ? " *" : "");
}

// ---- The window ----

HostedControl& Designer::AddChild(const char* class_name, const std::string& name, int left,
                                  int top, int width, int height, HostedControl* container) {
  return PlaceInPixels(host_, *window_, class_name, name, left, top, width, height, container);
}

void Designer::BuildWindow() {
  window_ = &host_.CreateForm(kFormName, kWindowWidth * host_.TwipsPerPixelX(),
                              kWindowHeight * host_.TwipsPerPixelY());
  // The designer's own controls run, whatever the form it designs is.
  const Host::UserModeScope run(host_, true);
  BuildToolbar();
  const int top = window_->FindControl("tbrMain")->Bounds().height / host_.TwipsPerPixelY();
  BuildToolbox(top + kMargin);
  BuildInspector(kMargin + kToolboxWidth + kMargin, top + kMargin);
  // The form being designed comes up in front, where the work is.
  host_.Activate(&document_.DesignedForm());
}

void Designer::BuildToolbar() {
  HostedControl& bar = AddChild("KestuTBBar", "tbrMain", 0, 0, kWindowWidth, 30);
  const int height = bar.Bounds().height / host_.TwipsPerPixelY();
  int left = 12;
  for (const Command& command : kCommands) {
    HostedControl& button =
        AddChild("KestuTBButton", command.name, left, 3, command.width, height - 6, &bar);
    KeepSize(button, command.width, height - 6);
    button.Control().SetProperty("Caption", command.caption);
    button.SetExtender("ToolTipText", command.tip);
    toolbar_buttons_.push_back(&button);
    left += command.width + 2;
  }
}

void Designer::BuildToolbox(int top) {
  std::vector<const ClassInfo*> classes;
  for (const ClassInfo* info : ControlRegistry::Instance().Classes()) {
    if (!info->toolbox_icon.empty()) classes.push_back(info);
  }
  std::sort(classes.begin(), classes.end(),
            [](const ClassInfo* a, const ClassInfo* b) { return a->name < b->name; });
  const auto add = [&](const std::string& name, const std::string& caption,
                       const std::optional<StdPicture>& picture, const std::string& armed) {
    HostedControl& button =
        AddChild("KestuTBButton", name, kMargin, top, kToolboxWidth, kToolboxButtonHeight);
    KeepSize(button, kToolboxWidth, kToolboxButtonHeight);
    button.Control().SetProperty("Caption", caption);
    button.Control().SetProperty("PictPosition", static_cast<int16_t>(2));  // left
    if (picture) {
      button.Control().SetProperty("Picture",
                                   Variant(std::make_shared<const StdPicture>(*picture)));
    }
    toolbox_buttons_.emplace_back(&button, armed);
    top += kToolboxButtonHeight;
  };
  add("tbxPointer", "Pointer", std::nullopt, "");
  for (const ClassInfo* info : classes) {
    add("tbx" + info->name, info->name, ToolboxIconPicture(info->toolbox_icon), info->name);
  }
}

void Designer::BuildInspector(int left, int top) {
  const int width = kWindowWidth - left - kMargin;
  selection_label_ = &AddChild("Label", "lblSelection", left, top, width, 16);
  top += 18;
  const int grid_height = kGridRows * PropertyGrid::kRowHeight + 2;
  grid_site_ = &PlaceInPixels(host_, *window_, PropertyGrid::Info(), "grdProperties", left, top,
                              width, grid_height);
  grid_ = static_cast<PropertyGrid*>(&grid_site_->Control());
  grid_->SetOnChosen([this](int) { ShowEditor(); });
  top += grid_height + 4;
  const int box_width = width * 2 / 5;
  value_box_ = &AddChild("TextBox", "txtValue", left, top, box_width - 4, kEditorHeight);
  value_list_ =
      &AddChild("ComboBox", "cboValue", left + box_width, top, width - box_width, kEditorHeight);
  top += kEditorHeight + 6;
  help_label_ = &AddChild("Label", "lblHelp", left, top, width, 48);
  help_label_->Control().SetProperty("WordWrap", Variant::Boolean(true));
  status_label_ =
      &AddChild("Label", "lblStatus", kMargin, kWindowHeight - 22, kWindowWidth - 2 * kMargin, 16);
  for (HostedControl* label : {selection_label_, help_label_, status_label_}) {
    label->Control().SetProperty("Caption", "");
  }
}

// ---- Commands ----

void Designer::Try(const std::function<void()>& command) {
  try {
    command();
  } catch (const RuntimeError& error) {
    SetStatus(std::string("Error ") + error.what());
  } catch (const std::exception& error) {
    SetStatus(error.what());
  }
  Edited();
}

void Designer::SetStatus(std::string text) {
  status_ = std::move(text);
  if (status_label_) status_label_->Control().SetProperty("Caption", status_);
}

void Designer::Edited() {
  grid_stale_ = true;
  UpdateMarks();
}

void Designer::NewForm() {
  AfterSaving([this] {
    document_.New("Form1");
    file_.clear();
    SetStatus("New form");
    Edited();
  });
}

void Designer::OpenForm() {
  AfterSaving([this] {
    AskFileName("Open", [this](const std::filesystem::path& path) { OpenFile(path); });
  });
}

void Designer::OpenChecked(const std::filesystem::path& path) {
  if (const std::optional<std::string> name = FormNameIn(path); name && ReservedFormName(*name)) {
    throw std::invalid_argument(path.string() + ": the form's name " + *name +
                                " is one of the designer's own windows; rename the form");
  }
  document_.Open(path);
}

void Designer::OpenFile(const std::filesystem::path& path) {
  Try([&] {
    OpenChecked(path);
    file_ = path;
    SetStatus("Opened " + path.string());
  });
}

void Designer::Save() {
  if (file_.empty()) {
    SaveAs();
  } else {
    SaveTo(file_);
  }
}

void Designer::SaveAs() {
  AskFileName("Save As", [this](const std::filesystem::path& path) { SaveTo(path); });
}

void Designer::SaveTo(const std::filesystem::path& path) {
  Try([&] {
    document_.Save(path);
    file_ = path;
    SetStatus("Saved " + path.string());
  });
}

void Designer::Undo() {
  Try([&] {
    if (!document_.Undo()) SetStatus("Nothing to undo");
  });
}

void Designer::Redo() {
  Try([&] {
    if (!document_.Redo()) SetStatus("Nothing to redo");
  });
}

void Designer::Copy() {
  if (document_.Selected().empty()) return;
  Try([&] { host_.SetClipboardText(document_.CopySelection()); });
}

void Designer::Cut() {
  Copy();
  Delete();
}

void Designer::Paste() {
  // Into the one selected container, else onto the form.
  HostedControl* container = nullptr;
  const auto& selected = document_.Selected();
  if (selected.size() == 1 && selected.front()->Class().is_container) container = selected.front();
  Try([&] { document_.Paste(host_.ClipboardText(), container); });
}

void Designer::Delete() {
  Try([&] { document_.DeleteSelection(); });
}

void Designer::ShowPages() {
  if (dialog_) return;
  if (document_.Selected().empty()) {
    SetStatus("Select a control to show its property pages");
    return;
  }
  // The dialog's applies are one edit: undone together.
  document_.BeginOutsideEdit();
  Try([&] { dialog_ = std::make_unique<PropertyDialog>(host_, document_.Selected()); });
  if (!dialog_) document_.EndOutsideEdit();
}

void Designer::Run() {
  Try([&] {
    Form& designed = document_.DesignedForm();
    nlohmann::ordered_json form = nlohmann::ordered_json::parse(FormFileText(host_, designed));
    const std::string name = designed.Name() + kRunFormSuffix;
    form["Name"] = name;
    form["Caption"] = designed.Caption() + " (Run)";
    const Host::UserModeScope run(host_, true);
    LoadFormText(host_, form.dump(), name);
  });
}

void Designer::Arm(const std::string& class_name) {
  armed_ = class_name;
  for (const auto& [button, armed] : toolbox_buttons_) {
    // The armed tool reads bold, as a pressed-in tool would look.
    FontRef font = std::make_shared<StdFont>(*host_.DefaultFont());
    font->Bold = armed == armed_;
    button->Control().SetProperty("Font", Variant(font));
  }
  SetStatus(armed_.empty() ? std::string()
                           : "Draw a " + armed_ + " on the form, or click where it goes");
}

void Designer::ToolReleased(const HostedControl& tool, const std::string& class_name) {
  // A tool clicks on every release. Over itself it is armed, to be drawn
  // on the form; dragged onto the form, it drops a control there.
  Arm(class_name);
  const POINTAPI at = host_.CursorPos();
  const PixelRect form = document_.DesignedForm().ScreenRect();
  const std::optional<PixelRect> own = host_.WindowScreenRect(tool.hWnd());
  if (class_name.empty() || dialog_ || ask_ || !Contains(form, at.x, at.y)) return;
  if (own && Contains(*own, at.x, at.y)) return;
  press_x_ = at.x - form.left;
  press_y_ = at.y - form.top;
  PlaceDrawn({press_x_, press_y_, press_x_, press_y_});
  Edited();
}

bool Designer::Quit() {
  AfterSaving([this] { CloseEverything(); });
  return window_ == nullptr;
}

void Designer::CloseEverything() {
  dialog_.reset();
  ask_.reset();
  std::vector<Form*> forms;
  for (const auto& form : host_.Forms()) forms.push_back(form.get());
  for (Form* form : forms) {
    if (form != &document_.DesignedForm()) host_.CloseForm(*form);
  }
  document_.SetFormDesigner(nullptr);
  host_.CloseForm(document_.DesignedForm());
  window_ = nullptr;
}

void Designer::ToolbarCommand(const std::string& name) {
  using Action = void (Designer::*)();
  static const std::pair<const char*, Action> kActions[] = {
      {"tbNew", &Designer::NewForm},   {"tbOpen", &Designer::OpenForm},
      {"tbSave", &Designer::Save},     {"tbSaveAs", &Designer::SaveAs},
      {"tbUndo", &Designer::Undo},     {"tbRedo", &Designer::Redo},
      {"tbCopy", &Designer::Copy},     {"tbPaste", &Designer::Paste},
      {"tbDelete", &Designer::Delete}, {"tbPages", &Designer::ShowPages},
      {"tbRun", &Designer::Run},
  };
  for (const auto& [command, action] : kActions) {
    if (name == command) (this->*action)();
  }
}

// ---- Questions ----

void Designer::AskQuestion(const std::string& question, std::vector<std::string> buttons,
                           std::function<void(const std::string&, const std::string&)> then,
                           std::optional<std::string> typed) {
  if (ask_) return;
  auto window = std::make_unique<QuestionWindow>(host_, question, buttons, typed);
  ask_ = std::make_unique<Ask>(Ask{std::move(window), std::move(then)});
}

void Designer::Answer(std::string_view caption, std::string_view typed) {
  if (!ask_) return;
  const std::unique_ptr<Ask> ask = std::move(ask_);
  const std::string text = typed.empty() ? ask->window->Typed() : std::string(typed);
  ask->window.reset();  // closed before what the answer leads to
  ask->then(std::string(caption), text);
}

void Designer::AskFileName(const std::string& caption,
                           std::function<void(std::filesystem::path)> then) {
  const std::string initial =
      file_.empty() ? document_.DesignedForm().Name() + ".json" : file_.string();
  AskQuestion(
      caption + ": the form file's name", {"OK", "Cancel"},
      [then = std::move(then)](const std::string& button, const std::string& typed) {
        if (button == "OK" && !typed.empty()) then(typed);
      },
      initial);
}

void Designer::AfterSaving(std::function<void()> then) {
  if (!document_.Modified()) {
    then();
    return;
  }
  AskQuestion("Save the changes to " + document_.DesignedForm().Name() + "?",
              {"Yes", "No", "Cancel"},
              [this, then = std::move(then)](const std::string& button, const std::string&) {
                if (button == "No") then();
                if (button != "Yes") return;
                // Going on only once saved: a save that failed keeps the form.
                const auto save_then = [this, then](const std::filesystem::path& path) {
                  SaveTo(path);
                  if (!document_.Modified()) then();
                };
                if (file_.empty()) {
                  AskFileName("Save As", save_then);
                } else {
                  save_then(file_);
                }
              });
}

// ---- The grid ----

void Designer::RefreshGrid() {
  grid_stale_ = false;
  const auto& selected = document_.Selected();
  std::string caption;
  if (selected.empty()) {
    rows_ = PropertyRowsOf(document_.DesignedForm());
    caption = document_.DesignedForm().Name() + "  (form)";
  } else {
    rows_ = PropertyRowsOf(*selected.front());
    caption = selected.front()->Name() + "  (" + selected.front()->Class().name + ")";
    if (selected.size() > 1) caption += "  and " + std::to_string(selected.size() - 1) + " more";
  }
  selection_label_->Control().SetProperty("Caption", caption);
  std::vector<PropertyGrid::Row> shown;
  for (const PropertyRow& row : rows_) shown.push_back({row.property.name, row.value});
  grid_->SetRows(std::move(shown));
  ShowEditor();
}

void Designer::ShowEditor() {
  const int chosen = grid_->Chosen();
  if (chosen < 0 || chosen >= static_cast<int>(rows_.size())) return;
  const PropertyRow& entry = rows_[static_cast<size_t>(chosen)];
  const std::string& value = entry.value;
  const PropertyEditor editor = EditorFor(SelectedClass(), entry.property);
  filling_editor_ = true;
  value_box_->Control().SetProperty("Text", value);
  value_box_->Control().SetProperty("Enabled", Variant::Boolean(!entry.read_only));
  UserControl& list = value_list_->Control();
  CallMethod(list, "Clear", {});
  for (const std::string& choice : editor.choices) CallMethod(list, "AddItem", {choice, Variant()});
  const auto found = std::find(editor.choices.begin(), editor.choices.end(), value);
  list.SetProperty(
      "ListIndex",
      static_cast<int16_t>(found == editor.choices.end() ? -1 : found - editor.choices.begin()));
  value_list_->SetExtender("Visible", Variant::Boolean(!editor.choices.empty()));
  list.SetProperty("Enabled", Variant::Boolean(!entry.read_only));
  filling_editor_ = false;
  help_label_->Control().SetProperty("Caption", entry.property.help);
}

void Designer::ChooseProperty(std::string_view name) {
  if (grid_stale_) RefreshGrid();
  for (size_t i = 0; i < rows_.size(); ++i) {
    if (SameName(rows_[i].property.name, name)) grid_->Choose(static_cast<int>(i));
  }
}

void Designer::EnterValue(std::string_view text) {
  if (dialog_ || ask_) return;  // the form waits for the window open on it
  if (grid_stale_) RefreshGrid();
  const int chosen = grid_->Chosen();
  if (chosen < 0 || chosen >= static_cast<int>(rows_.size())) return;
  const PropertyRow entry = rows_[static_cast<size_t>(chosen)];
  if (entry.read_only) return;
  const std::filesystem::path base =
      file_.empty() ? std::filesystem::current_path() : file_.parent_path();
  SetStatus("");
  Try([&] {
    const Variant value = ParseValue(SelectedClass(), entry.property, text, base);
    if (document_.Selected().empty()) {
      document_.SetFormProperty(entry.property.name, value);
    } else {
      document_.SetSelectedProperty(entry.property.name, value);
    }
  });
}

std::string Designer::HelpText() const {
  return help_label_->Control().GetProperty("Caption").ToString();
}

std::string Designer::StatusText() const {
  return status_;
}

// ---- The loop ----

void Designer::AfterTurn() {
  if (!window_) return;
  if (dialog_ && dialog_->Done()) {
    dialog_.reset();
    document_.EndOutsideEdit();
    Edited();
  }
  if (ask_) {
    if (const std::optional<std::string> answer = ask_->window->Answer()) Answer(*answer);
  }
  if (!window_) return;
  if (grid_stale_) RefreshGrid();
  UpdateMarks();
  window_->SetCaption(Title());
}

void Designer::OnEvent(HostedControl& control, const EventInfo& event,
                       std::span<EventArgument> arguments) {
  if (!window_) return;
  if (ask_ && ask_->window->Holds(control)) {
    if (event.name == "Click") ask_->window->Clicked(control);
    return;
  }
  if (&control.Owner() != window_) return;
  if (event.name == "Click") {
    for (const auto& [button, armed] : toolbox_buttons_) {
      if (button == &control) ToolReleased(control, armed);
    }
  }
  if (dialog_) return;  // the property dialog is open: the form waits for it
  if (&control == value_list_ && event.name == "Click" && !filling_editor_) {
    const std::string chosen = control.Control().GetProperty("Text").ToString();
    if (!chosen.empty()) EnterValue(chosen);
    return;
  }
  if (&control == value_box_ && event.name == "KeyPress" && !arguments.empty() &&
      arguments.front().ref.Get().ToLong() == key::kEnter) {
    arguments.front().ref.Set(static_cast<int16_t>(0));
    EnterValue(control.Control().GetProperty("Text").ToString());
    return;
  }
  if (event.name != "Click") return;
  for (HostedControl* button : toolbar_buttons_) {
    if (button == &control) ToolbarCommand(control.Name());
  }
}

void Designer::OnPropertyChanged(HostedControl& control, std::string_view /*property*/) {
  if (&control.Owner() == &document_.DesignedForm()) grid_stale_ = true;
}

// ---- The designed form ----

bool Designer::KeyDown(int16_t key_code, int16_t shift) {
  if (dialog_ || ask_) return true;
  const bool ctrl = (shift & shift::kCtrl) != 0;
  const bool sized = (shift & shift::kShift) != 0;
  const Form& form = document_.DesignedForm();
  const int step_x = document_.Grid() ? document_.Grid() : form.TwipsPerPixelX();
  const int step_y = document_.Grid() ? document_.Grid() : form.TwipsPerPixelY();
  int dx = 0;
  int dy = 0;
  switch (key_code) {
    case key::kLeft:
      dx = -step_x;
      break;
    case key::kRight:
      dx = step_x;
      break;
    case key::kUp:
      dy = -step_y;
      break;
    case key::kDown:
      dy = step_y;
      break;
    case key::kDelete:
      Delete();
      return true;
    case key::kEscape:
      Arm("");
      document_.ClearSelection();
      Edited();
      return true;
    case key::kEnter:
    case kF4:
      ShowPages();
      return true;
    case kF5:
      Run();
      return true;
    default:
      break;
  }
  if (dx != 0 || dy != 0) {
    if (document_.Selected().empty()) return true;
    Try([&] { sized ? document_.ResizeSelection(dx, dy) : document_.MoveSelection(dx, dy); });
    return true;
  }
  if (!ctrl) return false;
  switch (key_code) {
    case 'A':
      document_.ClearSelection();
      for (HostedControl* control : form.ChildrenOf(nullptr)) document_.Select(*control, true);
      Edited();
      return true;
    case 'C':
      Copy();
      return true;
    case 'X':
      Cut();
      return true;
    case 'V':
      Paste();
      return true;
    case 'Z':
      sized ? Redo() : Undo();
      return true;
    case 'Y':
      Redo();
      return true;
    case 'S':
      Save();
      return true;
    case 'N':
      NewForm();
      return true;
    case 'O':
      OpenForm();
      return true;
    default:
      return false;
  }
}

void Designer::PointerAt(Pointer action, int x, int y, int16_t buttons, int16_t shift,
                         bool double_click) {
  if (dialog_ || ask_) return;
  switch (action) {
    case Pointer::Down:
      PressOnForm(x, y, buttons, shift, double_click);
      break;
    case Pointer::Move:
      if (drag_ != Drag::None) DragOnForm(x, y);
      break;
    case Pointer::Up:
      if (buttons == button::kLeft) ReleaseOnForm(x, y);
      // The menu opens on the release, as a context menu does: its own
      // loop would otherwise take the release away from the host.
      if (buttons == button::kRight) {
        if (HostedControl* hit = document_.ControlAt(x, y)) ContextMenu(*hit);
      }
      break;
  }
}

void Designer::PressOnForm(int x, int y, int16_t button, int16_t shift, bool double_click) {
  press_x_ = drag_x_ = x;
  press_y_ = drag_y_ = y;
  drag_ = Drag::None;
  HostedControl* hit = document_.ControlAt(x, y);
  if (button == button::kRight) {
    if (hit && !document_.IsSelected(*hit)) document_.Select(*hit);
    Edited();
    return;
  }
  if (button != button::kLeft) return;
  if (!armed_.empty()) {
    drag_ = Drag::Draw;
    return;
  }
  if (double_click && hit) {
    document_.Select(*hit);
    Edited();
    ShowPages();
    return;
  }
  for (HostedControl* control : document_.Selected()) {
    for (const SizingHandle& handle : HandlesOf(control->PixelBoundsOnForm())) {
      if (!Contains(handle.square, x, y)) continue;
      handle_ = handle.edges;
      drag_ = Drag::Resize;
      return;
    }
  }
  const bool adding = (shift & (shift::kShift | shift::kCtrl)) != 0;
  band_adds_ = adding;
  if (!hit) {
    if (!adding) document_.ClearSelection();
    drag_ = Drag::Band;
  } else if (adding && document_.IsSelected(*hit)) {
    document_.Deselect(*hit);
  } else {
    if (!document_.IsSelected(*hit)) document_.Select(*hit, adding);
    drag_ = Drag::Move;
  }
  Edited();
}

void Designer::DragOnForm(int x, int y) {
  drag_x_ = x;
  drag_y_ = y;
  UpdateMarks();
}

void Designer::ReleaseOnForm(int x, int y) {
  const Drag drag = std::exchange(drag_, Drag::None);
  const Form& form = document_.DesignedForm();
  const int dx = (x - press_x_) * form.TwipsPerPixelX();
  const int dy = (y - press_y_) * form.TwipsPerPixelY();
  switch (drag) {
    case Drag::Move:
      if (dx != 0 || dy != 0) Try([&] { document_.MoveSelection(dx, dy); });
      break;
    case Drag::Resize:
      // A handle pressed and let go where it was sizes nothing: no edit.
      if (dx != 0 || dy != 0) {
        Try([&] { document_.ResizeSelection(handle_ & 1 ? dx : 0, handle_ & 2 ? dy : 0); });
      }
      break;
    case Drag::Draw:
      PlaceDrawn(Normalized(press_x_, press_y_, x, y));
      break;
    case Drag::Band:
      SelectInside(Normalized(press_x_, press_y_, x, y), band_adds_);
      break;
    case Drag::None:
      break;
  }
  Edited();
}

HostedControl* Designer::ContainerAt(int x, int y) const {
  HostedControl* control = document_.ControlAt(x, y);
  while (control && !control->Class().is_container) control = control->Container();
  return control;
}

void Designer::PlaceDrawn(const PixelRect& drawn) {
  const std::string class_name = armed_;
  Arm("");
  const ClassInfo* info = ControlRegistry::Instance().Find(class_name);
  if (!info) return;
  const Form& form = document_.DesignedForm();
  const int tx = form.TwipsPerPixelX();
  const int ty = form.TwipsPerPixelY();
  HostedControl* container = ContainerAt(press_x_, press_y_);
  const PixelRect origin = container ? container->PixelBoundsOnForm() : PixelRect{};
  const int grid = document_.Grid();
  const auto snap = [this](int twips) { return document_.Snap(twips); };
  TwipsRect rect{snap((drawn.left - origin.left) * tx), snap((drawn.top - origin.top) * ty),
                 snap((drawn.right - drawn.left) * tx), snap((drawn.bottom - drawn.top) * ty)};
  // A click without a rectangle places the class's own size there.
  constexpr int kLeastDrawn = 3;
  if (drawn.right - drawn.left < kLeastDrawn && drawn.bottom - drawn.top < kLeastDrawn) {
    rect.width = info->default_width;
    rect.height = info->default_height;
  }
  rect.width = std::max(rect.width, std::max(grid, tx));
  rect.height = std::max(rect.height, std::max(grid, ty));
  Try([&] {
    document_.Place(class_name, rect, container);
    SetStatus("Placed " + document_.Selected().front()->Name());
  });
}

void Designer::SelectInside(const PixelRect& band, bool add) {
  if (!add) document_.ClearSelection();
  if (band.right - band.left < 2 && band.bottom - band.top < 2) return;
  for (HostedControl* control : document_.DesignedForm().ChildrenOf(nullptr)) {
    if (Overlaps(control->PixelBoundsOnForm(), band)) document_.Select(*control, true);
  }
}

void Designer::ContextMenu(HostedControl& control) {
  const MenuItem items[] = {
      {"&Properties...", true}, {"-", true}, {"Cu&t", true}, {"&Copy", true}, {"&Delete", true}};
  const std::optional<int> chosen = host_.ShowPopupMenu(control, items);
  if (!chosen) return;
  switch (*chosen) {
    case 0:
      ShowPages();
      break;
    case 2:
      Cut();
      break;
    case 3:
      Copy();
      break;
    case 4:
      Delete();
      break;
    default:
      break;
  }
}

const ClassInfo& Designer::SelectedClass() const {
  static const ClassInfo kForm;  // the form's properties: no enumerations of a class
  const auto& selected = document_.Selected();
  return selected.empty() ? kForm : selected.front()->Class();
}

void Designer::UpdateMarks() {
  std::vector<DesignMark> marks;
  const int dx = drag_x_ - press_x_;
  const int dy = drag_y_ - press_y_;
  for (HostedControl* control : document_.Selected()) {
    const PixelRect r = control->PixelBoundsOnForm();
    marks.push_back({Frame(r), kFrameColor, false});
    for (const SizingHandle& handle : HandlesOf(r)) {
      marks.push_back({handle.square, kHandleColor, true});
    }
    // Where the drag would put it: an outline, the control moving only
    // when the button comes up, as one edit.
    if (drag_ == Drag::Move && (dx != 0 || dy != 0)) {
      marks.push_back({{r.left + dx, r.top + dy, r.right + dx, r.bottom + dy}, kGhostColor, false});
    } else if (drag_ == Drag::Resize) {
      marks.push_back({{r.left, r.top, handle_ & 1 ? r.right + dx : r.right,
                        handle_ & 2 ? r.bottom + dy : r.bottom},
                       kGhostColor,
                       false});
    }
  }
  if (drag_ == Drag::Draw || drag_ == Drag::Band) {
    marks.push_back({Normalized(press_x_, press_y_, drag_x_, drag_y_), kGhostColor, false});
  }
  marks_ = std::move(marks);
}

}  // namespace kestu
