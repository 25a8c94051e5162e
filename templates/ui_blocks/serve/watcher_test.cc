#include "serve/watcher.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "test_support.h"

namespace fs = std::filesystem;

namespace {

TEST(Watcher, SavesOfTheSpecAndTheLibraryCountOthersDoNot) {
  const fs::path dir = ubtest::temp_dir("serve_watch");
  fs::create_directories(dir / "page");
  fs::create_directories(dir / "blocks");
  std::ofstream(dir / "page" / "spec.json") << "{}";
  serve::Watcher w((dir / "page" / "spec.json").string(), (dir / "blocks").string());
  ASSERT_TRUE(w.ok());
  EXPECT_FALSE(w.wait(50));

  std::ofstream(dir / "page" / "other.json") << "{}";
  std::ofstream(dir / "blocks" / "README") << "x";
  EXPECT_FALSE(w.wait(100));

  // Saved the way editors do: a new file renamed over the old one.
  std::ofstream(dir / "page" / ".spec.json.swp") << "{\"a\":1}";
  fs::rename(dir / "page" / ".spec.json.swp", dir / "page" / "spec.json");
  EXPECT_TRUE(w.wait(1000));
  EXPECT_FALSE(w.wait(50));  // the burst was taken as one change

  std::ofstream(dir / "blocks" / "card.json") << "{}";
  EXPECT_TRUE(w.wait(1000));
  fs::remove_all(dir);
}

TEST(Watcher, SavesOfTheThemeCountBesideTheSpec) {
  const fs::path dir = ubtest::temp_dir("serve_watch_theme");
  fs::create_directories(dir / "page");
  fs::create_directories(dir / "theme");
  fs::create_directories(dir / "blocks");
  std::ofstream(dir / "page" / "spec.json") << "{}";
  std::ofstream(dir / "theme" / "dark.json") << "{}";
  serve::Watcher w((dir / "page" / "spec.json").string(), (dir / "blocks").string(), (dir / "theme" / "dark.json").string());
  ASSERT_TRUE(w.wait(50) == false);
  std::ofstream(dir / "theme" / "light.json") << "{}";
  EXPECT_FALSE(w.wait(100));
  std::ofstream(dir / "theme" / "dark.json") << R"({"color": {}})";
  EXPECT_TRUE(w.wait(1000));
  std::ofstream(dir / "page" / "spec.json") << "{ }";  // the spec still counts
  EXPECT_TRUE(w.wait(1000));
  fs::remove_all(dir);
}

}  // namespace
