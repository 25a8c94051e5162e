// Every input that once made a fuzz target fail, replayed through the same entry points.
#include <gtest/gtest.h>

#include <filesystem>

#include "readers.h"
#include "base/values.h"
#include "test_support.h"

namespace fs = std::filesystem;

namespace {

std::vector<fs::path> inputs(const std::string& reader) {
  std::vector<fs::path> out;
  const fs::path dir = ubtest::source_dir() + "/fuzz/regressions/" + reader;
  if (!fs::is_directory(dir)) return out;
  for (const auto& e : fs::directory_iterator(dir))
    if (e.is_regular_file()) out.push_back(e.path());
  std::sort(out.begin(), out.end());
  return out;
}

void replay(const std::string& reader, fuzz::Outcome (*read)(const uint8_t*, size_t)) {
  for (const auto& f : inputs(reader)) {
    const std::string bytes = ub::read_file(f.string());
    const fuzz::Outcome r = read(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    EXPECT_FALSE(r.unexpected) << f.filename() << ": " << r.what;
  }
}

}  // namespace

TEST(FuzzRegressions, PageReader) { replay("page", fuzz::read_page); }

TEST(FuzzRegressions, LayoutReader) { replay("layout", fuzz::read_layout); }
