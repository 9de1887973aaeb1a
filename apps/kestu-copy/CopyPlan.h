#pragma once
// What a copy will read and write, found and checked before any file is
// opened for writing: every source exists and can be read, no target is a
// source, and -n finds no target in place.

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <vector>

#include "apps/kestu-copy/CommandLine.h"

namespace kestu::copytool {

struct SourceFile {
  std::string path;
  int64_t size = 0;
  bool regular = true;     // else a pipe or a device, read to its end
  bool has_holes = false;  // fewer blocks on disk than its size takes
  dev_t device = 0;
  ino_t inode = 0;
};

// The files of one side of the copy: one file, or the volumes of a set,
// named by the volume-set rule inside the set's folder (so that a dot in a
// folder's name never sends a volume out of it).
class VolumeNames {
 public:
  VolumeNames() = default;
  VolumeNames(std::string path, bool is_set);

  bool IsSet() const { return is_set_; }
  // Volume `number`, from 1; the single file for any number when no set.
  std::string Name(int64_t number) const;

 private:
  std::string folder_;  // with its trailing "/", or empty
  std::string first_;   // the first volume's name within the folder
  bool is_set_ = false;
};

struct CopyPlan {
  std::vector<SourceFile> sources;
  bool source_is_set = false;
  int64_t total_bytes = 0;  // -1 when a source is read to its end
  VolumeNames targets;
  // Bytes in every target volume but the last; the whole copy for a file.
  int64_t volume_bytes = 0;
  int64_t volume_count = 1;
  // Volumes past the new last one, left by an older and longer set of the
  // same name: a later join would read them, so a split removes them.
  int64_t leftover_count = 0;
  bool no_clobber = false;
  mode_t create_mode = 0666;
};

// Throws CopyFailure when the copy must not start.
CopyPlan PlanCopy(const Options& options);

}  // namespace kestu::copytool
