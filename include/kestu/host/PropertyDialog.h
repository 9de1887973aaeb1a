#pragma once
// The property dialog a designer opens on its selected controls: the first
// control's property pages as tabs, its own pages first and the library's
// About page last, over OK, Cancel and Apply. Apply is enabled while the
// page shown is changed; OK applies every changed page and closes; Cancel
// closes. It is a form of the host named "PropertyDialog", made of the
// registered dialog controls, so it runs in a real window and headless.
#include <memory>
#include <vector>

#include "kestu/host/HostObserver.h"
#include "kestu/host/PageHost.h"

namespace kestu {

class Form;
class Host;
class HostedControl;

class PropertyDialog final : private HostObserver {
 public:
  static constexpr const char* kFormName = "PropertyDialog";

  // Opens the dialog on `selected` (at least one control), showing the
  // first tab. Error 5 for an empty selection.
  PropertyDialog(Host& host, const std::vector<HostedControl*>& selected);
  // Closes the form when it is still open.
  ~PropertyDialog() override;
  PropertyDialog(const PropertyDialog&) = delete;
  PropertyDialog& operator=(const PropertyDialog&) = delete;

  Form& Window() const { return *form_; }
  // OK or Cancel was pressed, or the window was closed: the owner lets the
  // dialog go at its next quiet moment (not inside the click that ended it).
  bool Done() const;
  const std::vector<std::unique_ptr<PageHost>>& Pages() const { return pages_; }
  int CurrentTab() const { return current_; }
  void ShowTab(int index);

 private:
  void OnEvent(HostedControl& control, const EventInfo& event,
               std::span<EventArgument> arguments) override;
  void Layout(const std::vector<HostedControl*>& selected);
  void AddButtons(int top, int right);
  // Applies every changed page; false when one raised (it is reported and
  // the dialog stays open).
  bool ApplyAll();
  void UpdateApply();

  Host& host_;
  Form* form_ = nullptr;
  HostedControl* tabs_ = nullptr;
  HostedControl* ok_ = nullptr;
  HostedControl* cancel_ = nullptr;
  HostedControl* apply_ = nullptr;
  std::vector<std::unique_ptr<PageHost>> pages_;
  int current_ = -1;
  bool done_ = false;
};

}  // namespace kestu
