#include "kestu/host/PageHost.h"

#include <algorithm>
#include <stdexcept>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/RuntimeError.h"
#include "kestu/host/Host.h"

namespace kestu {

PageHost::PageHost(Host& host, const PageInfo& info, Form& form,
                   const std::vector<HostedControl*>& selected, HostedControl* container, int left,
                   int top)
    : host_(host), info_(info), form_(form), container_(container), left_(left), top_(top) {
  for (const HostedControl* control : selected) selected_.push_back(control->hWnd());
  host_.AddObserver(this);
  // A page runs while its form is designed: its children are in run mode
  // whatever mode the host gives new controls.
  const Host::UserModeScope run(host_, true);
  try {
    page_ = info_.create(*this);
  } catch (...) {
    host_.RemoveObserver(this);
    throw;
  }
}

PageHost::~PageHost() {
  host_.RemoveObserver(this);
}

void PageHost::SelectionChanged() {
  page_->PropertyPage_SelectionChanged();
  page_->SetChanged(false);
}

void PageHost::ApplyChanges() {
  page_->PropertyPage_ApplyChanges();
  page_->SetChanged(false);
}

UserControl& PageHost::AddChild(std::string_view class_name, const std::string& name, int left,
                                int top, int width, int height, UserControl* container) {
  const ClassInfo& info = ControlRegistry::Instance().Require(class_name, info_.name);
  HostedControl* inside = container ? ChildHolding(container) : container_;
  // The page's corner is where it sits; inside a frame of its own the
  // place is the frame's.
  if (!container) {
    left += left_;
    top += top_;
  }
  HostedControl& child =
      host_.NewControl(form_, info, name, TwipsRect{left, top, width, height}, inside);
  children_.push_back(&child);
  return child.Control();
}

UserControl& PageHost::SelectedControl(int index) const {
  if (index < 0 || index >= SelectedCount()) {
    throw RuntimeError(err::kInvalidPropertyArrayIndex, "SelectedControls");
  }
  HostedControl* control = host_.FindWindow(selected_[index]).control;
  if (!control) throw RuntimeError(err::kObjectRequired, "SelectedControls");
  return control->Control();
}

void PageHost::ChangedChanged(bool changed) {
  if (on_changed_) on_changed_(changed);
}

void PageHost::OnEvent(HostedControl& control, const EventInfo& event,
                       std::span<EventArgument> /*arguments*/) {
  // Events while the page is still being built are its own set-up.
  if (!page_ || !ChildHolding(&control.Control())) return;
  page_->ChildEvent(control.Control(), event);
}

HostedControl* PageHost::ChildHolding(const UserControl* control) const {
  auto it = std::find_if(children_.begin(), children_.end(),
                         [&](const HostedControl* child) { return &child->Control() == control; });
  return it == children_.end() ? nullptr : *it;
}

}  // namespace kestu
