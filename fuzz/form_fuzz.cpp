// Fuzzes form files: any text loads whole or is refused with a host
// run-time error, and a form that loads saves to a file that loads back
// and saves to the same text.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "kestu/foundation/RuntimeError.h"
#include "kestu/host/FormFile.h"
#include "kestu/host/Host.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  kestu::Host host;
  host.SetWarningStream(nullptr);
  std::string saved;
  try {
    saved = kestu::FormFileText(host, kestu::LoadFormText(host, text, "fuzz.json"));
  } catch (const kestu::RuntimeError&) {
    return 0;
  }
  kestu::Host again;
  again.SetWarningStream(nullptr);
  if (kestu::FormFileText(again, kestu::LoadFormText(again, saved, "saved.json")) != saved) {
    std::abort();
  }
  return 0;
}
