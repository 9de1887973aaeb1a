// The file copier against the system's ways of copying the same
// 20,000,000 bytes in the page cache: the control (10240-byte blocks, the
// bar drawn after every block, hosted headless), a bare loop of the same
// blocks, and the in-kernel copy that cp uses. Compare them in one run.

#include <benchmark/benchmark.h>
#include <fcntl.h>
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

void BM_CopyFileControl(benchmark::State& state) {
  kestu::Host host;
  kestu::Form& form = host.CreateForm("BenchForm");
  auto& copier = static_cast<kestu::KestuCopyFile&>(
      host.NewControl(form, kestu::KestuCopyFile::Info(), "CopyFile1",
                      kestu::TwipsRect{0, 0, 2400, 360})
          .Control());
  bool done = false;
  copier.Done.Connect([&] { done = true; });
  copier.SetSourceFile(SourceFile());
  copier.SetNewFile(TargetFile("kestu_copy_bench_control"));
  for (auto _ : state) {
    done = false;
    copier.BeginCopyFile();
    if (!done) state.SkipWithError("the copy did not finish");
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kFileBytes));
}
BENCHMARK(BM_CopyFileControl)->Unit(benchmark::kMillisecond);

void BM_BareBlockLoop(benchmark::State& state) {
  std::vector<char> block(10240);
  for (auto _ : state) {
    const int in = ::open(SourceFile().c_str(), O_RDONLY);
    const int out = ::open(TargetFile("kestu_copy_bench_loop").c_str(), O_WRONLY | O_CREAT, 0644);
    for (ssize_t got; (got = ::read(in, block.data(), block.size())) > 0;) {
      if (::write(out, block.data(), static_cast<size_t>(got)) != got) state.SkipWithError("write");
    }
    ::close(in);
    ::close(out);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * kFileBytes));
}
BENCHMARK(BM_BareBlockLoop)->Unit(benchmark::kMillisecond);

// What cp does on Linux: one copy inside the kernel.
void BM_KernelCopy(benchmark::State& state) {
  for (auto _ : state) {
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
