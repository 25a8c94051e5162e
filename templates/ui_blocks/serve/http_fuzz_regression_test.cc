// Every input that once made the request reader fail, and inputs at the bounds of the fuzz
// target (fuzz/regressions/http), replayed through the fuzz entry point.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "base/values.h"
#include "http_reader.h"
#include "test_support.h"

namespace fs = std::filesystem;

TEST(FuzzRegressions, RequestReader) {
  const fs::path dir = ubtest::source_dir() + "/fuzz/regressions/http";
  std::vector<fs::path> inputs;
  for (const auto& e : fs::directory_iterator(dir))
    if (e.is_regular_file()) inputs.push_back(e.path());
  std::sort(inputs.begin(), inputs.end());
  EXPECT_FALSE(inputs.empty());
  for (const auto& f : inputs) {
    const std::string bytes = ub::read_file(f.string());
    const fuzz::Outcome r = fuzz::read_http(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    EXPECT_FALSE(r.unexpected) << f.filename() << ": " << r.what;
  }
}
