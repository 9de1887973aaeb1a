#pragma once
// A line the script host cannot run: a malformed line or a name it does
// not know. The runner reports it as "file:line: message" and stops.

#include <stdexcept>
#include <string>

namespace kestu {

class ScriptError : public std::runtime_error {
 public:
  explicit ScriptError(const std::string& message) : std::runtime_error(message) {}
};

}  // namespace kestu
