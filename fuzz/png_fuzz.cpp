// Fuzzes the PNG decoder through LoadPictureFromBytes.

#include "fuzz/FuzzPicture.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  return kestu::FuzzPictureDecoder(data, size, {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'});
}
