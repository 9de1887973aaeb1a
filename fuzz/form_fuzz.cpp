// Fuzzes form files: any text loads whole or is refused with a host
// run-time error. A form that loads saves to a file that always loads back,
// with the same tree of controls and the same extender values. The
// controls' own property values may move on between two saves: a control
// may normalise what it reads, as the number box does, on purpose, under a
// number format outside its enumeration.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "kestu/foundation/RuntimeError.h"
#include "kestu/host/FormFile.h"
#include "kestu/host/Host.h"

namespace {

// The saved form without its controls' properties.
nlohmann::ordered_json Tree(const std::string& saved) {
  nlohmann::ordered_json json = nlohmann::ordered_json::parse(saved);
  const auto strip = [](nlohmann::ordered_json& controls, auto& self) -> void {
    for (auto& control : controls) {
      control.erase("Properties");
      if (control.contains("Controls")) self(control["Controls"], self);
    }
  };
  strip(json["Controls"], strip);
  return json;
}

}  // namespace

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
  std::string saved_again;
  try {
    saved_again = kestu::FormFileText(again, kestu::LoadFormText(again, saved, "saved.json"));
  } catch (const kestu::RuntimeError&) {
    std::abort();  // a form the host saved must load
  }
  if (Tree(saved_again) != Tree(saved)) std::abort();
  return 0;
}
