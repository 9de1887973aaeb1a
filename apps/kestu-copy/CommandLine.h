#pragma once
// kestu-copy's command line: the options, their checks and the help text.
// Shared by the tool and by its exact mode, which read the same arguments.

#include <cstdint>
#include <string>
#include <variant>

namespace kestu::copytool {

// Exit statuses, as the system tools use them.
inline constexpr int kExitDone = 0;
inline constexpr int kExitError = 1;
inline constexpr int kExitUsage = 2;
inline constexpr int kExitInterrupted = 130;

enum class ProgressMode { Auto, Forced, Quiet };

struct Options {
  int64_t block_bytes = 10240;
  std::string block_name = "10K";  // as written, for the exact mode
  int64_t volume_kb = 1400;
  bool no_clobber = false;
  bool exact = false;
  ProgressMode progress = ProgressMode::Auto;
  std::string source;
  std::string target;
};

struct HelpRequest {};

// What went wrong on the command line, already worded for the user.
struct UsageError {
  std::string message;
};

using CommandLine = std::variant<Options, HelpRequest, UsageError>;

CommandLine ParseCommandLine(int argc, char** argv);

// The --help text: the options, and how the tool differs from the file
// copier control it is named after.
const char* HelpText();

}  // namespace kestu::copytool
