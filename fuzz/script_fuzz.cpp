// Fuzzes the script language against a headless host: any text runs to its
// end, stops on a bad line, or reports run-time errors, and never crashes
// the host. Files the scripts write land in a folder of their own.

#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string_view>

#include "kestu/host/Host.h"
#include "kestu/script/ScriptRunner.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  const std::filesystem::path folder =
      std::filesystem::temp_directory_path() / ("kestu-script-fuzz-" + std::to_string(getpid()));
  std::filesystem::create_directories(folder);
  std::filesystem::current_path(folder);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  kestu::Host host;
  host.SetWarningStream(nullptr);
  std::ostringstream out, err;
  kestu::ScriptRunner runner(host, out, err);
  const int status = runner.RunText(text, "fuzz.kss", ".");
  if (status == kestu::ScriptRunner::kHostFailure) std::abort();
  return 0;
}
