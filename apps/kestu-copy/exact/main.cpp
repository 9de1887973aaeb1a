// kestu-copy-exact: kestu-copy --exact. Runs the copy through the file
// copier control in a headless host, with every limit and event of the
// control, and shows those events as kestu-copy shows its own progress.
// A program of its own so that kestu-copy itself loads no font stack.

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>
#include <variant>
#include <vector>

#include "apps/kestu-copy/CommandLine.h"
#include "apps/kestu-copy/Interrupt.h"
#include "apps/kestu-copy/TerminalProgress.h"
#include "copyfile/VolumeSet.h"
#include "kestu/copyfile/KestuCopyFile.h"
#include "kestu/foundation/HostFiles.h"
#include "kestu/foundation/RuntimeError.h"
#include "kestu/host/Host.h"

namespace {

using kestu::KestuCopyFile;
using namespace kestu::copytool;

int16_t BlockSize(const std::string& name) {
  if (name == "1K") return kestu::Block_1K;
  if (name == "5K") return kestu::Block_5K;
  return kestu::Block_10K;
}

int64_t FileSize(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0 ? static_cast<int64_t>(info.st_size) : 0;
}

// Follows one copy through the control's events: the terminal line, the
// volume names, Ctrl+C, and how the copy ended.
class CopyWatcher {
 public:
  CopyWatcher(KestuCopyFile& copier, const Options& options)
      : quiet_(options.progress == ProgressMode::Quiet),
        terminal_(
            !quiet_ && (options.progress == ProgressMode::Forced || ::isatty(STDERR_FILENO) == 1),
            kestu::volume_set::IsSetName(options.source) ? -1 : FileSize(options.source)),
        block_bytes_(options.block_bytes),
        source_is_set_(kestu::volume_set::IsSetName(options.source)),
        target_is_set_(kestu::volume_set::IsSetName(options.target)),
        source_(options.source) {
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
    std::fflush(stdout);
    terminal_.Clear();
    // A set ends where its next volume is missing: after at least one
    // whole volume that is the normal end of a join.
    const bool join_ended =
        error_ == kestu::err::kFileNotFound && source_is_set_ && whole_sources_ > 0;
    if (done_ || join_ended) {
      terminal_.Summarise(BytesCopied(), target_volumes_, target_is_set_);
      return kExitDone;
    }
    if (error_ != 0) {
      std::fprintf(stderr, "kestu-copy: '%s': %s [%d]\n", FailedFile().c_str(),
                   kestu::ErrorMessage(error_), error_);
      return kExitError;
    }
    std::fprintf(stderr, "kestu-copy: interrupted: %s bytes written; what was written stays\n",
                 GroupedDigits(BytesCopied()).c_str());
    return kExitInterrupted;
  }

 private:
  void OnProgress(int16_t percent, int16_t& cancel) {
    if (InterruptRequested()) cancel = 1;
    PrintOpenedVolumes();
    ++blocks_in_source_;
    last_was_whole_source_ = percent == 100;
    if (last_was_whole_source_) ++whole_sources_;
    terminal_.Update(BytesCopied());
  }

  // The first name of a joined set, and any name announced right after a
  // source volume was finished, is a source volume; the others are target
  // volumes (a target never rolls over after the last block of a source).
  void OnNextVolume(const std::string& name, int16_t& cancel) {
    if (InterruptRequested()) cancel = 1;
    const bool is_source = source_is_set_ && (!announced_any_ || last_was_whole_source_);
    announced_any_ = true;
    last_was_whole_source_ = false;
    if (is_source) {
      bytes_before_source_ += std::min(blocks_in_source_ * block_bytes_, source_size_);
      source_ = name;
      source_size_ = FileSize(name);
      blocks_in_source_ = 0;
    } else {
      ++target_volumes_;
    }
    announced_.push_back(name);
  }

  // The bytes are counted from the blocks the control reported; it
  // reports nothing finer.
  int64_t BytesCopied() const {
    return bytes_before_source_ + std::min(blocks_in_source_ * block_bytes_, source_size_);
  }

  // A volume is announced before it is opened, and the name after the last
  // volume of a set is announced but never exists; names are printed once
  // a block went through them.
  void PrintOpenedVolumes() {
    for (const std::string& name : announced_) {
      if (!quiet_) terminal_.PrintLine(stdout, name);
    }
    announced_.clear();
  }

  std::string FailedFile() const {
    const std::string& failed = kestu::HostFiles::Instance().LastFailedPath();
    return failed.empty() ? source_ : failed;
  }

  bool quiet_;
  TerminalProgress terminal_;
  int64_t block_bytes_;
  bool source_is_set_;
  bool target_is_set_;
  std::string source_;
  int64_t source_size_ = 0;
  int64_t bytes_before_source_ = 0;
  int64_t blocks_in_source_ = 0;
  int whole_sources_ = 0;
  int64_t target_volumes_ = 1;
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
  copier.SetProperty("BlockSize", kestu::Variant(BlockSize(options.block_name)));
  // The command line kept --exact's volume size within the control's Long.
  copier.SetProperty("VolumeSize", kestu::Variant(static_cast<int32_t>(options.volume_kb)));
  copier.SetSourceFile(options.source);
  copier.SetNewFile(options.target);

  CopyWatcher watcher(copier, options);
  kestu::HostFiles::Instance().ClearLastFailure();
  copier.BeginCopyFile();
  return watcher.Finish();
}

}  // namespace

int main(int argc, char** argv) {
  const CommandLine command_line = ParseCommandLine(argc, argv);
  const auto* options = std::get_if<Options>(&command_line);
  if (options == nullptr) {
    std::fputs("kestu-copy-exact: run it as kestu-copy --exact\n", stderr);
    return kExitUsage;
  }
  // Ctrl+C cancels through the copier's Cancel argument at the next block
  // or volume, so the files are closed and what was written stays.
  WatchForInterrupt();
  try {
    return RunCopy(*options);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "kestu-copy: %s\n", error.what());
    return kExitError;
  }
}
