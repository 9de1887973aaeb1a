#pragma once
// The script host's trace: one line per thing that happens, in the order
// it happens — events with their arguments as passed, notifications,
// beeps, popup menus, the tooltip, traced drawing calls and run-time
// errors — in the stable format users' tests compare line by line.

#include <ostream>

#include "kestu/host/HostObserver.h"

namespace kestu {

class TraceWriter : public HostObserver {
 public:
  explicit TraceWriter(std::ostream& out) : out_(out) {}

  void OnEvent(HostedControl& control, const EventInfo& event,
               std::span<EventArgument> arguments) override;
  void OnPropertyChanged(HostedControl& control, std::string_view property) override;
  void OnBeep() override;
  void OnPopup(HostedControl& control, std::span<const MenuItem> items) override;
  void OnToolWindowShown(const ToolWindow& window) override;
  void OnToolWindowHidden(const ToolWindow& window) override;
  void OnDraw(HostedControl& control, const DrawCall& call) override;
  void OnError(const RuntimeError& error) override;

 private:
  std::ostream& out_;
};

}  // namespace kestu
