#pragma once
// The body shared by the picture fuzz targets. Decoders are chosen by
// signature, so each target writes its format's signature in front of any
// input that lacks it: every input then reaches the one decoder under test.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <vector>

#include "kestu/foundation/RuntimeError.h"
#include "kestu/foundation/StdPicture.h"

namespace kestu {

inline int FuzzPictureDecoder(const uint8_t* data, size_t size,
                              std::initializer_list<uint8_t> signature) {
  std::vector<uint8_t> bytes;
  const bool has_signature =
      size >= signature.size() && std::equal(signature.begin(), signature.end(), data);
  if (!has_signature) bytes.assign(signature.begin(), signature.end());
  bytes.insert(bytes.end(), data, data + size);
  try {
    LoadPictureFromBytes(bytes);
  } catch (const RuntimeError&) {
    // Refusing a damaged picture is the expected outcome; only crashes,
    // leaks and sanitizer reports are findings.
  }
  return 0;
}

}  // namespace kestu
