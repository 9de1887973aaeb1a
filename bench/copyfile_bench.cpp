// The file copier against the system's ways of copying the same
// 20,000,000 bytes in the page cache: the control (10240-byte blocks, the
// bar drawn after every block, hosted headless), the system's cp run as a
// program, the same blocks copied with nothing else done, and the one
// in-kernel copy that cp makes. Every one writes a new file, as cp does
// (the old one is removed outside the timing); the control also
// overwriting its last target in place, which it does without
// truncating. Compare them in one run.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "kestu/copyfile/KestuCopyFile.h"
#include "kestu/host/Host.h"

namespace {

namespace fs = std::filesystem;

constexpr size_t kFileBytes = 20'000'000;

// The source, written once and read once so it sits in the page cache.
const std::string& SourceFile() {
  static const std::string path = [] {
    const fs::path file = fs::temp_directory_path() / "kestu_copy_bench_source";
    std::vector<char> bytes(kFileBytes);
    for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>((i * 31 + 7) % 251);
    std::ofstream(file, std::ios::binary)
        .write(bytes.data(), static_cast<std::streamsize>(kFileBytes));
    std::ifstream(file, std::ios::binary)
        .read(bytes.data(), static_cast<std::streamsize>(kFileBytes));
    return file.string();
  }();
  return path;
}

std::string TargetFile(const char* name) {
  return (fs::temp_directory_path() / name).string();
}

// Removes the last run's target outside the timing.
void RemoveUntimed(benchmark::State& state, const std::string& path) {
  state.PauseTiming();
  ::unlink(path.c_str());
  state.ResumeTiming();
}

enum Target { kNewFile, kOverwritten };

void BM_CopyFileControl(benchmark::State& state) {
  kestu::Host host;
  kestu::Form& form = host.CreateForm("BenchForm");
  auto& copier = static_cast<kestu::KestuCopyFile&>(
      host.NewControl(form, kestu::KestuCopyFile::Info(), "CopyFile1",
                      kestu::TwipsRect{0, 0, 2400, 360})
          .Control());
  bool done = false;
  copier.Done.Connect([&] { done = true; });
  const std::string target = TargetFile("kestu_copy_bench_control");
  copier.SetSourceFile(SourceFile());
  copier.SetNewFile(target);
  for (auto _ : state) {
    if (state.range(0) == kNewFile) RemoveUntimed(state, target);
    done = false;
    copier.BeginCopyFile();
    if (!done) state.SkipWithError("the copy did not finish");
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kFileBytes));
}
BENCHMARK(BM_CopyFileControl)
    ->ArgName("overwrite")
    ->Arg(kNewFile)
    ->Arg(kOverwritten)
    ->Unit(benchmark::kMillisecond);

extern "C" char** environ;

void BM_SystemCp(benchmark::State& state) {
  const std::string target = TargetFile("kestu_copy_bench_cp");
  const std::string source = SourceFile();
  char* argv[] = {const_cast<char*>("cp"), const_cast<char*>(source.c_str()),
                  const_cast<char*>(target.c_str()), nullptr};
  for (auto _ : state) {
    RemoveUntimed(state, target);
    pid_t child = 0;
    int status = 0;
    if (::posix_spawnp(&child, "cp", nullptr, nullptr, argv, environ) != 0 ||
        ::waitpid(child, &status, 0) != child || status != 0) {
      state.SkipWithError("cp failed");
      break;
    }
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kFileBytes));
}
BENCHMARK(BM_SystemCp)->UseRealTime()->Unit(benchmark::kMillisecond);

// The floor for any copier that puts each 10240-byte block in the file
// before it reports progress, as the control must: the same in-kernel
// copy, one block per call, and nothing else.
void BM_BlockByBlockFloor(benchmark::State& state) {
  for (auto _ : state) {
    RemoveUntimed(state, TargetFile("kestu_copy_bench_loop"));
    const int in = ::open(SourceFile().c_str(), O_RDONLY);
    const int out = ::open(TargetFile("kestu_copy_bench_loop").c_str(), O_WRONLY | O_CREAT, 0644);
    while (::copy_file_range(in, nullptr, out, nullptr, 10240, 0) > 0) {
    }
    ::close(in);
    ::close(out);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kFileBytes));
}
BENCHMARK(BM_BlockByBlockFloor)->Unit(benchmark::kMillisecond);

// What cp does on Linux: one copy inside the kernel.
void BM_KernelCopy(benchmark::State& state) {
  for (auto _ : state) {
    RemoveUntimed(state, TargetFile("kestu_copy_bench_kernel"));
    const int in = ::open(SourceFile().c_str(), O_RDONLY);
    const int out = ::open(TargetFile("kestu_copy_bench_kernel").c_str(), O_WRONLY | O_CREAT, 0644);
    for (size_t left = kFileBytes; left > 0;) {
      const ssize_t moved = ::copy_file_range(in, nullptr, out, nullptr, left, 0);
      if (moved <= 0) {
        state.SkipWithError("copy_file_range");
        break;
      }
      left -= static_cast<size_t>(moved);
    }
    ::close(in);
    ::close(out);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kFileBytes));
}
BENCHMARK(BM_KernelCopy)->Unit(benchmark::kMillisecond);

}  // namespace
