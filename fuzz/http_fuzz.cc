// libFuzzer target: raw request bytes through the request reader of "compose serve".
#include <cstdio>
#include <cstdlib>

#include "http_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const fuzz::Outcome r = fuzz::read_http(data, size);
  if (r.unexpected) {
    std::fprintf(stderr, "unexpected failure: %s\n", r.what.c_str());
    std::abort();
  }
  return 0;
}
