// kestu-copy: copies, splits into numbered volumes and joins files, as cp,
// split and cat do, by the file copier control's rules for volume names
// and sizes. --exact hands the copy to the control itself, in a companion
// program, so that this one loads no font and no drawing at all.
//
//   kestu-copy [OPTIONS] SOURCE TARGET       (kestu-copy --help)

#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <string>
#include <variant>

#include "apps/kestu-copy/CommandLine.h"
#include "apps/kestu-copy/CopyFailure.h"
#include "apps/kestu-copy/CopyPlan.h"
#include "apps/kestu-copy/CopyRun.h"
#include "apps/kestu-copy/Interrupt.h"
#include "apps/kestu-copy/TerminalProgress.h"

namespace {

using namespace kestu::copytool;

// Volume names on standard output, the bar and the summary on standard
// error, as the options and the terminal ask.
class ProgressReport : public CopyObserver {
 public:
  ProgressReport(const Options& options, int64_t total_bytes)
      : quiet_(options.progress == ProgressMode::Quiet),
        terminal_(
            !quiet_ && (options.progress == ProgressMode::Forced || ::isatty(STDERR_FILENO) == 1),
            total_bytes) {}

  void VolumeOpened(const std::string& path) override {
    if (!quiet_) terminal_.PrintLine(stdout, path);
  }
  void BytesCopied(int64_t count) override {
    bytes_ += count;
    terminal_.Update(bytes_);
  }
  TerminalProgress& Terminal() { return terminal_; }

 private:
  bool quiet_;
  TerminalProgress terminal_;
  int64_t bytes_ = 0;
};

std::string InterruptedLine(const CopyRun& run, int64_t total_bytes) {
  std::string line = "kestu-copy: interrupted: ";
  line.append(GroupedDigits(run.BytesCopied()));
  if (total_bytes >= 0) line.append(" of ").append(GroupedDigits(total_bytes));
  line.append(" bytes written; ").append(Quoted(run.CurrentTarget())).append(" is incomplete");
  return line;
}

int Copy(const Options& options) {
  WatchForInterrupt();
  const CopyPlan plan = PlanCopy(options);
  ProgressReport report(options, plan.total_bytes);
  CopyRun run(plan, report);
  CopyRun::Outcome outcome = CopyRun::Outcome::Done;
  try {
    outcome = run.Run();
  } catch (const CopyFailure&) {
    std::fflush(stdout);
    report.Terminal().Clear();
    throw;
  }
  std::fflush(stdout);
  if (outcome == CopyRun::Outcome::Interrupted) {
    report.Terminal().Clear();
    std::fprintf(stderr, "%s\n", InterruptedLine(run, plan.total_bytes).c_str());
    return kExitInterrupted;
  }
  report.Terminal().Summarise(run.BytesCopied(), run.VolumesWritten(), plan.targets.IsSet());
  return kExitDone;
}

std::string FolderOfThisProgram() {
  char self[PATH_MAX];
  const ssize_t length = ::readlink("/proc/self/exe", self, sizeof self - 1);
  if (length <= 0) return {};
  const std::string path(self, static_cast<size_t>(length));
  return path.substr(0, path.find_last_of('/') + 1);
}

// The companion program sits beside this one in a build, and in the
// library's program folder once installed.
std::string ExactProgram() {
  const std::string folder = FolderOfThisProgram();
  const std::string beside = folder + "kestu-copy-exact";
  if (::access(beside.c_str(), X_OK) == 0) return beside;
  return folder + KESTU_COPY_EXACT_FROM_BINDIR;
}

int RunExact(char** argv) {
  const std::string program = ExactProgram();
  ::execv(program.c_str(), argv);
  const int error = errno;
  std::fprintf(stderr, "%s\n",
               FailureLine(SystemFailure("--exact: cannot run", program, error)).c_str());
  return kExitError;
}

}  // namespace

int main(int argc, char** argv) {
  const CommandLine command_line = ParseCommandLine(argc, argv);
  if (const auto* usage = std::get_if<UsageError>(&command_line)) {
    std::fprintf(stderr, "kestu-copy: %s\n", usage->message.c_str());
    return kExitUsage;
  }
  if (std::holds_alternative<HelpRequest>(command_line)) {
    std::fputs(HelpText(), stdout);
    return kExitDone;
  }
  const Options& options = std::get<Options>(command_line);
  if (options.exact) return RunExact(argv);
  try {
    return Copy(options);
  } catch (const CopyFailure& failure) {
    std::fprintf(stderr, "%s\n", FailureLine(failure).c_str());
    return kExitError;
  }
}
