#pragma once
// The designer's document: one form being designed, the controls selected
// on it, and the edits a designer makes, each of which can be undone. No
// window: a designer's windows show the form and call these.
//
// Controls on the form are in design mode: they are created, and re-created
// on undo or open, with the ambient UserMode False. Undo keeps the form
// file's text from before each edit and restores it by loading it again,
// so an undo gives back exactly the file the form saved before the edit.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kestu/foundation/Variant.h"
#include "kestu/host/HostedControl.h"

namespace kestu {

class Host;
class Form;
class FormDesigner;

class DesignDocument {
 public:
  // How far a paste moves its controls when there is no grid: they land
  // beside the ones copied, not on top of them.
  static constexpr int kPasteOffsetWithoutGrid = 120;

  // A new, empty form named `form_name` (replacing one of that name).
  explicit DesignDocument(Host& host, std::string form_name = "Form1");
  DesignDocument(const DesignDocument&) = delete;
  DesignDocument& operator=(const DesignDocument&) = delete;

  Host& GetHost() const { return host_; }
  // The designer the designed form's input goes to (see Form::Designer):
  // every form the document makes or loads gets it.
  void SetFormDesigner(FormDesigner* designer);
  Form& DesignedForm() const { return *form_; }

  // ---- The document ----
  // Each starts over: no selection, nothing to undo or redo, not modified.
  void New(std::string form_name);
  // Loads a form file in place of the form of the same name; the form
  // designed until now goes. A file that does not load leaves the
  // document as it was, and the error goes to the caller.
  void Open(const std::filesystem::path& path);
  void Save(const std::filesystem::path& path);
  // An edit, undo or redo since the last New, Open or Save, or a control
  // of the form that said a property changed (a property page's apply).
  bool Modified() const;

  // ---- Edits: each can be undone ----
  // A new control of class `class_name` named after it with the first free
  // number (a placed KestuPanel3D is KestuPanel3D1, then ...2), at `rect`,
  // inside `container` when not null (a control that holds no controls is
  // error 5). It is selected alone. An unknown class is
  // std::invalid_argument: a toolbox offers only registered classes.
  HostedControl& Place(std::string_view class_name, const TwipsRect& rect,
                       HostedControl* container = nullptr);
  // Move or resize every selected control (a control inside a selected
  // container goes with it) by twips. On a grid, the new left and top, or
  // width and height, snap to the nearest grid line. A size never goes
  // below one grid step, nor below one pixel.
  void MoveSelection(int dx, int dy);
  void ResizeSelection(int dw, int dh);
  // Removes the selected controls (and what they hold).
  void DeleteSelection();
  // Assigns a property of `control`: its own or its extender's (Left,
  // Visible, ToolTipText, ...). A refused value changes nothing.
  void SetProperty(HostedControl& control, std::string_view name, const Variant& value);
  // Assigns a property of every selected control, as one edit: when one
  // refuses the value, none keeps it.
  void SetSelectedProperty(std::string_view name, const Variant& value);
  // Assigns a property of the designed form itself (Caption, BackColor,
  // ...).
  void SetFormProperty(std::string_view name, const Variant& value);
  // An edit made elsewhere, such as a property dialog's applies to the
  // selected controls: Begin keeps the form's file as it is, End makes
  // it one edit to undo when the file changed in between.
  void BeginOutsideEdit();
  void EndOutsideEdit();
  // Adds the controls of a CopySelection's text, inside `container` when
  // not null, with fresh names as Place gives them, one grid step (or
  // kPasteOffsetWithoutGrid) right of and below where they were; they
  // become the selection. A text that is no such list adds nothing and
  // is the form file's error.
  std::vector<HostedControl*> Paste(std::string_view text, HostedControl* container = nullptr);

  // Not an edit: the selected controls as a form file keeps them.
  std::string CopySelection();

  // ---- Undo ----
  // After an undo or redo the selection is the one the edit started from
  // (undo) or ended with (redo), by name. An edit that changes nothing in
  // the form's file is not kept; a new edit forgets what could be redone.
  bool CanUndo() const { return !undo_.empty(); }
  bool CanRedo() const { return !redo_.empty(); }
  // False when there is nothing to undo (or redo).
  bool Undo();
  bool Redo();

  // ---- Grid ----
  // In twips; 0 is no grid, below 0 is error 380.
  int Grid() const { return grid_; }
  void SetGrid(int twips);
  // `twips` on the nearest grid line, halves away from the left and top
  // (as it is without a grid).
  int Snap(int twips) const;

  // ---- Selection ----
  // Controls of the designed form. An undo, a redo, an Open or a New makes
  // new controls (the selection follows by name); a control removed other
  // than through the document must be deselected first.
  // Selects `control` alone, or adds it to the selection.
  void Select(HostedControl& control, bool add = false);
  void Deselect(const HostedControl& control);
  void ClearSelection() { selection_.clear(); }
  // In the order they were selected.
  const std::vector<HostedControl*>& Selected() const { return selection_; }
  bool IsSelected(const HostedControl& control) const;
  // The innermost control under form pixel (x, y), or null over the form.
  HostedControl* ControlAt(int x, int y) const;

  // The name Place would give the next control of `class_name`.
  std::string FreeName(std::string_view class_name) const;

 private:
  struct Snapshot {
    std::string text;
    std::vector<std::string> selection;
  };

  // Runs one edit: what the form's file was before it goes on the undo
  // stack when the file changed. An edit that fails puts the form back.
  template <typename Edit>
  void Change(Edit&& edit);
  Snapshot Take();
  // A property of the control's own, or of its extender.
  static void Assign(HostedControl& control, std::string_view name, const Variant& value);
  // Keeps `before` for undo when the form's file changed since.
  void Keep(Snapshot before);
  // The form again as `snapshot` holds it, in design mode.
  void Restore(const Snapshot& snapshot);
  void Forget();
  void Adopt(Form& form);
  // The selected controls not inside another selected one.
  std::vector<HostedControl*> SelectionRoots() const;

  Host& host_;
  Form* form_ = nullptr;
  FormDesigner* designer_ = nullptr;
  std::vector<HostedControl*> selection_;
  std::vector<Snapshot> undo_;
  std::vector<Snapshot> redo_;
  std::optional<Snapshot> outside_;  // the file before an outside edit
  int grid_ = 0;
  bool modified_ = false;
};

}  // namespace kestu
