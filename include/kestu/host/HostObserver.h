#pragma once
// What the host reports as it runs: every control event by name, property
// notifications, beeps, popup menus, the tooltip window, drawing calls and
// run-time errors that reached the host. The script host's trace is one
// observer; a designer or a log can be others.

#include <span>
#include <string_view>

#include "kestu/foundation/ControlSite.h"
#include "kestu/foundation/Event.h"
#include "kestu/foundation/RuntimeError.h"

namespace kestu {

class HostedControl;
class ToolWindow;

class HostObserver {
 public:
  virtual ~HostObserver() = default;

  // A control raised an event; the arguments as passed, before the typed
  // handlers. An observer may assign by-reference arguments.
  virtual void OnEvent(HostedControl& /*control*/, const EventInfo& /*event*/,
                       std::span<EventArgument> /*arguments*/) {}
  // A control called PropertyChanged.
  virtual void OnPropertyChanged(HostedControl& /*control*/, std::string_view /*property*/) {}
  virtual void OnBeep() {}
  // A popup menu is about to be shown; the answer comes from the host.
  virtual void OnPopup(HostedControl& /*control*/, std::span<const MenuItem> /*items*/) {}
  // A tool window (the tooltip) appeared or went away.
  virtual void OnToolWindowShown(const ToolWindow& /*window*/) {}
  virtual void OnToolWindowHidden(const ToolWindow& /*window*/) {}
  // A drawing call of a control whose drawing is observed.
  virtual void OnDraw(HostedControl& /*control*/, const DrawCall& /*call*/) {}
  // A run-time error reached the host without a caller to take it (for
  // example an argument a handler could not assign).
  virtual void OnError(const RuntimeError& /*error*/) {}
};

}  // namespace kestu
