// Loading pictures from files: the host's file errors come first, with the
// path named; only a readable file is decoded.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "copyfile/CopyFileHarness.h"
#include "foundation/PicturePatterns.h"
#include "kestu/foundation/RuntimeError.h"
#include "kestu/foundation/StdPicture.h"

namespace kestu {
namespace {

using namespace picture_test;
namespace fs = std::filesystem;

class PictureFile : public testing::Test {
 protected:
  fs::path Write(const std::string& name, const std::string& content) {
    const fs::path path = folder_ / name;
    std::ofstream(path, std::ios::binary) << content;
    return path;
  }

  // The error LoadPicture raises for `path`, or a failure when it loads.
  static testing::AssertionResult FailsWith(const fs::path& path, int number) {
    try {
      LoadPicture(path);
      return testing::AssertionFailure() << path << " loaded";
    } catch (const RuntimeError& error) {
      if (error.Number() != number || error.Detail() != path.string()) {
        return testing::AssertionFailure() << "got \"" << error.what() << "\"";
      }
      return testing::AssertionSuccess();
    }
  }

  copytest::TempFolder folder_;
};

TEST_F(PictureFile, LoadsTheSameAsTheBytes) {
  const PictureRef from_file = LoadPicture(SamplePath("png_rgba8.png"));
  const PictureRef from_bytes = LoadPictureFromBytes(ReadSample("png_rgba8.png"));
  EXPECT_EQ(*from_file, *from_bytes);
}

// A named pipe is refused without waiting for a writer.
TEST_F(PictureFile, EachFaultIsItsHostErrorNamingThePath) {
  const fs::path pipe = folder_ / "pipe.png";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_TRUE(FailsWith(folder_ / "absent.png", err::kFileNotFound));
  EXPECT_TRUE(FailsWith(folder_.Path(), err::kPathFileAccessError));
  EXPECT_TRUE(FailsWith(pipe, err::kPathFileAccessError));
  EXPECT_TRUE(FailsWith(Write("notes.png", "not a picture at all"), err::kInvalidPicture));
  EXPECT_TRUE(FailsWith(Write("empty.bmp", ""), err::kInvalidPicture));
}

TEST_F(PictureFile, UnreadableFileIsPermissionDenied) {
  if (::geteuid() == 0) GTEST_SKIP() << "root reads files whatever their mode";
  const fs::path path = Write("locked.png", "locked");
  fs::permissions(path, fs::perms::none);
  EXPECT_TRUE(FailsWith(path, err::kPermissionDenied));
}

}  // namespace
}  // namespace kestu
