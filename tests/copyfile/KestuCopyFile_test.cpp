#include "kestu/copyfile/KestuCopyFile.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "copyfile/CopyFileHarness.h"
#include "kestu/foundation/HostFiles.h"

namespace kestu {
namespace {

using copytest::CopyFileHarness;
using copytest::PatternBytes;
using copytest::ReadFile;
using copytest::TempFolder;
using copytest::VolumeSet;
using copytest::WriteFile;
using Events = std::vector<std::string>;

namespace fs = std::filesystem;

// ---- One file to one file ----

TEST(KestuCopyFileCopy, CopiesBlockByBlockWithProgressThenDone) {
  TempFolder dir;
  const std::string data = PatternBytes(25'000);
  WriteFile(dir / "src", data);
  CopyFileHarness host;

  EXPECT_EQ(host.Copy(dir / "src", dir / "dst"),
            (Events{"Progress(40)", "Progress(81)", "Progress(100)", "Done"}));
  EXPECT_EQ(ReadFile(dir / "dst"), data);
  EXPECT_FALSE(HostFiles::Instance().IsOpen(1));
  EXPECT_FALSE(HostFiles::Instance().IsOpen(2));
}

TEST(KestuCopyFileCopy, EmptyOrMissingSourceIsFileNotFoundWithoutProgress) {
  TempFolder dir;
  WriteFile(dir / "empty", "");
  CopyFileHarness host;

  EXPECT_EQ(host.Copy(dir / "empty", dir / "a"), (Events{"Error(53)"}));
  // The open created the missing source; the empty file stays behind.
  EXPECT_EQ(host.Copy(dir / "missing", dir / "b"), (Events{"Error(53)"}));
  EXPECT_TRUE(fs::exists(dir / "missing"));
  EXPECT_EQ(fs::file_size(dir / "missing"), 0u);
}

TEST(KestuCopyFileCopy, SourceThatShrinksReachesItsEndEarly) {
  TempFolder dir;
  const std::string data = PatternBytes(25'000);
  WriteFile(dir / "src", data);
  CopyFileHarness host;
  host.Copier().Progress.Connect([&](int16_t percent, int16_t&) {
    if (percent == 40) fs::resize_file(dir / "src", 15'000);
  });

  // The second block is counted whole though only 4760 bytes were left.
  EXPECT_EQ(host.Copy(dir / "src", dir / "dst"), (Events{"Progress(40)", "Progress(81)", "Done"}));
  EXPECT_EQ(ReadFile(dir / "dst"), data.substr(0, 15'000));
}

// A block size out of the enumeration fails only once both files are open.
TEST(KestuCopyFileCopy, BlockSizesAndAnInvalidOneAfterBothOpens) {
  TempFolder dir;
  WriteFile(dir / "src", PatternBytes(12'000));
  CopyFileHarness host;

  host.Copier().SetProperty("BlockSize", Variant(Block_5K));
  EXPECT_EQ(host.Copy(dir / "src", dir / "five"),
            (Events{"Progress(42)", "Progress(85)", "Progress(100)", "Done"}));
  host.Copier().SetProperty("BlockSize", Variant(0));
  EXPECT_EQ(host.Copy(dir / "src", dir / "none"), (Events{"Error(94)"}));
  EXPECT_TRUE(fs::exists(dir / "none"));
}

// ---- The 32-bit limits ----

TEST(KestuCopyFileLimits, PercentProductOverflowsPastTwentyOneMillionBytes) {
  TempFolder dir;
  constexpr int64_t kLargest = 21'474'836;
  WriteFile(dir / "fits", "");
  WriteFile(dir / "too_big", "");
  fs::resize_file(dir / "fits", kLargest);
  fs::resize_file(dir / "too_big", kLargest + 1);
  CopyFileHarness host;

  EXPECT_EQ(host.Copy(dir / "fits", dir / "fits_copy").back(), "Done");
  const Events events = host.Copy(dir / "too_big", dir / "too_big_copy");
  // 2097 blocks copy normally; the last one is written, then its
  // percentage overflows: the whole file is there and still it failed.
  EXPECT_EQ(events.size(), 2098u);
  EXPECT_EQ(events.back(), "Error(6)");
  EXPECT_EQ(fs::file_size(dir / "too_big_copy"), static_cast<uintmax_t>(kLargest + 1));
}

TEST(KestuCopyFileLimits, VolumeSizeProductOverflowsOnTheFirstVolumeTest) {
  TempFolder dir;
  WriteFile(dir / "src", PatternBytes(30'000));
  CopyFileHarness host;
  host.Copier().SetProperty("VolumeSize", Variant(2'100'000));  // x 1024 is past the 32-bit range

  EXPECT_EQ(host.Copy(dir / "src", VolumeSet(dir / "vol")),
            (Events{"NextVolume(" + (dir / "vol.001") + ")", "Progress(34)", "Error(6)"}));
  // A single-file target never multiplies.
  EXPECT_EQ(host.Copy(dir / "src", dir / "whole").back(), "Done");
}

// ---- Cancelling ----

TEST(KestuCopyFileCancel, InTheFirstProgressLeavesExactlyOneBlock) {
  TempFolder dir;
  WriteFile(dir / "src", PatternBytes(25'000));
  CopyFileHarness host;
  host.Copier().Progress.Connect([](int16_t, int16_t& cancel) { cancel = 1; });

  EXPECT_EQ(host.Copy(dir / "src", dir / "dst"), (Events{"Progress(40)"}));
  EXPECT_EQ(ReadFile(dir / "dst"), PatternBytes(25'000).substr(0, 10240));
  EXPECT_FALSE(HostFiles::Instance().IsOpen(1));
}

// Cancelled in the NextVolume of a later volume, the copy stops before
// opening it and keeps the volumes already written whole. (Cancelled at the
// first volume: scripts/copyfile/failures.kss.)
TEST(KestuCopyFileCancel, AtAVolumeOpensNothingMore) {
  TempFolder dir;
  WriteFile(dir / "src", PatternBytes(10'000));
  CopyFileHarness host;
  host.Copier().SetProperty("BlockSize", Variant(Block_1K));
  host.Copier().SetProperty("VolumeSize", Variant(2));  // three blocks per volume
  host.Copier().NextVolume.Connect([](std::string name, int16_t& cancel) {
    if (name.ends_with(".002")) cancel = 1;
  });
  EXPECT_EQ(host.Copy(dir / "src", VolumeSet(dir / "set")).back(),
            "NextVolume(" + (dir / "set.002") + ")");
  EXPECT_FALSE(fs::exists(dir / "set.002"));
  EXPECT_EQ(fs::file_size(dir / "set.001"), 3072u);
}

// ---- Volume sets ----

TEST(KestuCopyFileVolumes, NamesCutAtTheFirstDotOfTheWholePath) {
  EXPECT_EQ(KestuCopyFile::FirstVolumeName("@C:\\backup\\data"), "C:\\backup\\data.001");
  EXPECT_EQ(KestuCopyFile::NextVolumeName("C:\\backup\\data.001", 2), "C:\\backup\\data.002");
  EXPECT_EQ(KestuCopyFile::FirstVolumeName("@C:\\backup\\data.zip"), "C:\\backup\\data.zip.001");
  EXPECT_EQ(KestuCopyFile::NextVolumeName("C:\\backup\\data.zip.001", 2), "C:\\backup\\data.002");
  EXPECT_EQ(KestuCopyFile::NextVolumeName("C:\\my.dir\\data.001", 2), "C:\\my.002");
  EXPECT_EQ(KestuCopyFile::NextVolumeName(" /v/data .999", 1000), "/v/data.1000");
}

TEST(KestuCopyFileVolumes, PercentRestartsAtEachSourceVolume) {
  TempFolder dir;
  WriteFile(dir / "set.001", PatternBytes(2048));
  WriteFile(dir / "set.002", PatternBytes(1024));
  CopyFileHarness host;
  host.Copier().SetProperty("BlockSize", Variant(Block_1K));

  EXPECT_EQ(host.Copy(VolumeSet(dir / "set"), dir / "out"),
            (Events{"NextVolume(" + (dir / "set.001") + ")", "Progress(50)", "Progress(100)",
                    "NextVolume(" + (dir / "set.002") + ")", "Progress(100)",
                    "NextVolume(" + (dir / "set.003") + ")", "Error(53)"}));
}

// Later volumes are cut at the first dot of the whole path; each is
// announced before it exists, and a source that ends where a volume does
// makes no empty volume after it.
TEST(KestuCopyFileVolumes, DottedFolderCutsLaterVolumeNamesThere) {
  TempFolder dir;
  fs::create_directory(dir / "my.dir");
  WriteFile(dir / "src", PatternBytes(4096));
  CopyFileHarness host;
  host.Copier().SetProperty("BlockSize", Variant(Block_1K));
  host.Copier().SetProperty("VolumeSize", Variant(1));  // two blocks per volume
  host.Copier().NextVolume.Connect(
      [](std::string name, int16_t&) { EXPECT_FALSE(fs::exists(name)) << name; });

  EXPECT_EQ(host.Copy(dir / "src", VolumeSet(dir / "my.dir/data")).back(), "Done");
  EXPECT_EQ(fs::file_size(dir / "my.dir/data.001"), 2048u);
  EXPECT_EQ(fs::file_size(dir / "my.002"), 2048u);
  EXPECT_FALSE(fs::exists(dir / "my.003"));
}

// ---- One copy at a time in the whole library ----

TEST(KestuCopyFileNumbers, SecondCopyDuringOneFailsWithFileAlreadyOpen) {
  TempFolder dir;
  WriteFile(dir / "src", PatternBytes(25'000));
  CopyFileHarness first;
  CopyFileHarness second;
  bool started = false;
  first.Copier().Progress.Connect([&](int16_t, int16_t&) {
    if (started) return;
    started = true;
    second.Copy(dir / "src", dir / "other");
  });

  const Events events = first.Copy(dir / "src", dir / "dst");
  EXPECT_EQ(second.Events(), (Events{"Error(55)"}));
  // The failed copy closes the numbers it shares with the running one,
  // which then finds its source gone: the host's file numbers are global.
  EXPECT_EQ(events, (Events{"Progress(40)", "Error(52)"}));
  EXPECT_FALSE(fs::exists(dir / "other"));
}

TEST(KestuCopyFileShow, RepaintDuringCopyCountsAgainstOneHundred) {
  TempFolder dir;
  WriteFile(dir / "src", PatternBytes(25'000));
  CopyFileHarness host;
  bool painted = false;
  host.Copier().Progress.Connect([&](int16_t, int16_t&) {
    if (!painted) {
      painted = true;
      host.Copier().UserControl_Paint();
    }
  });

  EXPECT_EQ(host.Copy(dir / "src", dir / "dst"),
            (Events{"Progress(40)", "Progress(0)", "Progress(20480)", "Progress(25000)", "Done"}));
}

}  // namespace
}  // namespace kestu
