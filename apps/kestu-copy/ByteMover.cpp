#include "apps/kestu-copy/ByteMover.h"

#include <fcntl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "apps/kestu-copy/Interrupt.h"

namespace kestu::copytool {

namespace {

// A step between two looks at Ctrl+C and two moves of the bar: long enough
// that the system calls cost nothing next to the bytes.
constexpr int64_t kRegularStepBytes = int64_t{8} << 20;
// Into a pipe or a device a step is short: a step that began just after
// Ctrl+C was heard goes on to its end, and into a pipe nobody reads that
// can be a long wait.
constexpr int64_t kStreamStepBytes = int64_t{256} << 10;
constexpr size_t kBufferBytes = size_t{1} << 20;

// The errors that mean "not this way between these files", not a fault.
bool KernelCopyUnsupported(int errno_value) {
  switch (errno_value) {
    case EXDEV:
    case EINVAL:
    case ENOSYS:
    case EOPNOTSUPP:
    case EBADF:
      return true;
    default:
      return false;
  }
}

// A call that came back for Ctrl+C is tried again unless Ctrl+C asked to
// stop; any other error is a fault.
void TryAgainOrStop(int errno_value, FailedEnd end) {
  if (errno_value != EINTR) throw MoveError{errno_value, end};
  if (InterruptRequested()) throw MoveInterrupted{};
}

}  // namespace

ByteMover::ByteMover(int source, int target, Kind kind, Progress progress)
    : source_(source),
      target_(target),
      sparse_(kind == Kind::SparseFiles),
      step_bytes_(kind == Kind::Stream ? kStreamStepBytes : kRegularStepBytes),
      progress_(std::move(progress)) {}

int64_t ByteMover::Move(int64_t source_offset, int64_t count) {
  const int64_t end = source_offset + count;
  int64_t at = source_offset;
  while (at < end) {
    if (InterruptRequested()) throw MoveInterrupted{};
    const int64_t data = sparse_ && at >= data_end_ ? DataStart(at, end) : at;
    if (data < 0) break;  // the source ended early
    if (data > at) {
      SkipHole(data - at);
      progress_(data - at);
      at = data;
      continue;
    }
    const int64_t step = std::min(sparse_ ? DataEnd(at, end) - at : end - at, step_bytes_);
    const int64_t moved = MoveData(at, step);
    if (moved == 0) break;  // the source ended early
    ends_in_hole_ = false;
    progress_(moved);
    at += moved;
  }
  return at - source_offset;
}

// The first byte of data at or after `offset`, `end` when only a hole is
// left before it, and -1 when the source ends before `end`.
int64_t ByteMover::DataStart(int64_t offset, int64_t end) {
  const off_t data = ::lseek(source_, offset, SEEK_DATA);
  if (data >= 0) return std::min<int64_t>(data, end);
  if (errno != ENXIO) {
    sparse_ = false;  // a file system that cannot tell: copy every byte
    return offset;
  }
  struct stat info {};
  if (::fstat(source_, &info) != 0) throw MoveError{errno, FailedEnd::Source};
  return offset >= info.st_size ? -1 : std::min<int64_t>(info.st_size, end);
}

int64_t ByteMover::DataEnd(int64_t offset, int64_t end) {
  if (offset >= data_end_) {
    const off_t hole = ::lseek(source_, offset, SEEK_HOLE);
    data_end_ = hole > offset ? hole : end;
  }
  return std::min(data_end_, end);
}

void ByteMover::SkipHole(int64_t length) {
  if (::lseek(target_, length, SEEK_CUR) < 0) throw MoveError{errno, FailedEnd::Target};
  ends_in_hole_ = true;
}

// One step by the best method these two files allow; a method the system
// refuses for them is not tried again.
int64_t ByteMover::MoveData(int64_t source_offset, int64_t count) {
  for (;;) {
    ssize_t moved = -1;
    if (method_ == Method::CopyFileRange) {
      loff_t from = source_offset;
      moved = ::copy_file_range(source_, &from, target_, nullptr, static_cast<size_t>(count), 0);
    } else if (method_ == Method::SendFile) {
      off_t from = source_offset;
      moved = ::sendfile(target_, source_, &from, static_cast<size_t>(count));
    } else {
      return ReadWrite(source_offset, count);
    }
    // Some file systems answer "nothing" where there are bytes: only a
    // read can tell the source's end.
    if (moved == 0) method_ = Method::ReadWrite;
    if (moved > 0) return moved;
    if (moved < 0 && KernelCopyUnsupported(errno)) {
      method_ = method_ == Method::CopyFileRange ? Method::SendFile : Method::ReadWrite;
    } else if (moved < 0) {
      TryAgainOrStop(errno, FailedEnd::Either);
    }
  }
}

int64_t ByteMover::ReadWrite(int64_t source_offset, int64_t count) {
  if (buffer_.empty()) buffer_.resize(kBufferBytes);
  const size_t wanted = static_cast<size_t>(std::min<int64_t>(count, kBufferBytes));
  for (;;) {
    const ssize_t got = ::pread(source_, buffer_.data(), wanted, source_offset);
    if (got >= 0) {
      WriteAll(buffer_.data(), got);
      return got;
    }
    TryAgainOrStop(errno, FailedEnd::Source);
  }
}

// Bytes already written when Ctrl+C stops a write are counted before the
// copy stops, so the closing message tells the truth.
void ByteMover::WriteAll(const char* data, int64_t count) {
  int64_t written = 0;
  while (written < count) {
    const ssize_t done = ::write(target_, data + written, static_cast<size_t>(count - written));
    if (done > 0) {
      written += done;
      continue;
    }
    if (done < 0 && errno == EINTR && InterruptRequested() && written > 0) progress_(written);
    TryAgainOrStop(done < 0 ? errno : EIO, FailedEnd::Target);
  }
}

}  // namespace kestu::copytool
