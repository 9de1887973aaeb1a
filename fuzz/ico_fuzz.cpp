// Fuzzes the icon decoder through LoadPictureFromBytes.

#include "fuzz/FuzzPicture.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  return kestu::FuzzPictureDecoder(data, size, {0, 0, 1, 0});
}
