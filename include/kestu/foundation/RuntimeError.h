#pragma once
// Run-time errors of the host runtime: the library throws these where the
// host would raise, carrying the host's own number and message.

#include <stdexcept>
#include <string>

namespace kestu {

// Well-known host error numbers used across the library.
namespace err {
inline constexpr int kInvalidProcedureCall = 5;
inline constexpr int kOverflow = 6;
inline constexpr int kOutOfMemory = 7;
inline constexpr int kSubscriptOutOfRange = 9;
inline constexpr int kDivisionByZero = 11;
inline constexpr int kTypeMismatch = 13;
inline constexpr int kBadFileNameOrNumber = 52;
inline constexpr int kFileNotFound = 53;
inline constexpr int kBadFileMode = 54;
inline constexpr int kFileAlreadyOpen = 55;
inline constexpr int kDeviceIoError = 57;
inline constexpr int kFileAlreadyExists = 58;
inline constexpr int kDiskFull = 61;
inline constexpr int kInputPastEndOfFile = 62;
inline constexpr int kTooManyFiles = 67;
inline constexpr int kDeviceUnavailable = 68;
inline constexpr int kPermissionDenied = 70;
inline constexpr int kDiskNotReady = 71;
inline constexpr int kPathFileAccessError = 75;
inline constexpr int kPathNotFound = 76;
inline constexpr int kInvalidUseOfNull = 94;
inline constexpr int kInvalidPropertyValue = 380;
inline constexpr int kInvalidPropertyArrayIndex = 381;
inline constexpr int kPropertyReadOnly = 383;
inline constexpr int kPropertyWriteOnly = 394;
inline constexpr int kObjectRequired = 424;
inline constexpr int kNotSupported = 438;
inline constexpr int kWrongArguments = 450;
inline constexpr int kInvalidPicture = 481;
}  // namespace err

// The host's message for an error number ("Overflow" for 6); numbers the
// table does not know give "Application-defined or object-defined error".
const char* ErrorMessage(int number);

// A host run-time error. `what()` is "N Message[: detail]".
class RuntimeError : public std::runtime_error {
 public:
  explicit RuntimeError(int number);
  // `detail` names what failed (a file, a control, a key); the host's
  // message is kept as it is and the detail follows it.
  RuntimeError(int number, std::string detail);

  int Number() const { return number_; }
  const char* Message() const { return ErrorMessage(number_); }
  const std::string& Detail() const { return detail_; }

 private:
  int number_;
  std::string detail_;
};

// The host's error for a failed file operation, from the system's errno:
// ENOENT is 53 "File not found", or 76 "Path not found" when `creating`;
// EACCES 70, ENOSPC 61, a bad name 52, anything unforeseen 75.
RuntimeError ErrorFromErrno(int errno_value, std::string detail, bool creating = false);

}  // namespace kestu
