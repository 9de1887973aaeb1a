#pragma once
// Carries out a checked CopyPlan: each source is read once, start to end,
// into the target file or into one volume after another, each volume
// filled to its size before the next is created.

#include <cstdint>
#include <string>

#include "apps/kestu-copy/ByteMover.h"
#include "apps/kestu-copy/CopyPlan.h"

namespace kestu::copytool {

// What the user is shown while the copy runs.
class CopyObserver {
 public:
  virtual ~CopyObserver() = default;
  // A volume of a set, source or target, is about to be read or written.
  virtual void VolumeOpened(const std::string& path) = 0;
  // `count` more bytes reached the target.
  virtual void BytesCopied(int64_t count) = 0;
};

class CopyRun {
 public:
  CopyRun(const CopyPlan& plan, CopyObserver& observer) : plan_(plan), observer_(observer) {}
  ~CopyRun();
  CopyRun(const CopyRun&) = delete;
  CopyRun& operator=(const CopyRun&) = delete;

  enum class Outcome { Done, Interrupted };
  // Throws CopyFailure on the first fault; the files are closed either way.
  Outcome Run();

  int64_t BytesCopied() const { return bytes_copied_; }
  int64_t VolumesWritten() const { return volume_number_; }
  // The target file being written when the copy stopped.
  const std::string& CurrentTarget() const { return target_path_; }

 private:
  void CopySource(const SourceFile& source);
  void OpenNextTarget();
  void CloseTarget();
  void RemoveLeftovers() const;
  [[noreturn]] void ReportMoveError(const MoveError& error, const std::string& source) const;

  const CopyPlan& plan_;
  CopyObserver& observer_;
  int target_fd_ = -1;
  bool target_regular_ = false;
  bool target_ends_in_hole_ = false;
  std::string target_path_;
  int64_t volume_number_ = 0;
  int64_t room_ = 0;  // bytes the open target volume still takes
  int64_t bytes_copied_ = 0;
};

}  // namespace kestu::copytool
