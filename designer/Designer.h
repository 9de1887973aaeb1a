#pragma once
// The designer: a window of its own (a toolbar of commands, the toolbox,
// the property grid with its editors and help) over a DesignDocument,
// whose form shows in a window of its own with its controls in design
// mode. Everything it does goes through the host, so it runs headless as
// well as on a desktop; a window loop calls AfterTurn between turns.

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "designer/PropertyRows.h"
#include "designer/PropertyText.h"
#include "kestu/host/DesignDocument.h"
#include "kestu/host/FormDesigner.h"
#include "kestu/host/HostObserver.h"

namespace kestu {

class PropertyDialog;
class PropertyGrid;

class Designer final : private FormDesigner, private HostObserver {
 public:
  static constexpr const char* kFormName = "Designer";
  static constexpr const char* kRunFormSuffix = "_Run";
  // The grid a new designer snaps to, in twips (8 pixels).
  static constexpr int kDefaultGrid = 120;

  // The designer's window over a new form, or over `file` when it exists
  // (a file that does not load is the caller's error). Saving without a
  // file asks for a name.
  explicit Designer(Host& host, const std::filesystem::path& file = {});
  ~Designer() override;
  Designer(const Designer&) = delete;
  Designer& operator=(const Designer&) = delete;

  DesignDocument& Document() { return document_; }
  Form& Window() const { return *window_; }
  const std::filesystem::path& File() const { return file_; }
  // "Kestu Designer - NAME", with " *" while the form has unsaved changes.
  std::string Title() const;

  // ---- Commands: the toolbar's buttons, the menus and the keys ----
  // New and Open ask first whether to save a modified form.
  void NewForm();
  void OpenForm();
  void Save();
  void SaveAs();
  void Undo();
  void Redo();
  void Copy();
  void Cut();
  void Paste();
  void Delete();
  // The property dialog on the selected controls.
  void ShowPages();
  // The designed form in run mode, in a second window (again: afresh).
  void Run();
  // The toolbox: the next press on the form places a `class_name`
  // (empty: the pointer, which selects).
  void Arm(const std::string& class_name);
  const std::string& Armed() const { return armed_; }
  // Asks to save a modified form, then closes every window: the loop
  // ends. False while the user is being asked.
  bool Quit();

  // ---- The property grid ----
  // The rows shown: the first selected control's properties, or the
  // form's when nothing is selected.
  const PropertyGrid& Grid() const { return *grid_; }
  void ChooseProperty(std::string_view name);
  // Assigns `text` to the chosen property as its editor reads it; the
  // control's or the editor's error shows in the status line.
  void EnterValue(std::string_view text);
  // The help of the chosen property, and the status line.
  std::string HelpText() const;
  std::string StatusText() const;

  // The question open now (save changes, a file name), if any.
  bool Asking() const { return static_cast<bool>(ask_); }
  // Answers it as its button `caption` would, with `typed` in its box
  // (nothing: what the box holds).
  void Answer(std::string_view caption, std::string_view typed = {});

  // Between turns of the window loop: lets a finished dialog go and brings
  // the grid and the title up to date.
  void AfterTurn();

 private:
  struct Ask;

  // ---- FormDesigner ----
  bool KeyDown(int16_t key_code, int16_t shift) override;
  void PointerAt(Pointer action, int x, int y, int16_t buttons, int16_t shift,
                 bool double_click) override;
  const std::vector<DesignMark>& Marks() const override { return marks_; }

  // ---- HostObserver ----
  void OnEvent(HostedControl& control, const EventInfo& event,
               std::span<EventArgument> arguments) override;
  void OnPropertyChanged(HostedControl& control, std::string_view property) override;

  void BuildWindow();
  void BuildToolbar();
  void BuildToolbox(int top);
  void BuildInspector(int left, int top);
  HostedControl& AddChild(const char* class_name, const std::string& name, int left, int top,
                          int width, int height, HostedControl* container = nullptr);
  void ToolbarCommand(const std::string& name);
  // A toolbox button let go: armed, or dropped on the form.
  void ToolReleased(const HostedControl& tool, const std::string& class_name);

  void PressOnForm(int x, int y, int16_t button, int16_t shift, bool double_click);
  void DragOnForm(int x, int y);
  void ReleaseOnForm(int x, int y);
  void ContextMenu(HostedControl& control);
  // The innermost container at form pixel (x, y), or null for the form.
  HostedControl* ContainerAt(int x, int y) const;
  void PlaceDrawn(const PixelRect& drawn);
  void SelectInside(const PixelRect& band, bool add);
  void UpdateMarks();
  void Edited();

  void RefreshGrid();
  void ShowEditor();
  void SetStatus(std::string text);
  // Runs `command`; a run-time error it raises goes to the status line.
  void Try(const std::function<void()>& command);

  // Runs `then` once the form's changes are saved or given up (asking
  // first when there are any); never when the user cancels.
  void AfterSaving(std::function<void()> then);
  void AskFileName(const std::string& caption, std::function<void(std::filesystem::path)> then);
  void AskQuestion(const std::string& question, std::vector<std::string> buttons,
                   std::function<void(const std::string&, const std::string&)> then,
                   std::optional<std::string> typed = std::nullopt);
  void OpenFile(const std::filesystem::path& path);
  // Opens `path`, refusing a form named as one of the designer's own
  // windows, which it would replace.
  void OpenChecked(const std::filesystem::path& path);
  // The class of the first selected control, whose grid is shown; an
  // empty class for the form.
  const ClassInfo& SelectedClass() const;
  // Closes every window of the host: the loop ends.
  void CloseEverything();
  void SaveTo(const std::filesystem::path& path);

  Host& host_;
  DesignDocument document_;
  std::filesystem::path file_;
  Form* window_ = nullptr;
  PropertyGrid* grid_ = nullptr;
  HostedControl* grid_site_ = nullptr;
  HostedControl* selection_label_ = nullptr;
  HostedControl* value_box_ = nullptr;
  HostedControl* value_list_ = nullptr;
  HostedControl* help_label_ = nullptr;
  HostedControl* status_label_ = nullptr;
  std::vector<HostedControl*> toolbar_buttons_;
  std::vector<std::pair<HostedControl*, std::string>> toolbox_buttons_;
  std::vector<PropertyRow> rows_;
  std::string armed_;
  std::string status_;
  std::vector<DesignMark> marks_;
  std::unique_ptr<PropertyDialog> dialog_;
  std::unique_ptr<Ask> ask_;

  // What a press on the form started.
  enum class Drag { None, Move, Resize, Draw, Band };
  Drag drag_ = Drag::None;
  int handle_ = 0;          // for Resize: 1 right, 2 bottom, 3 both
  bool band_adds_ = false;  // for Band: Shift or Ctrl was held, the band adds
  int press_x_ = 0;
  int press_y_ = 0;
  int drag_x_ = 0;
  int drag_y_ = 0;
  bool grid_stale_ = true;
  bool filling_editor_ = false;
};

}  // namespace kestu
