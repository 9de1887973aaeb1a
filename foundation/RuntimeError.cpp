#include "kestu/foundation/RuntimeError.h"

#include <cerrno>
#include <utility>

namespace kestu {
namespace {

struct ErrorEntry {
  int number;
  const char* message;
};

// The host's own wording, kept letter for letter: scripts and logs compare it.
constexpr ErrorEntry kErrorTable[] = {
    {err::kInvalidProcedureCall, "Invalid procedure call or argument"},
    {err::kOverflow, "Overflow"},
    {err::kOutOfMemory, "Out of memory"},
    {err::kSubscriptOutOfRange, "Subscript out of range"},
    {err::kDivisionByZero, "Division by zero"},
    {err::kTypeMismatch, "Type mismatch"},
    {err::kBadFileNameOrNumber, "Bad file name or number"},
    {err::kFileNotFound, "File not found"},
    {err::kBadFileMode, "Bad file mode"},
    {err::kFileAlreadyOpen, "File already open"},
    {err::kDeviceIoError, "Device I/O error"},
    {err::kFileAlreadyExists, "File already exists"},
    {err::kDiskFull, "Disk full"},
    {err::kInputPastEndOfFile, "Input past end of file"},
    {err::kTooManyFiles, "Too many files"},
    {err::kDeviceUnavailable, "Device unavailable"},
    {err::kPermissionDenied, "Permission denied"},
    {err::kDiskNotReady, "Disk not ready"},
    {err::kPathFileAccessError, "Path/File access error"},
    {err::kPathNotFound, "Path not found"},
    {err::kInvalidUseOfNull, "Invalid use of Null"},
    {err::kInvalidPropertyValue, "Invalid property value"},
    {err::kInvalidPropertyArrayIndex, "Invalid property array index"},
    {err::kPropertyReadOnly, "Property is read-only"},
    {err::kPropertyWriteOnly, "Property is write-only"},
    {err::kObjectRequired, "Object required"},
    {err::kNotSupported, "Object doesn't support this property or method"},
    {err::kWrongArguments, "Wrong number of arguments or invalid property assignment"},
    {err::kInvalidPicture, "Invalid picture"},
};

std::string WhatText(int number, const std::string& detail) {
  std::string text = std::to_string(number) + " " + ErrorMessage(number);
  if (!detail.empty()) text += ": " + detail;
  return text;
}

}  // namespace

const char* ErrorMessage(int number) {
  for (const ErrorEntry& entry : kErrorTable) {
    if (entry.number == number) return entry.message;
  }
  return "Application-defined or object-defined error";
}

RuntimeError::RuntimeError(int number) : RuntimeError(number, std::string()) {}

RuntimeError::RuntimeError(int number, std::string detail)
    : std::runtime_error(WhatText(number, detail)), number_(number), detail_(std::move(detail)) {}

RuntimeError ErrorFromErrno(int errno_value, std::string detail, bool creating) {
  switch (errno_value) {
    case ENOENT:
      // Opening an existing file can only miss the file; creating one can
      // only miss the folder it goes in.
      return RuntimeError(creating ? err::kPathNotFound : err::kFileNotFound, std::move(detail));
    case ENOTDIR:
      return RuntimeError(err::kPathNotFound, std::move(detail));
    case EACCES:
    case EPERM:
    case EROFS:
    case ETXTBSY:
      return RuntimeError(err::kPermissionDenied, std::move(detail));
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return RuntimeError(err::kDiskFull, std::move(detail));
    case EMFILE:
    case ENFILE:
      return RuntimeError(err::kTooManyFiles, std::move(detail));
    case EIO:
      return RuntimeError(err::kDeviceIoError, std::move(detail));
    case ENAMETOOLONG:
    case EINVAL:
      return RuntimeError(err::kBadFileNameOrNumber, std::move(detail));
    case EEXIST:
      return RuntimeError(err::kFileAlreadyExists, std::move(detail));
    case ENOMEM:
      return RuntimeError(err::kOutOfMemory, std::move(detail));
    case ENXIO:
    case ENODEV:
      return RuntimeError(err::kDeviceUnavailable, std::move(detail));
    default:
      return RuntimeError(err::kPathFileAccessError, std::move(detail));
  }
}

}  // namespace kestu
