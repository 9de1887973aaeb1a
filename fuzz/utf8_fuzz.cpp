// The one UTF-8 decoder: any bytes decode without reading past the end,
// every decoded value is a character, and text that re-encodes and
// decodes again comes back the same, as many characters as counted.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "kestu/foundation/Text.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const std::u32string decoded = kestu::DecodeUtf8(bytes);
  if (decoded.size() != kestu::CountCharacters(bytes)) std::abort();
  for (char32_t c : decoded) {
    if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) std::abort();
  }
  if (kestu::DecodeUtf8(kestu::EncodeUtf8(decoded)) != decoded) std::abort();
  (void)kestu::ParseCaption(decoded);
  return 0;
}
