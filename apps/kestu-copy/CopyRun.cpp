#include "apps/kestu-copy/CopyRun.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>

#include "apps/kestu-copy/CopyFailure.h"
#include "apps/kestu-copy/Interrupt.h"

namespace kestu::copytool {

namespace {

// How far a pipe or a device is read: to its end, whenever that comes.
constexpr int64_t kUnbounded = std::numeric_limits<int64_t>::max() / 2;

class Descriptor {
 public:
  explicit Descriptor(int fd) : fd_(fd) {}
  ~Descriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int get() const { return fd_; }

 private:
  int fd_;
};

bool IsRegular(int fd) {
  struct stat info {};
  return ::fstat(fd, &info) == 0 && S_ISREG(info.st_mode);
}

// Errors that only writing can give, though the kernel's copy does not say
// which end failed.
bool IsWriteError(int errno_value) {
  switch (errno_value) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
    case EROFS:
    case EPERM:
    case EPIPE:
      return true;
    default:
      return false;
  }
}

}  // namespace

CopyRun::~CopyRun() {
  if (target_fd_ >= 0) ::close(target_fd_);
}

CopyRun::Outcome CopyRun::Run() {
  try {
    for (const SourceFile& source : plan_.sources) CopySource(source);
    CloseTarget();
  } catch (const MoveInterrupted&) {
    return Outcome::Interrupted;
  }
  RemoveLeftovers();
  return Outcome::Done;
}

void CopyRun::CopySource(const SourceFile& source) {
  if (plan_.source_is_set) observer_.VolumeOpened(source.path);
  const Descriptor in(::open(source.path.c_str(), O_RDONLY | O_CLOEXEC));
  if (in.get() < 0) throw SystemFailure("cannot open", source.path, errno);
  // The first target is created only once the first source is open, and
  // even when there is nothing to copy: an empty source gives an empty file.
  if (volume_number_ == 0) OpenNextTarget();
  const auto count = [this](int64_t bytes) {
    bytes_copied_ += bytes;
    observer_.BytesCopied(bytes);
  };
  for (int64_t offset = 0;;) {
    const int64_t left = (source.regular ? source.size : kUnbounded) - offset;
    if (left <= 0) return;
    // Only now, with bytes left for it, is the next volume created: a set
    // never ends in an empty volume.
    if (room_ == 0) {
      CloseTarget();
      OpenNextTarget();
    }
    const int64_t wanted = std::min(left, room_);
    const ByteMover::Kind kind = !source.regular || !target_regular_ ? ByteMover::Kind::Stream
                                 : source.has_holes                  ? ByteMover::Kind::SparseFiles
                                                                     : ByteMover::Kind::Files;
    ByteMover mover(in.get(), target_fd_, kind, count);
    int64_t moved = 0;
    try {
      moved = mover.Move(offset, wanted);
    } catch (const MoveError& error) {
      ReportMoveError(error, source.path);
    }
    if (moved > 0) target_ends_in_hole_ = mover.EndsInHole();
    offset += moved;
    room_ -= moved;
    if (moved < wanted) return;  // the source ended before its size
  }
}

void CopyRun::OpenNextTarget() {
  ++volume_number_;
  target_path_ = plan_.targets.Name(volume_number_);
  if (plan_.targets.IsSet()) observer_.VolumeOpened(target_path_);
  const int flags = O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | (plan_.no_clobber ? O_EXCL : 0);
  target_fd_ = ::open(target_path_.c_str(), flags, plan_.create_mode);
  if (target_fd_ < 0) {
    // A pipe's open waits for a reader; Ctrl+C ends the wait.
    if (errno == EINTR && InterruptRequested()) throw MoveInterrupted{};
    const int error = errno;
    throw SystemFailure(error == EEXIST ? "not overwriting" : "cannot create", target_path_, error,
                        true);
  }
  target_regular_ = IsRegular(target_fd_);
  target_ends_in_hole_ = false;
  room_ = plan_.volume_bytes;
}

// A hole at the end of a volume exists only once the volume's length is
// set; close() is where a file system reports a write it had deferred.
void CopyRun::CloseTarget() {
  const int fd = target_fd_;
  target_fd_ = -1;
  int error = 0;
  if (target_ends_in_hole_) {
    const off_t length = ::lseek(fd, 0, SEEK_CUR);
    if (length < 0 || ::ftruncate(fd, length) != 0) error = errno;
  }
  if (::close(fd) != 0 && error == 0) error = errno;
  if (error != 0) throw SystemFailure("cannot write", target_path_, error);
}

void CopyRun::RemoveLeftovers() const {
  const int64_t last = plan_.volume_count + plan_.leftover_count;
  for (int64_t number = volume_number_ + 1; number <= last; ++number) {
    const std::string path = plan_.targets.Name(number);
    if (::unlink(path.c_str()) != 0 && errno != ENOENT) {
      throw SystemFailure("cannot remove", path, errno);
    }
  }
}

void CopyRun::ReportMoveError(const MoveError& error, const std::string& source) const {
  const bool target_failed = error.end == FailedEnd::Target ||
                             (error.end == FailedEnd::Either && IsWriteError(error.errno_value));
  if (target_failed) throw SystemFailure("cannot write", target_path_, error.errno_value);
  if (error.end == FailedEnd::Source) throw SystemFailure("cannot read", source, error.errno_value);
  throw SystemFailure("cannot copy " + Quoted(source) + " to", target_path_, error.errno_value);
}

}  // namespace kestu::copytool
