#include "kestu/foundation/HostFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "kestu/foundation/RuntimeError.h"

namespace kestu {

namespace {

bool RefusesWriting(int errno_value) {
  return errno_value == EACCES || errno_value == EPERM || errno_value == EROFS ||
         errno_value == ETXTBSY;
}

bool ExistsAsFile(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0 && !S_ISDIR(info.st_mode);
}

}  // namespace

HostFiles& HostFiles::Instance() {
  static HostFiles files;
  return files;
}

HostFiles::~HostFiles() {
  CloseAll();
}

HostFiles::OpenFile& HostFiles::Entry(int number) {
  if (number < kFirstNumber || number > kLastNumber || files_[number].fd < 0) {
    throw RuntimeError(err::kBadFileNameOrNumber, "#" + std::to_string(number));
  }
  return files_[number];
}

const HostFiles::OpenFile& HostFiles::Entry(int number) const {
  return const_cast<HostFiles*>(this)->Entry(number);
}

void HostFiles::Fail(int errno_value, const std::string& path, bool creating) {
  last_failed_path_ = path;
  throw ErrorFromErrno(errno_value, path, creating);
}

void HostFiles::OpenBinary(int number, const std::string& path) {
  if (number < kFirstNumber || number > kLastNumber) {
    throw RuntimeError(err::kBadFileNameOrNumber, "#" + std::to_string(number));
  }
  if (files_[number].fd >= 0) {
    last_failed_path_ = path;
    throw RuntimeError(err::kFileAlreadyOpen, path);
  }
  if (path.empty()) {
    last_failed_path_ = path;
    throw RuntimeError(err::kBadFileNameOrNumber, path);
  }
  // Creating but never truncating: a target longer than what is written
  // keeps its tail.
  int fd = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
  if (fd < 0) {
    const int refused = errno;  // before the look-up below overwrites it
    if (RefusesWriting(refused) && ExistsAsFile(path)) {
      fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    }
    if (fd < 0) Fail(refused, path, /*creating=*/true);
  }
  files_[number] = OpenFile{fd, path};  // the table owns it before the look-up can fail
  RelearnLength(files_[number]);
}

bool HostFiles::IsOpen(int number) const {
  return number >= kFirstNumber && number <= kLastNumber && files_[number].fd >= 0;
}

int64_t HostFiles::RelearnLength(const OpenFile& file) {
  struct stat info {};
  if (::fstat(file.fd, &info) != 0) {
    throw ErrorFromErrno(errno, file.path);
  }
  file.known_length = static_cast<int64_t>(info.st_size);
  return file.known_length;
}

int64_t HostFiles::Length(int number) const {
  return RelearnLength(Entry(number));
}

// Asked once per block of a copy, so the length is looked up only where the
// answer could be "at the end": before that point a file can only have
// grown, or have shrunk under us, which the next short read notices.
bool HostFiles::AtEnd(int number) const {
  const OpenFile& file = Entry(number);
  if (file.position < file.known_length) return false;
  return file.position >= Length(number);
}

// Whatever moved the position, the file holds at least that many bytes.
void HostFiles::Advance(OpenFile& file, size_t count) {
  file.position += static_cast<int64_t>(count);
  file.known_length = std::max(file.known_length, file.position);
}

size_t HostFiles::Read(int number, std::span<std::byte> buffer) {
  OpenFile& file = Entry(number);
  size_t done = 0;
  while (done < buffer.size()) {
    const ssize_t got = ::read(file.fd, buffer.data() + done, buffer.size() - done);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) Fail(errno, file.path);
    if (got == 0) break;  // the end of a file that shrank under us
    done += static_cast<size_t>(got);
  }
  Advance(file, done);
  if (done < buffer.size()) RelearnLength(file);  // cut short under us
  return done;
}

void HostFiles::Write(int number, std::span<const std::byte> data) {
  OpenFile& file = Entry(number);
  size_t done = 0;
  while (done < data.size()) {
    const ssize_t put = ::write(file.fd, data.data() + done, data.size() - done);
    if (put < 0 && errno == EINTR) continue;
    // A descriptor opened read-only refuses with EBADF: the host calls that
    // a path/file access error, not a bad file number.
    if (put < 0 && errno == EBADF) {
      last_failed_path_ = file.path;
      throw RuntimeError(err::kPathFileAccessError, file.path);
    }
    if (put < 0) Fail(errno, file.path);
    if (put == 0) Fail(ENOSPC, file.path);  // a device that takes nothing more is full
    done += static_cast<size_t>(put);
    Advance(file, static_cast<size_t>(put));
  }
}

size_t HostFiles::CopyBlock(int from, int to, size_t count) {
  OpenFile& source = Entry(from);
  OpenFile& target = Entry(to);
  size_t done = 0;
  while (done < count) {
    const ssize_t moved =
        ::copy_file_range(source.fd, nullptr, target.fd, nullptr, count - done, 0);
    if (moved < 0 && errno == EINTR) continue;
    if (moved < 0 && (errno == ENOSPC || errno == EFBIG || errno == EDQUOT || errno == EIO)) {
      Fail(errno, target.path);
    }
    // Devices, pipes, read-only targets and file systems the kernel cannot
    // copy between: the rest goes through the buffer, which also gives
    // their refusals the host's numbers.
    if (moved < 0) return done + CopyThroughBuffer(from, to, count - done);
    if (moved == 0) break;  // the end of a source that shrank
    done += static_cast<size_t>(moved);
    // The kernel moves both descriptors' positions, as a Get and a Put do.
    Advance(source, static_cast<size_t>(moved));
    Advance(target, static_cast<size_t>(moved));
  }
  if (done < count) RelearnLength(source);
  return done;
}

size_t HostFiles::CopyThroughBuffer(int from, int to, size_t count) {
  block_.resize(count);
  const size_t got = Read(from, block_);
  Write(to, std::span(block_).first(got));
  return got;
}

void HostFiles::Close(int number) {
  if (!IsOpen(number)) return;
  ::close(files_[number].fd);
  files_[number] = OpenFile{};
}

void HostFiles::CloseAll() {
  for (int number = kFirstNumber; number <= kLastNumber; ++number) Close(number);
}

std::string HostFiles::Dir(const std::string& path) {
  if (path.empty() || !ExistsAsFile(path)) return {};
  const size_t slash = path.find_last_of('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

}  // namespace kestu
