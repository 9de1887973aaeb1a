#pragma once
// The host runtime's binary file access: one library-wide table of file
// numbers, each naming an open file with its own position, as the host's
// `Open ... For Binary As #n`, `LOF`, `EOF`, `Get`, `Put`, `Close` and
// `Dir` give them.
//
// Operating-system failures become the host's run-time errors (through
// ErrorFromErrno, with the file's name as the detail):
//   ENOENT            76 Path not found (opening creates, so only a missing
//                     folder can be missing)
//   ENOTDIR           76 Path not found
//   EACCES, EPERM,
//   EROFS             70 Permission denied
//   ENOSPC, EFBIG,
//   EDQUOT            61 Disk full
//   ENAMETOOLONG      52 Bad file name or number
//   EISDIR and others 75 Path/File access error
// and the table's own: a number outside 1..511 or not open is 52, a number
// already open is 55 File already open.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace kestu {

class HostFiles {
 public:
  // The one table of the process: file numbers are global to the library,
  // as they are to the host runtime.
  static HostFiles& Instance();

  // Lowest and highest usable file numbers.
  static constexpr int kFirstNumber = 1;
  static constexpr int kLastNumber = 511;

  HostFiles(const HostFiles&) = delete;
  HostFiles& operator=(const HostFiles&) = delete;

  // Opens `path` in binary mode with read/write access under `number`,
  // positioned at its start. A missing file is created; an existing one is
  // never truncated. Where write access to an existing file is refused it
  // is opened for reading only (writing to it then fails with 75).
  void OpenBinary(int number, const std::string& path);
  bool IsOpen(int number) const;

  // `LOF`: the file's length in bytes now.
  int64_t Length(int number) const;
  // `EOF`: whether the position has reached the file's length.
  bool AtEnd(int number) const;

  // `Get`: reads up to `buffer.size()` bytes at the position and advances
  // it; fewer come back only at the end of the file. Returns the count.
  size_t Read(int number, std::span<std::byte> buffer);
  // `Put`: writes all of `data` at the position and advances it.
  void Write(int number, std::span<const std::byte> data);
  // A `Get` of up to `count` bytes from `from` followed by a `Put` of them
  // to `to`, each at its own position. The bytes move inside the kernel
  // where the system can (as cp does), else through a buffer; the result
  // and the errors are the same either way. Returns the count moved, fewer
  // only at the end of `from`.
  size_t CopyBlock(int from, int to, size_t count);

  // `Close #n`: a number that is not open is ignored, as the host does.
  void Close(int number);
  // Closes every open number (the host's bare `Close`).
  void CloseAll();

  // `Dir(path)`: the file's name without its folder when `path` names an
  // existing file (not a folder), else "". No wildcards.
  static std::string Dir(const std::string& path);

  // The name of the file whose operation failed last, for messages;
  // empty until a failure or after ClearLastFailure.
  const std::string& LastFailedPath() const { return last_failed_path_; }
  void ClearLastFailure() { last_failed_path_.clear(); }

 private:
  // The position is the table's own count: every move of it goes through
  // this class, so no system call is needed to know it. `known_length` is
  // the length last seen, raised by our own writes.
  struct OpenFile {
    int fd = -1;
    std::string path;
    int64_t position = 0;
    mutable int64_t known_length = 0;  // a cache: refreshed by const look-ups
  };

  HostFiles() = default;
  ~HostFiles();

  OpenFile& Entry(int number);
  const OpenFile& Entry(int number) const;
  size_t CopyThroughBuffer(int from, int to, size_t count);
  // Asks the system for the file's length and remembers it.
  static int64_t RelearnLength(const OpenFile& file);
  static void Advance(OpenFile& file, size_t count);
  [[noreturn]] void Fail(int errno_value, const std::string& path, bool creating = false);

  OpenFile files_[kLastNumber + 1];
  std::vector<std::byte> block_;  // CopyBlock's buffer where the kernel cannot copy
  std::string last_failed_path_;
};

}  // namespace kestu
