#include "kestu/copyfile/KestuCopyFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>

#include "copyfile/CopyFileHarness.h"
#include "kestu/foundation/HostFiles.h"
#include "support/ExpectRuntimeError.h"

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

constexpr size_t kFullVolume = 1'443'840;  // 141 blocks of 10240: the first to exceed 1400 KB

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

TEST(KestuCopyFileCopy, LongerTargetKeepsItsTail) {
  TempFolder dir;
  WriteFile(dir / "src", std::string(3000, 'n'));
  WriteFile(dir / "dst", std::string(5000, 'o'));
  CopyFileHarness host;

  EXPECT_EQ(host.Copy(dir / "src", dir / "dst").back(), "Done");
  EXPECT_EQ(ReadFile(dir / "dst"), std::string(3000, 'n') + std::string(2000, 'o'));
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

TEST(KestuCopyFileCopy, BlockSizesAndAnInvalidOneAfterBothOpens) {
  TempFolder dir;
  WriteFile(dir / "src", PatternBytes(12'000));
  CopyFileHarness host;

  host.Copier().SetProperty("BlockSize", Variant(Block_5K));
  EXPECT_EQ(host.Copy(dir / "src", dir / "five"),
            (Events{"Progress(42)", "Progress(85)", "Progress(100)", "Done"}));
  host.Copier().SetProperty("BlockSize", Variant(Block_1K));
  EXPECT_EQ(host.Copy(dir / "src", dir / "one").size(), 12u + 1u);  // 11 full blocks and 736
  EXPECT_EQ(ReadFile(dir / "one"), ReadFile(dir / "src"));

  host.Copier().SetProperty("BlockSize", Variant(0));
  EXPECT_EQ(host.Copy(dir / "src", dir / "none"), (Events{"Error(94)"}));
  EXPECT_TRUE(fs::exists(dir / "none"));  // the target was already opened
  ExpectRuntimeError(err::kOverflow,
                     [&] { host.Copier().SetProperty("BlockSize", Variant(40000)); });
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

TEST(KestuCopyFileCancel, InTheFirstNextVolumeOpensNothing) {
  TempFolder dir;
  WriteFile(dir / "src", PatternBytes(100));
  CopyFileHarness host;
  host.Copier().NextVolume.Connect([](std::string, int16_t& cancel) { cancel = 1; });

  EXPECT_EQ(host.Copy(dir / "src", VolumeSet(dir / "set")),
            (Events{"NextVolume(" + (dir / "set.001") + ")"}));
  EXPECT_FALSE(fs::exists(dir / "set.001"));
}

TEST(KestuCopyFileCancel, AtALaterVolumeKeepsWhatWasWritten) {
  TempFolder dir;
  WriteFile(dir / "src", PatternBytes(10'000));
  CopyFileHarness host;
  host.Copier().SetProperty("BlockSize", Variant(Block_1K));
  host.Copier().SetProperty("VolumeSize", Variant(2));  // three blocks per volume
  host.Copier().NextVolume.Connect([](std::string name, int16_t& cancel) {
    if (name.ends_with(".002")) cancel = 1;
  });

  const Events events = host.Copy(dir / "src", VolumeSet(dir / "set"));
  EXPECT_EQ(events.back(), "NextVolume(" + (dir / "set.002") + ")");
  EXPECT_EQ(fs::file_size(dir / "set.001"), 3072u);
  EXPECT_FALSE(fs::exists(dir / "set.002"));
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

TEST(KestuCopyFileVolumes, SplitMatchesTheSystemSplitAndJoinsBack) {
  TempFolder dir;
  const std::string data = PatternBytes(3'000'000);
  WriteFile(dir / "data", data);
  CopyFileHarness host;
  // Each volume is announced before it exists.
  Connection check = host.Copier().NextVolume.Connect(
      [](std::string name, int16_t&) { EXPECT_FALSE(fs::exists(name)) << name; });

  Events events = host.Copy(dir / "data", VolumeSet(dir / "vol"));
  std::erase_if(events, [](const std::string& e) { return e.starts_with("Progress"); });
  EXPECT_EQ(events, (Events{"NextVolume(" + (dir / "vol.001") + ")",
                            "NextVolume(" + (dir / "vol.002") + ")",
                            "NextVolume(" + (dir / "vol.003") + ")", "Done"}));
  EXPECT_EQ(fs::file_size(dir / "vol.001"), kFullVolume);
  EXPECT_EQ(fs::file_size(dir / "vol.002"), kFullVolume);
  EXPECT_EQ(fs::file_size(dir / "vol.003"), 112'320u);

  const std::string split = "cd '" + dir.Path().string() + "' && split -b 1443840 data part_";
  ASSERT_EQ(std::system(split.c_str()), 0);
  EXPECT_EQ(ReadFile(dir / "vol.001"), ReadFile(dir / "part_aa"));
  EXPECT_EQ(ReadFile(dir / "vol.002"), ReadFile(dir / "part_ab"));
  EXPECT_EQ(ReadFile(dir / "vol.003"), ReadFile(dir / "part_ac"));

  check.Disconnect();
  // A join never says Done: the set ends where the next volume is missing.
  events = host.Copy(VolumeSet(dir / "vol"), dir / "joined");
  std::erase_if(events, [](const std::string& e) { return e.starts_with("Progress"); });
  EXPECT_EQ(events, (Events{"NextVolume(" + (dir / "vol.001") + ")",
                            "NextVolume(" + (dir / "vol.002") + ")",
                            "NextVolume(" + (dir / "vol.003") + ")",
                            "NextVolume(" + (dir / "vol.004") + ")", "Error(53)"}));
  EXPECT_EQ(ReadFile(dir / "joined"), data);
  EXPECT_FALSE(fs::exists(dir / "vol.004"));
}

TEST(KestuCopyFileVolumes, ExactMultipleMakesNoEmptyLastVolume) {
  TempFolder dir;
  WriteFile(dir / "data", PatternBytes(2 * kFullVolume));
  CopyFileHarness host;

  EXPECT_EQ(host.Copy(dir / "data", VolumeSet(dir / "vol")).back(), "Done");
  EXPECT_EQ(fs::file_size(dir / "vol.002"), kFullVolume);
  EXPECT_FALSE(fs::exists(dir / "vol.003"));
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

TEST(KestuCopyFileVolumes, DottedFolderCutsLaterVolumeNamesThere) {
  TempFolder dir;
  fs::create_directory(dir / "my.dir");
  WriteFile(dir / "src", PatternBytes(5000));
  CopyFileHarness host;
  host.Copier().SetProperty("BlockSize", Variant(Block_1K));
  host.Copier().SetProperty("VolumeSize", Variant(1));  // two blocks per volume

  EXPECT_EQ(host.Copy(dir / "src", VolumeSet(dir / "my.dir/data")).back(), "Done");
  EXPECT_EQ(fs::file_size(dir / "my.dir/data.001"), 2048u);
  EXPECT_EQ(fs::file_size(dir / "my.002"), 2048u);
  EXPECT_EQ(fs::file_size(dir / "my.003"), 904u);
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

// ---- The face and its events ----

TEST(KestuCopyFileShow, ShowRaisesProgressByModeAndCaption) {
  CopyFileHarness design(/*user_mode=*/false);
  EXPECT_EQ(design.Events(), (Events{"Progress(50)", "Progress(50)"}));  // Resize, Show

  CopyFileHarness run;
  run.Events().clear();
  run.Copier().SetProperty("ForeColor", Variant(255));
  EXPECT_EQ(run.Events(), (Events{"notify ForeColor", "Progress(0)"}));

  run.Events().clear();
  run.Copier().SetProperty("StartCaption", Variant::Boolean(false));
  run.Copier().UserControl_Paint();
  EXPECT_EQ(run.Events(), (Events{"notify StartCaption"}));
  for (Rgb pixel : run.Face().Pixels()) ASSERT_EQ(pixel, ResolveColor(syscolor::kWindowBackground));
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

// ---- Persistence ----

}  // namespace
}  // namespace kestu
