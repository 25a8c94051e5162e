#include "driver/paths.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>

namespace fs = std::filesystem;

namespace ub {

static Paths& state() {
  static Paths p;
  return p;
}
static bool g_ready = false;

void init_paths(const std::string& here) {
  Paths& p = state();
  p.here = fs::absolute(here).lexically_normal().string();
  if (!p.here.empty() && p.here.back() == '/') p.here.pop_back();
  fs::path repo = fs::path(p.here).parent_path().parent_path();
  p.repo = repo.string();
  fs::path repo_ui = repo / "ui_tools";
  p.ui_tools = fs::is_directory(repo_ui) ? repo_ui.string() : (repo.parent_path() / "ui_tools").string();
  g_ready = true;
}

const Paths& paths() {
  if (!g_ready) {
    std::error_code ec;
    fs::path exe = fs::read_symlink("/proc/self/exe", ec);
    init_paths(ec ? fs::current_path().string() : exe.parent_path().string());
  }
  return state();
}

std::string blocks_dir() {
  const char* env = std::getenv("TVUITOOL_BLOCKS");
  if (env && *env) return env;
  return paths().here + "/blocks";
}

}  // namespace ub
