// Fuzzes the GIF decoder through LoadPictureFromBytes.

#include "fuzz/FuzzPicture.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  return kestu::FuzzPictureDecoder(data, size, {'G', 'I', 'F', '8', '9', 'a'});
}
