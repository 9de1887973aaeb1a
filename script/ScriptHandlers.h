#pragma once
// The script's `on NAME.EVENT set ARG=VALUE [once]` handlers: when the
// named control raises the event, each listed by-reference argument is
// assigned before the control goes on. An assignment that does not fit
// the argument's type is reported as a run-time error and the event goes
// on with the argument as it was.

#include <string>
#include <utility>
#include <vector>

#include "kestu/host/HostObserver.h"

namespace kestu {

class Host;

class ScriptHandlers : public HostObserver {
 public:
  struct Assignment {
    std::string argument;
    Variant value;
  };

  explicit ScriptHandlers(Host& host) : host_(host) {}

  void Add(std::string control_name, std::string event_name, std::vector<Assignment> assignments,
           bool once);

  void OnEvent(HostedControl& control, const EventInfo& event,
               std::span<EventArgument> arguments) override;

 private:
  struct Handler {
    std::string control_name;
    std::string event_name;
    std::vector<Assignment> assignments;
    bool once = false;
    bool spent = false;
  };
  void Apply(const Handler& handler, std::span<EventArgument> arguments);

  Host& host_;
  std::vector<Handler> handlers_;
};

}  // namespace kestu
