// Fuzzes the property-bag reader: any text either loads or raises a host
// run-time error, and what loads writes back to the same text every time.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "kestu/foundation/PropertyBag.h"
#include "kestu/foundation/RuntimeError.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  try {
    const kestu::PropertyBag bag = kestu::PropertyBag::FromJson(text, "fuzz");
    const std::string written = bag.ToJson();
    if (kestu::PropertyBag::FromJson(written, "rewritten").ToJson() != written) std::abort();
  } catch (const kestu::RuntimeError&) {
  }
  return 0;
}
