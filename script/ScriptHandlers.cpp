#include "script/ScriptHandlers.h"

#include "kestu/foundation/Text.h"
#include "kestu/host/Host.h"

namespace kestu {

void ScriptHandlers::Add(std::string control_name, std::string event_name,
                         std::vector<Assignment> assignments, bool once) {
  handlers_.push_back(
      Handler{std::move(control_name), std::move(event_name), std::move(assignments), once});
}

void ScriptHandlers::OnEvent(HostedControl& control, const EventInfo& event,
                             std::span<EventArgument> arguments) {
  for (Handler& handler : handlers_) {
    if (handler.spent || !SameName(handler.control_name, control.Name()) ||
        !SameName(handler.event_name, event.name)) {
      continue;
    }
    if (handler.once) handler.spent = true;
    Apply(handler, arguments);
  }
  std::erase_if(handlers_, [](const Handler& h) { return h.spent; });
}

void ScriptHandlers::Apply(const Handler& handler, std::span<EventArgument> arguments) {
  for (const Assignment& assignment : handler.assignments) {
    for (EventArgument& argument : arguments) {
      if (!SameName(argument.param->name, assignment.argument)) continue;
      host_.RunReportingErrors([&] { argument.ref.Set(assignment.value); });
    }
  }
}

}  // namespace kestu
