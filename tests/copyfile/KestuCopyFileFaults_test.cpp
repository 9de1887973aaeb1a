// The copier against the operating system's refusals: each ends with one
// Error carrying the host's number, and the source is never touched.
// Refusals that root does not meet run in a child process that has given
// up root (as root a mode-555 folder takes new files). A full device and a
// volume name too long are in scripts/copyfile/refusals.kss.

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>

#include "copyfile/CopyFileHarness.h"
#include "kestu/copyfile/KestuCopyFile.h"

namespace kestu {
namespace {

using copytest::CopyFileHarness;
using copytest::PatternBytes;
using copytest::ReadFile;
using copytest::TempFolder;
using copytest::WriteFile;
using Events = std::vector<std::string>;

namespace fs = std::filesystem;

constexpr uid_t kNobody = 65534;

Events SplitLines(const std::string& text) {
  Events lines;
  size_t start = 0;
  for (size_t end; (end = text.find('\n', start)) != std::string::npos; start = end + 1) {
    lines.push_back(text.substr(start, end - start));
  }
  return lines;
}

// Runs `prepare` then one copy in a child process and returns its events.
// The child cannot disturb this process's file numbers or limits.
Events CopyInChild(const std::string& source, const std::string& target,
                   const std::function<void()>& prepare) {
  int pipe_fds[2];
  if (::pipe(pipe_fds) != 0) return {"pipe failed"};
  const pid_t pid = ::fork();
  if (pid == 0) {
    ::close(pipe_fds[0]);
    std::string report;
    try {
      prepare();
      CopyFileHarness host;
      for (const std::string& event : host.Copy(source, target)) report += event + "\n";
    } catch (const std::exception& e) {
      report = std::string(e.what()) + "\n";
    }
    (void)!::write(pipe_fds[1], report.data(), report.size());
    ::_exit(0);
  }
  ::close(pipe_fds[1]);
  std::string report;
  char chunk[4096];
  for (ssize_t got; (got = ::read(pipe_fds[0], chunk, sizeof chunk)) > 0;) {
    report.append(chunk, static_cast<size_t>(got));
  }
  ::close(pipe_fds[0]);
  int status = 0;
  ::waitpid(pid, &status, 0);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "child status " << status;
  return SplitLines(report);
}

constexpr const char* kCannotDropRoot = "cannot drop root";

void BecomeNobody() {
  if (::getuid() != 0) return;  // already a user that folders can refuse
  if (::setgid(kNobody) != 0 || ::setuid(kNobody) != 0) {
    throw std::runtime_error(kCannotDropRoot);
  }
}

// Folders the unprivileged child can enter.
void OpenUp(const fs::path& path, fs::perms perms) {
  fs::permissions(path, perms, fs::perm_options::replace);
}

class KestuCopyFileFaults : public ::testing::Test {
 protected:
  void SetUp() override {
    OpenUp(dir_.Path(), fs::perms::all);
    WriteFile(dir_ / "src", data_);
    OpenUp(dir_ / "src", fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read |
                             fs::perms::others_read);
  }
  void ExpectSourceUntouched() { EXPECT_EQ(ReadFile(dir_ / "src"), data_); }

  TempFolder dir_;
  const std::string data_ = PatternBytes(25'000);
};

TEST_F(KestuCopyFileFaults, ReadOnlyTargetFolderIsPermissionDenied) {
  fs::create_directory(dir_ / "locked");
  OpenUp(dir_ / "locked", fs::perms::owner_read | fs::perms::owner_exec | fs::perms::group_read |
                              fs::perms::group_exec | fs::perms::others_read |
                              fs::perms::others_exec);
  const Events events = CopyInChild(dir_ / "src", dir_ / "locked/dst", BecomeNobody);
  if (events == Events{kCannotDropRoot}) GTEST_SKIP() << "this sandbox keeps the test root";
  EXPECT_EQ(events, (Events{"Error(70)"}));
  EXPECT_FALSE(fs::exists(dir_ / "locked/dst"));
  ExpectSourceUntouched();
}

TEST_F(KestuCopyFileFaults, FileSizeLimitIsDiskFullAndKeepsWhatFitted) {
  const auto limit_size = [] {
    std::signal(SIGXFSZ, SIG_IGN);  // else the limit kills instead of failing the write
    const rlimit limit{8192, 8192};
    if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) ::_exit(4);
  };
  EXPECT_EQ(CopyInChild(dir_ / "src", dir_ / "dst", limit_size), (Events{"Error(61)"}));
  EXPECT_EQ(ReadFile(dir_ / "dst"), data_.substr(0, 8192));
  ExpectSourceUntouched();
}

TEST_F(KestuCopyFileFaults, SourceThatIsAFolderIsPathFileAccessError) {
  fs::create_directory(dir_ / "folder");
  CopyFileHarness host;
  EXPECT_EQ(host.Copy(dir_ / "folder", dir_ / "dst"), (Events{"Error(75)"}));
  EXPECT_FALSE(fs::exists(dir_ / "dst"));
}

TEST_F(KestuCopyFileFaults, ReadOnlySourceCopiesAndStaysUnchanged) {
  OpenUp(dir_ / "src", fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
  const Events events = CopyInChild(dir_ / "src", dir_ / "dst", BecomeNobody);
  if (events == Events{kCannotDropRoot}) GTEST_SKIP() << "this sandbox keeps the test root";
  ASSERT_FALSE(events.empty());
  EXPECT_EQ(events.back(), "Done");
  EXPECT_EQ(ReadFile(dir_ / "dst"), data_);
  ExpectSourceUntouched();
}

}  // namespace
}  // namespace kestu
