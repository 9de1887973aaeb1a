#include "kestu/foundation/HostFiles.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <string>

#include "copyfile/CopyFileHarness.h"
#include "kestu/foundation/RuntimeError.h"
#include "support/ExpectRuntimeError.h"

namespace kestu {
namespace {

using copytest::ReadFile;
using copytest::TempFolder;
using copytest::WriteFile;

namespace fs = std::filesystem;

std::span<const std::byte> Bytes(const std::string& text) {
  return std::as_bytes(std::span(text.data(), text.size()));
}

class HostFilesTest : public ::testing::Test {
 protected:
  void TearDown() override { files_.CloseAll(); }
  HostFiles& files_ = HostFiles::Instance();
  TempFolder dir_;
};

TEST_F(HostFilesTest, OpenCreatesAndNeverTruncates) {
  WriteFile(dir_ / "old", "abcdef");
  files_.OpenBinary(3, dir_ / "old");
  files_.OpenBinary(4, dir_ / "new");
  EXPECT_TRUE(fs::exists(dir_ / "new"));
  EXPECT_EQ(files_.Length(3), 6);
  files_.Write(3, Bytes("XY"));
  files_.Close(3);
  EXPECT_EQ(ReadFile(dir_ / "old"), "XYcdef");
}

TEST_F(HostFilesTest, ReadAdvancesToTheEnd) {
  WriteFile(dir_ / "f", "12345");
  files_.OpenBinary(7, dir_ / "f");
  std::byte buffer[3];
  EXPECT_EQ(files_.Read(7, buffer), 3u);
  EXPECT_FALSE(files_.AtEnd(7));
  EXPECT_EQ(files_.Read(7, buffer), 2u);  // a short read only at the end
  EXPECT_TRUE(files_.AtEnd(7));
}

// The end is where the file ends now, not where it ended at the open:
// growth through another number or another program is seen, and so is a
// file cut short under the reader (at its next read).
TEST_F(HostFilesTest, TheEndFollowsTheFileAsItChanges) {
  WriteFile(dir_ / "f", "abc");
  files_.OpenBinary(1, dir_ / "f");
  files_.OpenBinary(2, dir_ / "f");
  std::byte buffer[3];
  EXPECT_EQ(files_.Read(1, buffer), 3u);
  EXPECT_TRUE(files_.AtEnd(1));
  files_.Write(2, Bytes("ABCDE"));  // the same file, longer now
  EXPECT_FALSE(files_.AtEnd(1));
  WriteFile(dir_ / "f", "ABCDEFGH");  // another writer
  EXPECT_EQ(files_.Read(1, buffer), 3u);
  EXPECT_EQ(files_.Read(1, buffer), 2u);
  EXPECT_TRUE(files_.AtEnd(1));
  fs::resize_file(dir_ / "f", 2);  // cut short behind the second number
  EXPECT_EQ(files_.Read(2, buffer), 0u);
  EXPECT_TRUE(files_.AtEnd(2));
  EXPECT_EQ(files_.Length(2), 2);
}

TEST_F(HostFilesTest, NumbersAreCheckedAsTheHostDoes) {
  files_.OpenBinary(1, dir_ / "a");
  ExpectRuntimeError(err::kFileAlreadyOpen, [&] { files_.OpenBinary(1, dir_ / "b"); });
  EXPECT_EQ(files_.LastFailedPath(), dir_ / "b");
  ExpectRuntimeError(err::kBadFileNameOrNumber, [&] { files_.OpenBinary(0, dir_ / "b"); });
  ExpectRuntimeError(err::kBadFileNameOrNumber, [&] { files_.Length(9); });
  files_.Close(9);  // closing a number that is not open is no error
  files_.Close(1);
  ExpectRuntimeError(err::kBadFileNameOrNumber, [&] { files_.AtEnd(1); });
}

TEST_F(HostFilesTest, CopyBlockMovesFromPositionToPosition) {
  WriteFile(dir_ / "from", "0123456789");
  WriteFile(dir_ / "to", "abcdefghijklmnop");
  files_.OpenBinary(1, dir_ / "from");
  files_.OpenBinary(2, dir_ / "to");
  std::byte skipped[2];
  files_.Read(1, skipped);
  EXPECT_EQ(files_.CopyBlock(1, 2, 4), 4u);
  EXPECT_EQ(files_.CopyBlock(1, 2, 100), 4u);  // short only at the end of the source
  EXPECT_TRUE(files_.AtEnd(1));
  files_.Close(2);
  EXPECT_EQ(ReadFile(dir_ / "to"), "23456789ijklmnop");
}

TEST_F(HostFilesTest, DirNamesExistingFilesOnly) {
  WriteFile(dir_ / "here.txt", "x");
  fs::create_directory(dir_ / "sub");
  EXPECT_EQ(HostFiles::Dir(dir_ / "here.txt"), "here.txt");
  EXPECT_EQ(HostFiles::Dir(dir_ / "gone.txt"), "");
  EXPECT_EQ(HostFiles::Dir(dir_ / "sub"), "");
  EXPECT_EQ(HostFiles::Dir(""), "");
}

}  // namespace
}  // namespace kestu
