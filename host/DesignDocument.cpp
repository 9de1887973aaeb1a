#include "kestu/host/DesignDocument.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <stdexcept>

#include "kestu/foundation/RuntimeError.h"
#include "kestu/foundation/Text.h"
#include "kestu/host/FormFile.h"
#include "kestu/host/Host.h"

namespace kestu {

namespace {

int Saturated(int64_t twips) {
  return static_cast<int>(std::clamp<int64_t>(twips, std::numeric_limits<int32_t>::min(),
                                              std::numeric_limits<int32_t>::max()));
}

}  // namespace

DesignDocument::DesignDocument(Host& host, std::string form_name) : host_(host) {
  New(std::move(form_name));
}

// ---- The document ----

void DesignDocument::SetFormDesigner(FormDesigner* designer) {
  designer_ = designer;
  // The form may have been closed already, the program quitting.
  if (host_.Holds(*form_)) form_->SetDesigner(designer);
}

void DesignDocument::Adopt(Form& form) {
  form_ = &form;
  form_->SetDesigner(designer_);
}

void DesignDocument::New(std::string form_name) {
  // A form of the same name is replaced anyway; another would stay behind.
  if (form_ && !SameName(form_->Name(), form_name)) host_.CloseForm(*form_);
  Adopt(host_.CreateForm(std::move(form_name)));
  Forget();
}

void DesignDocument::Open(const std::filesystem::path& path) {
  const std::string old_name = form_->Name();
  Form* opened = nullptr;
  {
    const Host::UserModeScope design(host_, false);
    opened = &LoadFormFile(host_, path);
  }
  // A form of the same name was replaced by the file's; another stays
  // behind unless it goes now.
  if (!SameName(opened->Name(), old_name)) {
    if (Form* old = host_.FindForm(old_name)) host_.CloseForm(*old);
  }
  Adopt(*opened);
  Forget();
}

void DesignDocument::Save(const std::filesystem::path& path) {
  SaveFormFile(host_, *form_, path);
  modified_ = false;
}

bool DesignDocument::Modified() const {
  return modified_ || form_->Modified();
}

void DesignDocument::Forget() {
  selection_.clear();
  outside_.reset();
  undo_.clear();
  redo_.clear();
  modified_ = false;
  form_->SetModified(false);
}

// ---- Edits ----

template <typename Edit>
void DesignDocument::Change(Edit&& edit) {
  Snapshot before = Take();
  try {
    edit();
  } catch (...) {
    // Most refusals change nothing; one that got half way (the second of
    // two controls refusing its new size) is taken back whole.
    if (FormFileText(host_, *form_) != before.text) Restore(before);
    throw;
  }
  Keep(std::move(before));
}

HostedControl& DesignDocument::Place(std::string_view class_name, const TwipsRect& rect,
                                     HostedControl* container) {
  const ClassInfo* info = ControlRegistry::Instance().Find(class_name);
  if (!info) throw std::invalid_argument("no control class is named " + std::string(class_name));
  HostedControl* placed = nullptr;
  Change([&] {
    const Host::UserModeScope design(host_, false);
    placed = &host_.NewControl(*form_, *info, FreeName(info->name), rect, container);
  });
  selection_ = {placed};
  return *placed;
}

void DesignDocument::MoveSelection(int dx, int dy) {
  const std::vector<HostedControl*> moving = SelectionRoots();
  Change([&] {
    for (HostedControl* control : moving) {
      const TwipsRect bounds = control->Bounds();
      control->SetExtender(
          "Left", Variant(static_cast<int32_t>(Snap(Saturated(int64_t{bounds.left} + dx)))));
      control->SetExtender(
          "Top", Variant(static_cast<int32_t>(Snap(Saturated(int64_t{bounds.top} + dy)))));
    }
  });
}

void DesignDocument::ResizeSelection(int dw, int dh) {
  const std::vector<HostedControl*> sizing = SelectionRoots();
  Change([&] {
    for (HostedControl* control : sizing) {
      const TwipsRect bounds = control->Bounds();
      // A size snaps like a place, but never to nothing: a control the
      // designer cannot see or grab is lost.
      const int least_width = std::max(grid_, control->TwipsPerPixelX());
      const int least_height = std::max(grid_, control->TwipsPerPixelY());
      const int width = std::max(Snap(Saturated(int64_t{bounds.width} + dw)), least_width);
      const int height = std::max(Snap(Saturated(int64_t{bounds.height} + dh)), least_height);
      control->SetExtender("Width", Variant(static_cast<int32_t>(width)));
      control->SetExtender("Height", Variant(static_cast<int32_t>(height)));
    }
  });
}

void DesignDocument::DeleteSelection() {
  const std::vector<HostedControl*> going = SelectionRoots();
  Change([&] {
    // By lifetime: a control's Terminate may take another with it.
    std::vector<std::pair<std::weak_ptr<int>, HostedControl*>> controls;
    for (HostedControl* control : going) controls.emplace_back(control->Lifetime(), control);
    selection_.clear();
    for (auto& [alive, control] : controls) {
      if (!alive.expired()) host_.RemoveControl(*control);
    }
  });
}

void DesignDocument::SetSelectedProperty(std::string_view name, const Variant& value) {
  const std::vector<HostedControl*> selected = selection_;
  Change([&] {
    for (HostedControl* control : selected) Assign(*control, name, value);
  });
}

void DesignDocument::SetFormProperty(std::string_view name, const Variant& value) {
  Change([&] { form_->SetProperty(name, value); });
}

void DesignDocument::BeginOutsideEdit() {
  outside_ = Take();
}

void DesignDocument::EndOutsideEdit() {
  if (!outside_) return;
  Snapshot before = std::move(*outside_);
  outside_.reset();
  Keep(std::move(before));
}

void DesignDocument::Keep(Snapshot before) {
  if (FormFileText(host_, *form_) == before.text) return;
  undo_.push_back(std::move(before));
  redo_.clear();
  modified_ = true;
}

void DesignDocument::SetProperty(HostedControl& control, std::string_view name,
                                 const Variant& value) {
  Change([&] { Assign(control, name, value); });
}

void DesignDocument::Assign(HostedControl& control, std::string_view name, const Variant& value) {
  if (HostedControl::ExtenderName(name)) {
    control.SetExtender(name, value);
  } else {
    control.Control().SetProperty(name, value);
  }
}

std::vector<HostedControl*> DesignDocument::Paste(std::string_view text, HostedControl* container) {
  const int offset = grid_ > 0 ? grid_ : kPasteOffsetWithoutGrid;
  std::vector<HostedControl*> pasted;
  Change([&] {
    const Host::UserModeScope design(host_, false);
    pasted = AddControlsText(
        host_, *form_, text, "the pasted controls", container,
        [this](const ClassInfo& info) { return FreeName(info.name); }, offset, offset);
  });
  selection_ = pasted;
  return pasted;
}

std::string DesignDocument::CopySelection() {
  return ControlsFileText(host_, *form_, selection_);
}

// ---- Undo ----

DesignDocument::Snapshot DesignDocument::Take() {
  Snapshot snapshot{FormFileText(host_, *form_), {}};
  for (const HostedControl* control : selection_) snapshot.selection.push_back(control->Name());
  return snapshot;
}

void DesignDocument::Restore(const Snapshot& snapshot) {
  {
    const Host::UserModeScope design(host_, false);
    // The text is one this form saved, so it loads; the old form goes as
    // the new one comes in, under the same name.
    Adopt(LoadFormText(host_, snapshot.text, form_->Name() + " (undo)"));
  }
  selection_.clear();
  for (const std::string& name : snapshot.selection) {
    if (HostedControl* control = form_->FindControl(name)) selection_.push_back(control);
  }
}

bool DesignDocument::Undo() {
  if (undo_.empty()) return false;
  Snapshot now = Take();
  Restore(undo_.back());
  undo_.pop_back();
  redo_.push_back(std::move(now));
  modified_ = true;
  return true;
}

bool DesignDocument::Redo() {
  if (redo_.empty()) return false;
  Snapshot now = Take();
  Restore(redo_.back());
  redo_.pop_back();
  undo_.push_back(std::move(now));
  modified_ = true;
  return true;
}

// ---- Grid ----

void DesignDocument::SetGrid(int twips) {
  if (twips < 0) throw RuntimeError(err::kInvalidPropertyValue, "the grid");
  grid_ = twips;
}

int DesignDocument::Snap(int twips) const {
  if (grid_ <= 0) return twips;
  // To the nearest line, a half way up: floor((twips + grid / 2) / grid)
  // lines, on either side of 0 alike.
  const int64_t shifted = int64_t{twips} + grid_ / 2;
  int64_t lines = shifted / grid_;
  if (shifted % grid_ != 0 && shifted < 0) --lines;
  return Saturated(lines * grid_);
}

// ---- Selection ----

void DesignDocument::Select(HostedControl& control, bool add) {
  if (!add) selection_.clear();
  if (!IsSelected(control)) selection_.push_back(&control);
}

void DesignDocument::Deselect(const HostedControl& control) {
  std::erase(selection_, &control);
}

bool DesignDocument::IsSelected(const HostedControl& control) const {
  return std::find(selection_.begin(), selection_.end(), &control) != selection_.end();
}

HostedControl* DesignDocument::ControlAt(int x, int y) const {
  return form_->ControlAt(x, y);
}

std::vector<HostedControl*> DesignDocument::SelectionRoots() const {
  std::vector<HostedControl*> roots;
  for (HostedControl* control : selection_) {
    bool inside_selected = false;
    for (const HostedControl* outer = control->Container(); outer; outer = outer->Container()) {
      inside_selected = inside_selected || IsSelected(*outer);
    }
    if (!inside_selected) roots.push_back(control);
  }
  return roots;
}

std::string DesignDocument::FreeName(std::string_view class_name) const {
  for (int64_t number = 1;; ++number) {
    std::string name(class_name);
    name += std::to_string(number);
    if (!form_->FindControl(name)) return name;
  }
}

}  // namespace kestu
