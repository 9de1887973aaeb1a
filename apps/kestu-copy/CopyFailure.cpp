#include "apps/kestu-copy/CopyFailure.h"

#include <cstring>

#include "kestu/foundation/RuntimeError.h"

namespace kestu::copytool {

CopyFailure SystemFailure(const std::string& action, const std::string& path, int errno_value,
                          bool creating) {
  std::string message = action;
  message.append(" ").append(Quoted(path)).append(": ").append(std::strerror(errno_value));
  return CopyFailure(message, ErrorFromErrno(errno_value, path, creating).Number());
}

std::string Quoted(const std::string& path) {
  return std::string("'").append(path).append("'");
}

std::string FailureLine(const CopyFailure& failure) {
  return std::string("kestu-copy: ")
      .append(failure.what())
      .append(" [")
      .append(std::to_string(failure.HostNumber()))
      .append("]");
}

}  // namespace kestu::copytool
