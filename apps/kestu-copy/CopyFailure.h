#pragma once
// A failure of the copy, worded for the user, with the error number the
// file copier control gives for the same fault, so that scripts written
// against the control's numbers keep working.

#include <stdexcept>
#include <string>

namespace kestu::copytool {

class CopyFailure : public std::runtime_error {
 public:
  CopyFailure(const std::string& message, int host_number)
      : std::runtime_error(message), host_number_(host_number) {}

  int HostNumber() const { return host_number_; }

 private:
  int host_number_;
};

// "cannot open 'x': No such file or directory" with the number for
// `errno_value`. `creating`: the file was to be made, so a missing name is
// a missing folder.
CopyFailure SystemFailure(const std::string& action, const std::string& path, int errno_value,
                          bool creating = false);

// "'path'", as every message quotes a file.
std::string Quoted(const std::string& path);

// The one line printed for a failure: "kestu-copy: MESSAGE [N]".
std::string FailureLine(const CopyFailure& failure);

}  // namespace kestu::copytool
