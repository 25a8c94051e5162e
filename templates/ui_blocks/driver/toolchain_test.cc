#include "driver/toolchain.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "driver/paths.h"
#include "test_support.h"

namespace fs = std::filesystem;
using namespace ub;

namespace {
void touch(const fs::path& p) {
  fs::create_directories(p.parent_path());
  std::ofstream(p) << "x";
}
}  // namespace

TEST(Toolchain, RenderFontSearchOrder) {
  const fs::path root = ubtest::temp_dir("font");
  touch(root / "resources/fonts/z.ttf");
  EXPECT_EQ(find_render_font(root.string()), (root / "resources/fonts/z.ttf").string());
  touch(root / "resources/font/b.ttf");
  touch(root / "resources/font/a.ttf");
  touch(root / "resources/font/readme.txt");
  EXPECT_EQ(find_render_font(root.string()), (root / "resources/font/a.ttf").string());
  fs::remove_all(root);
}

TEST(Toolchain, ChildOutputIsCapturedApart) {
  ChildResult r = run_captured({"/bin/sh", "-c", "printf 'out\\r\\nline'; printf 'err' >&2; exit 3"});
  EXPECT_EQ(r.status, 3);
  EXPECT_EQ(r.out, "out\nline");
  EXPECT_EQ(r.err, "err");
  EXPECT_THROW(run_captured({"/nonexistent/tool"}), std::runtime_error);
}

TEST(Toolchain, EmptyLibraryVariableMeansUnset) {
  setenv("TVUITOOL_BLOCKS", "", 1);
  const std::string dir = blocks_dir();
  setenv("TVUITOOL_BLOCKS", "/elsewhere", 1);
  const std::string other = blocks_dir();
  unsetenv("TVUITOOL_BLOCKS");
  EXPECT_EQ(dir, paths().here + "/blocks");
  EXPECT_EQ(other, "/elsewhere");
}
