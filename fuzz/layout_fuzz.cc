// libFuzzer target: layout JSON text through the layout reader of json2img and check_all.
#include "readers.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  fuzz::setup(UB_DIR);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzz::read_layout(data, size);
  return 0;
}
