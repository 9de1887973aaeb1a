// kestu-copy: copies, splits into numbered volumes and joins files through
// the file copier control, hosted in a headless host.
//
//   kestu-copy [--block 1K|5K|10K] [--volume KB] SOURCE TARGET
//
// A name beginning with "@" is a volume set: "@dir/data" stands for
// dir/data.001, dir/data.002, ... So "kestu-copy big @vol" splits and
// "kestu-copy @vol big" joins. Exit status: 0 done, 1 an error, 2 a bad
// command line, 130 cancelled with Ctrl+C.

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <optional>
#include <string>
#include <vector>

#include "apps/kestu-copy/TerminalProgress.h"
#include "kestu/copyfile/KestuCopyFile.h"
#include "kestu/foundation/HostFiles.h"
#include "kestu/foundation/RuntimeError.h"
#include "kestu/host/Host.h"

namespace {

using kestu::KestuCopyFile;
using kestu::copytool::TerminalProgress;

constexpr int kExitDone = 0;
constexpr int kExitError = 1;
constexpr int kExitUsage = 2;
constexpr int kExitCancelled = 130;

constexpr const char* kUsage =
    "usage: kestu-copy [--block 1K|5K|10K] [--volume KB] SOURCE TARGET\n"
    "Copies SOURCE to TARGET block by block. A name beginning with \"@\" is a\n"
    "volume set (@dir/data means dir/data.001, dir/data.002, ...): a set as\n"
    "TARGET splits into volumes of the smallest number of blocks above KB\n"
    "kilobytes (default 1400), a set as SOURCE joins. Default block 10K.\n";

volatile std::sig_atomic_t interrupted = 0;

void OnInterrupt(int) {
  interrupted = 1;
}

struct Options {
  int16_t block_size = kestu::Block_10K;
  int32_t volume_kb = 1400;
  std::string source;
  std::string target;
};

std::optional<int16_t> ParseBlock(const std::string& text) {
  if (text == "1K") return kestu::Block_1K;
  if (text == "5K") return kestu::Block_5K;
  if (text == "10K") return kestu::Block_10K;
  return std::nullopt;
}

std::optional<int32_t> ParseKilobytes(const std::string& text) {
  if (text.empty() || text.find_first_not_of("0123456789") != std::string::npos) return {};
  if (text.size() > 9) return {};
  return static_cast<int32_t>(std::stol(text));
}

std::optional<Options> ParseArguments(int argc, char** argv) {
  Options options;
  int names = 0;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    if ((arg == "--block" || arg == "--volume") && i + 1 < argc) {
      const std::string value = argv[++i];
      if (arg == "--block") {
        auto block = ParseBlock(value);
        if (!block) return std::nullopt;
        options.block_size = *block;
      } else {
        auto kilobytes = ParseKilobytes(value);
        if (!kilobytes) return std::nullopt;
        options.volume_kb = *kilobytes;
      }
    } else if (arg.starts_with("--") || names == 2) {
      return std::nullopt;
    } else {
      (names++ == 0 ? options.source : options.target) = arg;
    }
  }
  if (names != 2) return std::nullopt;
  return options;
}

int64_t FileSize(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0 ? static_cast<int64_t>(info.st_size) : 0;
}

// Follows one copy through the control's events: the terminal line, the
// volume names, Ctrl+C, and how the copy ended.
class CopyWatcher {
 public:
  CopyWatcher(KestuCopyFile& copier, const Options& options, TerminalProgress& terminal)
      : terminal_(terminal),
        block_bytes_(options.block_size == kestu::Block_1K   ? 1024
                     : options.block_size == kestu::Block_5K ? 5120
                                                             : 10240),
        source_is_set_(options.source.starts_with("@")),
        source_(options.source),
        volume_(options.target) {
    if (!source_is_set_) source_size_ = FileSize(source_);
    copier.Progress.Connect(
        [this](int16_t percent, int16_t& cancel) { OnProgress(percent, cancel); });
    copier.NextVolume.Connect(
        [this](std::string name, int16_t& cancel) { OnNextVolume(name, cancel); });
    copier.Done.Connect([this] { done_ = true; });
    copier.Error.Connect([this](int16_t number) { error_ = number; });
  }

  // The exit status, after one line on what went wrong.
  int Finish() {
    terminal_.Clear();
    if (done_) return kExitDone;
    // A set ends where its next volume is missing: after at least one
    // whole volume that is the normal end of a join.
    if (error_ == kestu::err::kFileNotFound && source_is_set_ && whole_sources_ > 0) {
      return kExitDone;
    }
    if (error_ != 0) {
      std::fprintf(stderr, "kestu-copy: error %d %s: %s\n", error_, kestu::ErrorMessage(error_),
                   FailedFile().c_str());
      return kExitError;
    }
    std::fprintf(stderr, "kestu-copy: cancelled; what was written stays\n");
    return kExitCancelled;
  }

 private:
  void OnProgress(int16_t percent, int16_t& cancel) {
    if (interrupted) cancel = 1;
    PrintOpenedVolumes();
    ++blocks_in_source_;
    const int64_t in_source = std::min(blocks_in_source_ * block_bytes_, source_size_);
    last_was_whole_source_ = percent == 100;
    if (last_was_whole_source_) ++whole_sources_;
    terminal_.Update(percent, bytes_before_source_ + in_source, volume_);
  }

  // The first name of a joined set, and any name announced right after a
  // source volume was finished, is a source volume; the others are target
  // volumes (a target never rolls over after the last block of a source).
  void OnNextVolume(const std::string& name, int16_t& cancel) {
    if (interrupted) cancel = 1;
    const bool is_source = source_is_set_ && (!announced_any_ || last_was_whole_source_);
    announced_any_ = true;
    last_was_whole_source_ = false;
    if (is_source) {
      bytes_before_source_ += source_size_;
      source_ = name;
      source_size_ = FileSize(name);
      blocks_in_source_ = 0;
    }
    volume_ = name;
    announced_.push_back(name);
  }

  // A volume is announced before it is opened, and the name after the last
  // volume of a set is announced but never exists; names are printed once
  // a block went through them.
  void PrintOpenedVolumes() {
    for (const std::string& name : announced_) terminal_.PrintLine(stdout, name);
    announced_.clear();
  }

  std::string FailedFile() const {
    const std::string& failed = kestu::HostFiles::Instance().LastFailedPath();
    return failed.empty() ? source_ : failed;
  }

  TerminalProgress& terminal_;
  int64_t block_bytes_;
  bool source_is_set_;
  std::string source_;
  std::string volume_;
  int64_t source_size_ = 0;
  int64_t bytes_before_source_ = 0;
  int64_t blocks_in_source_ = 0;
  int whole_sources_ = 0;
  std::vector<std::string> announced_;
  bool announced_any_ = false;
  bool last_was_whole_source_ = false;
  bool done_ = false;
  int error_ = 0;
};

int RunCopy(const Options& options) {
  kestu::Host host;
  kestu::Form& form = host.CreateForm("CopyForm");
  kestu::HostedControl& site =
      host.NewControl(form, KestuCopyFile::Info(), "CopyFile1", kestu::TwipsRect{0, 0, 2400, 360});
  auto& copier = static_cast<KestuCopyFile&>(site.Control());
  copier.SetProperty("BlockSize", kestu::Variant(options.block_size));
  copier.SetProperty("VolumeSize", kestu::Variant(options.volume_kb));
  copier.SetSourceFile(options.source);
  copier.SetNewFile(options.target);

  TerminalProgress terminal(::isatty(STDERR_FILENO) == 1);
  CopyWatcher watcher(copier, options, terminal);
  kestu::HostFiles::Instance().ClearLastFailure();
  copier.BeginCopyFile();
  return watcher.Finish();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && (std::strcmp(argv[1], "-h") == 0 || std::strcmp(argv[1], "--help") == 0)) {
    std::fputs(kUsage, stdout);
    return kExitDone;
  }
  const std::optional<Options> options = ParseArguments(argc, argv);
  if (!options) {
    std::fputs(kUsage, stderr);
    return kExitUsage;
  }
  // Ctrl+C cancels through the copier's Cancel argument at the next block
  // or volume, so the files are closed and what was written stays.
  struct sigaction action {};
  action.sa_handler = OnInterrupt;
  sigemptyset(&action.sa_mask);
  sigaction(SIGINT, &action, nullptr);
  try {
    return RunCopy(*options);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "kestu-copy: %s\n", error.what());
    return kExitError;
  }
}
