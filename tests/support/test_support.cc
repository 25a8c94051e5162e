#include "test_support.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "driver/paths.h"

namespace ubtest {

std::string source_dir() { return UB_SOURCE_DIR; }

std::string temp_dir(const std::string& tag) {
  std::string tmpl = (std::filesystem::temp_directory_path() / ("ub_" + tag + "_XXXXXX")).string();
  char* d = mkdtemp(tmpl.data());
  return d ? std::string(d) : tmpl;
}

Json page_spec(int w, int h, Json blocks) {
  Json spec = Json::object();
  spec["resolution"] = {{"width", w}, {"height", h}};
  spec["page"] = Json::object();
  spec["page"]["title"] = "设置";
  spec["page"]["blocks"] = blocks;
  spec["page"]["footer"] = {{"primary", "保存"}};
  return spec;
}

std::vector<std::string> keys_of(const Json& o) {
  std::vector<std::string> k;
  for (auto it = o.begin(); it != o.end(); ++it) k.push_back(it.key());
  return k;
}

namespace {
// Point the program's own directory at the checkout before any test runs.
struct PathEnvironment : ::testing::Environment {
  void SetUp() override {
    unsetenv("TVUITOOL_BLOCKS");
    ub::init_paths(std::string(UB_SOURCE_DIR) + "/templates/ui_blocks");
  }
};
const auto* const kEnv = ::testing::AddGlobalTestEnvironment(new PathEnvironment);
}  // namespace

}  // namespace ubtest
