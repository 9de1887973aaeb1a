#pragma once
// Moves bytes from one open file to another as the system's own copy
// tools do: inside the kernel with copy_file_range, else with sendfile
// (a target that is a pipe or a device), else through a buffer. Holes of a
// sparse source stay holes in a regular target.

#include <cstdint>
#include <functional>
#include <vector>

namespace kestu::copytool {

// Which end of a move failed, for the message that names the file.
enum class FailedEnd { Source, Target, Either };

struct MoveError {
  int errno_value;
  FailedEnd end;
};

// Ctrl+C arrived during a move; the bytes moved so far are counted.
struct MoveInterrupted {};

class ByteMover {
 public:
  // Called with the count of bytes that just reached the target (holes
  // included) after each step of at most a few megabytes.
  using Progress = std::function<void(int64_t)>;

  enum class Kind {
    Files,        // two regular files
    SparseFiles,  // the same, the source with holes: a hole is left in the
                  // target by moving its position past it
    Stream,       // a pipe or a device on either side
  };

  ByteMover(int source, int target, Kind kind, Progress progress);

  // Moves up to `count` bytes from the source at `source_offset` to the
  // target at its position, and returns the count moved: fewer only when
  // the source ends. Throws MoveError or MoveInterrupted.
  int64_t Move(int64_t source_offset, int64_t count);

  // Whether the last bytes moved were a hole, which the target gets only
  // when its length is set to its position.
  bool EndsInHole() const { return ends_in_hole_; }

 private:
  enum class Method { CopyFileRange, SendFile, ReadWrite };

  int64_t MoveData(int64_t source_offset, int64_t count);
  int64_t ReadWrite(int64_t source_offset, int64_t count);
  void WriteAll(const char* data, int64_t count);
  int64_t DataStart(int64_t offset, int64_t end);
  int64_t DataEnd(int64_t offset, int64_t end);
  void SkipHole(int64_t length);

  int source_;
  int target_;
  bool sparse_;
  int64_t step_bytes_;
  // Where the data found last ends: finding a hole can cost a walk over
  // every page up to it, so it is done once per stretch of data.
  int64_t data_end_ = -1;
  bool ends_in_hole_ = false;
  Method method_ = Method::CopyFileRange;
  Progress progress_;
  std::vector<char> buffer_;  // only for ReadWrite
};

}  // namespace kestu::copytool
