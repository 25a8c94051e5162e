// libFuzzer target: layout JSON text through the layout reader of json2img and check_all,
// then through their report and every rule.
#include <cstdio>
#include <cstdlib>

#include "readers.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  fuzz::setup(UB_DIR);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const fuzz::Outcome r = fuzz::read_layout(data, size);
  if (r.unexpected) {
    std::fprintf(stderr, "unexpected failure: %s\n", r.what.c_str());
    std::abort();
  }
  return 0;
}
