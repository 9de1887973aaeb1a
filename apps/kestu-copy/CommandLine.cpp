#include "apps/kestu-copy/CommandLine.h"

#include <optional>
#include <string_view>

namespace kestu::copytool {

namespace {

// Up to 15 digits of kilobytes: every size in bytes stays a 64-bit count.
constexpr size_t kMaxVolumeDigits = 15;
// The control's VolumeSize is a 32-bit Long.
constexpr int64_t kMaxExactVolumeKb = 2147483647;

std::string Quoted(std::string_view text) {
  return std::string("'").append(text).append("'");
}

std::optional<int64_t> BlockBytes(std::string_view name) {
  if (name == "1K") return 1024;
  if (name == "5K") return 5120;
  if (name == "10K") return 10240;
  return std::nullopt;
}

std::optional<int64_t> Kilobytes(std::string_view text) {
  if (text.empty() || text.size() > kMaxVolumeDigits) return std::nullopt;
  if (text.find_first_not_of("0123456789") != std::string_view::npos) return std::nullopt;
  return std::stoll(std::string(text));
}

// Reads the command line left to right; the first mistake ends it.
class Parser {
 public:
  Parser(int argc, char** argv) : argc_(argc), argv_(argv) {}

  CommandLine Run() {
    for (index_ = 1; index_ < argc_ && !error_; ++index_) {
      const std::string_view arg = argv_[index_];
      if (options_done_ || arg == "-" || !arg.starts_with('-')) {
        TakeName(arg);
      } else if (arg == "--") {
        options_done_ = true;
      } else if (arg == "-h" || arg == "--help") {
        return HelpRequest{};
      } else if (arg.starts_with("--")) {
        TakeLongOption(arg);
      } else {
        TakeShortOptions(arg);
      }
    }
    if (error_) return *error_;
    if (names_ == 0) return UsageError{"missing SOURCE and TARGET (see --help)"};
    if (names_ == 1) return UsageError{"missing TARGET after " + Quoted(options_.source)};
    if (options_.exact && options_.no_clobber) {
      return UsageError{"--no-clobber cannot be used with --exact"};
    }
    if (options_.exact && options_.volume_kb > kMaxExactVolumeKb) {
      return UsageError{"--volume: the control takes at most 2147483647 kilobytes (--exact)"};
    }
    return options_;
  }

 private:
  void TakeName(std::string_view arg) {
    if (names_ == 2) return Fail("extra operand " + Quoted(arg));
    (names_++ == 0 ? options_.source : options_.target) = arg;
  }

  void TakeLongOption(std::string_view arg) {
    const size_t equals = arg.find('=');
    const std::string_view name = arg.substr(0, equals);
    if (name == "--block" || name == "--volume") {
      const std::optional<std::string_view> value =
          equals == std::string_view::npos ? NextArgument() : arg.substr(equals + 1);
      if (!value) return Fail(std::string(name).append(" needs a value"));
      return name == "--block" ? SetBlock(*value) : SetVolume(*value);
    }
    if (equals != std::string_view::npos) return Fail(std::string(name).append(" takes no value"));
    if (name == "--no-clobber") {
      options_.no_clobber = true;
    } else if (name == "--quiet") {
      options_.progress = ProgressMode::Quiet;
    } else if (name == "--progress") {
      options_.progress = ProgressMode::Forced;
    } else if (name == "--exact") {
      options_.exact = true;
    } else {
      Fail("unknown option " + Quoted(arg) + " (see --help)");
    }
  }

  // "-nq" is "-n -q", as the system tools read it.
  void TakeShortOptions(std::string_view arg) {
    for (const char letter : arg.substr(1)) {
      if (letter == 'n') {
        options_.no_clobber = true;
      } else if (letter == 'q') {
        options_.progress = ProgressMode::Quiet;
      } else {
        return Fail(std::string("unknown option '-").append(1, letter).append("' (see --help)"));
      }
    }
  }

  std::optional<std::string_view> NextArgument() {
    if (index_ + 1 >= argc_) return std::nullopt;
    return std::string_view(argv_[++index_]);
  }

  void SetBlock(std::string_view value) {
    const std::optional<int64_t> bytes = BlockBytes(value);
    if (!bytes) return Fail("--block: " + Quoted(value) + " is not 1K, 5K or 10K");
    options_.block_bytes = *bytes;
    options_.block_name = value;
  }

  void SetVolume(std::string_view value) {
    const std::optional<int64_t> kilobytes = Kilobytes(value);
    if (!kilobytes) return Fail("--volume: " + Quoted(value) + " is not a number of kilobytes");
    options_.volume_kb = *kilobytes;
  }

  void Fail(std::string message) { error_ = UsageError{std::move(message)}; }

  int argc_;
  char** argv_;
  int index_ = 1;
  int names_ = 0;
  bool options_done_ = false;
  Options options_;
  std::optional<UsageError> error_;
};

}  // namespace

CommandLine ParseCommandLine(int argc, char** argv) {
  return Parser(argc, argv).Run();
}

const char* HelpText() {
  return R"(usage: kestu-copy [OPTIONS] SOURCE TARGET

Copies SOURCE to TARGET. A name beginning with "@" is a volume set:
@dir/data stands for dir/data.001, dir/data.002, ... So a set as TARGET
splits SOURCE into volumes, a set as SOURCE joins its volumes (up to the
first one missing), and a set on both sides joins and splits again. A
TARGET that is a folder receives SOURCE under its own name.

Options:
  --block 1K|5K|10K  block size (default 10K). Every volume but the last
                     holds the smallest whole number of blocks over the
                     volume size: 1400 KB in 10K blocks is 1,443,840 bytes.
  --volume KB        volume size in kilobytes (default 1400)
  -n, --no-clobber   refuse to overwrite an existing file or volume
  --progress         show the progress bar even when standard error is not
                     a terminal
  -q, --quiet        print nothing but errors (no volume names, no bar)
  --exact            copy through the KestuCopyFile control itself, with all
                     of its limits (see below)
  -h, --help         show this text

Volume names are printed on standard output as each volume is opened. On a
terminal, a bar on standard error shows the bytes copied, the throughput and
the time left, and one line sums up at the end.

How kestu-copy differs from the KestuCopyFile control:
  - Any size: the control stops with error 6 past 21,474,836 bytes of one
    file; the tool counts in 64 bits.
  - The target is replaced whole; the control writes over it and leaves the
    tail of a longer file. A split removes the volumes left over from a
    longer set of the same name, so a later join reads only the new ones.
  - A missing or unreadable source is reported before anything is created;
    the control creates it empty, and the target too.
  - An empty source gives an empty target (one empty volume for a set); the
    control reports error 53.
  - The same file on both sides, or a volume set that overlaps the other
    side, is refused.
  - The bytes move in the kernel over whole files and volumes, not block by
    block; holes in a sparse file stay holes. The block size only decides
    where volumes end, exactly as in the control.
  - Volume names follow the control's rule within the set's folder: the
    name is cut at its first dot, but a dot in a folder's name is kept.
  - Errors are one line: what failed, the file, the system's reason and the
    control's error number in brackets, e.g.
      kestu-copy: cannot open 'x': No such file or directory [53]

--exact runs the control as it is: no truncation, error 6 past 21,474,836
bytes of one source, a join that ends at the first missing volume, every
event shown. Only --block, --volume, --progress and --quiet apply.

Exit status: 0 done, 1 an error, 2 a bad command line, 130 interrupted
(Ctrl+C stops the copy and says how much was written).
)";
}

}  // namespace kestu::copytool
