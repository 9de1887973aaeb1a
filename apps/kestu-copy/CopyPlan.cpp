#include "apps/kestu-copy/CopyPlan.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <limits>
#include <map>
#include <optional>
#include <utility>

#include "apps/kestu-copy/CopyFailure.h"
#include "copyfile/VolumeSet.h"
#include "kestu/foundation/RuntimeError.h"

namespace kestu::copytool {

namespace {

constexpr int64_t kWholeFile = std::numeric_limits<int64_t>::max();

using FileId = std::pair<dev_t, ino_t>;

std::string FolderOf(const std::string& path) {
  const size_t slash = path.find_last_of('/');
  return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

std::string BaseOf(const std::string& path) {
  const size_t slash = path.find_last_of('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

// The name a copy takes inside a folder given as its target.
std::string SourceBaseName(const std::string& source) {
  return BaseOf(source.substr(volume_set::IsSetName(source) ? 1 : 0));
}

// What `path` leads to, following links; nothing when there is nothing.
std::optional<struct stat> StatOf(const std::string& path) {
  struct stat info {};
  if (::stat(path.c_str(), &info) == 0) return info;
  if (errno == ENOENT || errno == ENOTDIR) return std::nullopt;
  throw SystemFailure("cannot open", path, errno);
}

// A link that leads nowhere is still a name in the way.
bool NameExists(const std::string& path) {
  struct stat info {};
  return ::lstat(path.c_str(), &info) == 0;
}

// Opens and closes a regular source: a file that cannot be read is named
// now, before anything is created.
void CheckReadable(const std::string& path) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) throw SystemFailure("cannot open", path, errno);
  ::close(fd);
}

SourceFile DescribeSource(const std::string& path, const struct stat& info) {
  if (S_ISDIR(info.st_mode)) throw SystemFailure("cannot copy", path, EISDIR);
  const bool regular = S_ISREG(info.st_mode);
  if (regular) CheckReadable(path);
  return SourceFile{.path = path,
                    .size = regular ? static_cast<int64_t>(info.st_size) : 0,
                    .regular = regular,
                    .has_holes = regular && info.st_blocks * 512 < info.st_size,
                    .device = info.st_dev,
                    .inode = info.st_ino};
}

SourceFile SingleSource(const std::string& path) {
  struct stat info {};
  if (::stat(path.c_str(), &info) != 0) throw SystemFailure("cannot open", path, errno);
  return DescribeSource(path, info);
}

// A set's volumes from the first up to the first one missing; the first
// itself must be there.
std::vector<SourceFile> SetSources(const VolumeNames& names) {
  std::vector<SourceFile> sources;
  for (int64_t number = 1;; ++number) {
    const std::string path = names.Name(number);
    const std::optional<struct stat> info = StatOf(path);
    if (!info && number == 1) throw SystemFailure("cannot open", path, ENOENT);
    if (!info) return sources;
    if (!S_ISREG(info->st_mode) && !S_ISDIR(info->st_mode)) {
      throw CopyFailure("cannot join " + Quoted(path) + ": not a regular file",
                        err::kPathFileAccessError);
    }
    sources.push_back(DescribeSource(path, *info));
  }
}

std::string ResolveTarget(const Options& options) {
  std::string target = options.target;
  if (volume_set::IsSetName(target)) {
    if (target.ends_with('/')) target.append(SourceBaseName(options.source));
    return target;
  }
  const std::optional<struct stat> info = StatOf(target);
  if (info && S_ISDIR(info->st_mode)) {
    if (!target.ends_with('/')) target.append("/");
    target.append(SourceBaseName(options.source));
  }
  return target;
}

int64_t TotalBytes(const std::vector<SourceFile>& sources) {
  int64_t total = 0;
  for (const SourceFile& source : sources) {
    if (!source.regular) return -1;
    total += source.size;
  }
  return total;
}

void PlanVolumes(const Options& options, CopyPlan& plan) {
  if (!plan.targets.IsSet()) {
    plan.volume_bytes = kWholeFile;
    plan.volume_count = 1;
    return;
  }
  if (plan.total_bytes < 0) {
    throw CopyFailure("cannot split " + Quoted(plan.sources.front().path) + ": not a regular file",
                      err::kPathFileAccessError);
  }
  plan.volume_bytes = volume_set::FullVolumeBytes(options.volume_kb * 1024, options.block_bytes);
  // An empty source still makes one (empty) volume, so that the set joins
  // back to an empty file.
  plan.volume_count =
      std::max<int64_t>(1, (plan.total_bytes + plan.volume_bytes - 1) / plan.volume_bytes);
  while (NameExists(plan.targets.Name(plan.volume_count + plan.leftover_count + 1))) {
    ++plan.leftover_count;
  }
}

// No file the copy writes, or removes, may be one it reads: writing it
// would destroy what is still to be read.
void CheckTargets(const CopyPlan& plan) {
  std::map<FileId, std::string> sources;
  for (const SourceFile& source : plan.sources) {
    sources.emplace(FileId{source.device, source.inode}, source.path);
  }
  const int64_t last = plan.volume_count + plan.leftover_count;
  for (int64_t number = 1; number <= last; ++number) {
    const std::string path = plan.targets.Name(number);
    const std::optional<struct stat> info = StatOf(path);
    if (info) {
      if (auto same = sources.find(FileId{info->st_dev, info->st_ino}); same != sources.end()) {
        throw CopyFailure(Quoted(same->second) + " and " + Quoted(path) + " are the same file",
                          err::kPathFileAccessError);
      }
    }
    if (plan.no_clobber && (info || NameExists(path))) {
      throw SystemFailure("not overwriting", path, EEXIST);
    }
  }
}

// A new file keeps the source's permissions, as cp gives them; volumes
// and joined files are plain files.
mode_t CreateMode(const CopyPlan& plan) {
  if (plan.source_is_set || plan.targets.IsSet()) return 0666;
  struct stat info {};
  if (::stat(plan.sources.front().path.c_str(), &info) != 0) return 0666;
  return info.st_mode & 0777;
}

}  // namespace

VolumeNames::VolumeNames(std::string path, bool is_set) : is_set_(is_set) {
  if (!is_set) {
    first_ = std::move(path);
    return;
  }
  const std::string set_path = path.substr(1);
  folder_ = FolderOf(set_path);
  first_ = volume_set::FirstVolumeName(BaseOf(set_path));
}

std::string VolumeNames::Name(int64_t number) const {
  if (!is_set_ || number == 1) return folder_ + first_;
  // A later volume's name is cut before its first dot, so every later
  // name follows from the first alone.
  return folder_ + volume_set::NextVolumeName(first_, number);
}

CopyPlan PlanCopy(const Options& options) {
  CopyPlan plan;
  plan.no_clobber = options.no_clobber;
  plan.source_is_set = volume_set::IsSetName(options.source);
  plan.sources = plan.source_is_set ? SetSources(VolumeNames(options.source, true))
                                    : std::vector<SourceFile>{SingleSource(options.source)};
  plan.total_bytes = TotalBytes(plan.sources);
  const std::string target = ResolveTarget(options);
  plan.targets = VolumeNames(target, volume_set::IsSetName(target));
  PlanVolumes(options, plan);
  CheckTargets(plan);
  plan.create_mode = CreateMode(plan);
  return plan;
}

}  // namespace kestu::copytool
