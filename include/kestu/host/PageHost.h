#pragma once
// A property page at work: the page's children placed on a form of the
// host (the page's own, or a property dialog's tab), the controls it was
// opened on, its dirty flag, and the children's events routed to it.
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "kestu/foundation/PropertyPage.h"
#include "kestu/host/HostObserver.h"

namespace kestu {

class Form;
class Host;
class HostedControl;

class PageHost final : public PageSite, private HostObserver {
 public:
  // Builds page `info` on `form` for the controls `selected`, its children
  // inside `container` when one is given, the page's corner at `left`,
  // `top` twips (a dialog's tab). The page's own procedures have not run
  // yet: call SelectionChanged.
  PageHost(Host& host, const PageInfo& info, Form& form,
           const std::vector<HostedControl*>& selected, HostedControl* container = nullptr,
           int left = 0, int top = 0);
  ~PageHost() override;
  PageHost(const PageHost&) = delete;
  PageHost& operator=(const PageHost&) = delete;

  const PageInfo& Info() const { return info_; }
  Form& Owner() const { return form_; }
  PropertyPage& Page() const { return *page_; }
  const std::vector<HostedControl*>& Children() const { return children_; }

  // The page's selection-changed procedure. Filling its children raises
  // their Change and Click like any edit; afterwards the page shows the
  // selection as it is, so it is not changed.
  void SelectionChanged();
  // The page's apply procedure; on success the page is no longer changed.
  // A run-time error goes on to the caller, and what was assigned before it
  // stays assigned, as in the page's own code.
  void ApplyChanges();
  // Called whenever the dirty flag changes (a dialog's Apply button).
  void SetOnChanged(std::function<void(bool)> on_changed) { on_changed_ = std::move(on_changed); }

  // ---- PageSite ----
  UserControl& AddChild(std::string_view class_name, const std::string& name, int left, int top,
                        int width, int height, UserControl* container) override;
  int SelectedCount() const override { return static_cast<int>(selected_.size()); }
  UserControl& SelectedControl(int index) const override;
  void ChangedChanged(bool changed) override;

 private:
  void OnEvent(HostedControl& control, const EventInfo& event,
               std::span<EventArgument> arguments) override;
  HostedControl* ChildHolding(const UserControl* control) const;

  Host& host_;
  const PageInfo& info_;
  Form& form_;
  HostedControl* container_;
  int left_;
  int top_;
  std::vector<int32_t> selected_;  // window handles: a control may go while the page is open
  std::vector<HostedControl*> children_;
  std::unique_ptr<PropertyPage> page_;
  std::function<void(bool)> on_changed_;
};

}  // namespace kestu
