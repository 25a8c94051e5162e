#include <gtest/gtest.h>

#include <filesystem>

#include <sstream>

#include "assets/pictures.h"
#include "assets/registry.h"
#include "gen_res/image.h"
#include "gen_res/shapes.h"
#include "iconlib/iconlib.h"
#include "test_support.h"

namespace ub {
namespace {

namespace fs = std::filesystem;
using gen_res::Image;

const Rgba kBrand{22, 119, 255, 255};

struct Emit : ::testing::Test {
  std::string project;
  AssetMap assets;
  const iconlib::Index& icons = ubtest::installation().icons;
  std::unique_ptr<Pictures> pictures = std::make_unique<Pictures>(icons, "main");

  void SetUp() override { project = ubtest::temp_dir("emit"); }
  void TearDown() override { fs::remove_all(project); }
  std::string out() const { return project + "/resources/images"; }
  Image load(const std::string& name) const { return gen_res::load_png(out() + "/" + name); }
  // An icon registered by the page's registry, and put into `assets` under its name.
  std::string glyph(const std::string& name, const std::string& g, double size,
                    std::optional<std::pair<int, int>> canvas = {}, std::optional<std::string> state = {}) {
    const std::string ref = pictures->glyph(name, g, size, kBrand, canvas, state);
    assets[name] = pictures->all().at(name);
    return ref;
  }
  std::vector<std::string> emit(std::string* printed = nullptr, const iconlib::Index* with = nullptr) {
    std::ostringstream log;
    ::testing::internal::CaptureStdout();
    auto made = emit_registry(assets, with ? *with : icons, project, log);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");  // the lines go to the log
    if (printed) *printed = log.str();
    return made;
  }
};

TEST_F(Emit, SortedOrderAndLastRegistrationWins) {
  EXPECT_TRUE(emit().empty());
  EXPECT_TRUE(fs::is_directory(out()));
  assets["b.png"] = shape_entry(10, 10, 2, kBrand, {}, 1);
  assets["a.png"] = shape_entry(10, 10, 2, kBrand, {}, 1);
  assets["b.png"] = shape_entry(10, 10, 2, {255, 0, 0, 255}, {}, 1);
  EXPECT_EQ(emit(), (std::vector<std::string>{"a.png", "b.png"}));
  EXPECT_EQ(load("b.png").at(5, 5)[0], 255);
}

TEST_F(Emit, EveryPictureHasItsBoxSize) {
  assets["shape.png"] = shape_entry(10.9, 7, 3, kBrand, {}, 1);
  assets["bordered.png"] = shape_entry(30, 20, 6, kBrand, Rgba{0, 0, 0, 255}, 2);
  assets["clip.png"] = clip_entry(25, 4, 20, kBrand, 100, 40, 0, 36, 8);
  assets["chev.png"] = chevron_entry(12, 16, {0, 0, 0, 255});
  assets["bar.png"] = bar_entry(200, 32, 6, kBrand);
  assets["mark.png"] = mark_entry(28, 28, 6, kBrand, "check", 18, Rgba{255, 255, 255, 255}, {}, 1);
  assets["chart.png"] = chart_entry(160, 90, "line", {1, 3, 2}, kBrand, {200, 200, 200, 255}, 1);
  assets["scrim.png"] = shape_entry(1024, 600, 0, {0, 0, 0, 128}, {}, 1);
  glyph("ic_wifi_40.png", "wifi", 40, std::pair{40, 40});
  glyph("ic_nope_30.png", "no-such-token", 30, std::pair{30, 30});
  EXPECT_EQ(emit().size(), 10u);
  for (const auto& [name, a] : assets) {
    int w = 0, h = 0;
    ASSERT_TRUE(gen_res::png_size(out() + "/" + name, w, h)) << name;
    EXPECT_EQ(std::pair(w, h), (a.canvas ? *a.canvas : std::pair{a.w, a.h})) << name;
  }
  EXPECT_EQ(load("shape.png").w, 10);  // measures truncated
}

// A clip takes its alpha from the mask only; a bar 1 px high still gets rounded ends.
TEST_F(Emit, ClipAlphaAndThinBarEnds) {
  assets["ind.png"] = clip_entry(30, 4, 20, {10, 20, 30, 128}, 100, 40, 0, 36, 8);
  assets["thin.png"] = bar_entry(50, 9, 1, kBrand);
  emit();
  EXPECT_EQ(load("thin.png").at(25, 4)[3], 255);
  EXPECT_LT(load("thin.png").at(0, 4)[3], 255);
  Image img = load("ind.png");
  EXPECT_EQ(img.at(15, 1)[3], 255);  // full strength inside, whatever the fill's alpha
  EXPECT_EQ(img.at(15, 1)[0], 10);
  EXPECT_EQ(img.at(0, 3)[3], 0);  // the bar's rounded corner, not a square end
  gen_res::Mask whole = gen_res::coverage_mask(100, 40, 20);
  for (int x = 0; x < 30; ++x) ASSERT_EQ(img.at(x, 2)[3], whole.at(x, 38));
}


// Without a canvas a library icon keeps the library's size, and says where it came from.
TEST_F(Emit, LibraryIconWithoutACanvas) {
  glyph("exact.png", "wifi", 24, std::pair{24, 24});
  glyph("bare.png", "wifi", 40);
  std::string printed;
  emit(&printed);
  EXPECT_EQ(load("exact.png").px, icons.produce("wifi", 24, kBrand).first.px);
  EXPECT_EQ(load("bare.png").w, 24);
  EXPECT_NE(printed.find("  bare.png" + std::string(32, ' ') + " 24x24  [components/icons wifi · 24档 · outline 24px]\n"),
            std::string::npos)
      << printed;
}

TEST_F(Emit, GlyphRecordsUseAndTier) {
  EXPECT_EQ(glyph("nav_home_24_on.png", "home", 24.9, std::pair{24, 24}, std::string("on")), "images/nav_home_24_on.png");
  glyph("nav_home_24_on.png", "home", 24.9, std::pair{24, 24}, std::string("on"));
  const IconTally& uses = pictures->uses();
  ASSERT_EQ(uses.uses, 2u);  // counted once per use
  EXPECT_EQ(assets.size(), 1u);
  // The size truncated, then its tier; the library's name of the token.
  EXPECT_EQ(uses.kinds, (std::set<IconTally::Kind>{{"home", "home", 24, 24, "on"}}));
  EXPECT_EQ(uses.tiers, (std::map<int, int>{{24, 2}}));
  EXPECT_TRUE(pictures->fallbacks().empty());
}

TEST_F(Emit, FallBackWhenTheLibraryIsMissingPrintsNothing) {
  const std::string empty = ubtest::temp_dir("nolib");
  const iconlib::Index none = iconlib::Index::load(empty);
  pictures = std::make_unique<Pictures>(none, "main");
  ::testing::internal::CaptureStdout();
  glyph("ic_check_24.png", "check", 24, std::pair{28, 28}, std::string("on"));
  glyph("ic_check_24.png", "check", 24, std::pair{28, 28}, std::string("on"));
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
  // Each use is kept, with the page and the picture, for the report.
  const std::vector<IconFallback>& fallbacks = pictures->fallbacks();
  ASSERT_EQ(fallbacks.size(), 2u);
  EXPECT_EQ(std::tie(fallbacks[0].token, fallbacks[0].size, fallbacks[0].asset, fallbacks[0].page),
            std::make_tuple(std::string("check"), 24, std::string("ic_check_24.png"), std::string("main")));
  EXPECT_TRUE(pictures->uses().empty());
  EXPECT_EQ(assets["ic_check_24.png"].kind, "glyph");
  EXPECT_FALSE(assets["ic_check_24.png"].state);  // wire-frames have no states
  std::string printed;
  emit(&printed, &none);
  EXPECT_EQ(printed, "");  // only library icons print a line
  EXPECT_EQ(load("ic_check_24.png").w, 28);
  fs::remove_all(empty);
  // With the library present, a token it lacks falls back too.
  pictures = std::make_unique<Pictures>(icons, "main");
  glyph("ic_x_24.png", "not-in-library", 24, std::pair{24, 24});
  ASSERT_EQ(pictures->fallbacks().size(), 1u);
  EXPECT_EQ(pictures->fallbacks()[0].token, "not-in-library");
}

TEST_F(Emit, NamesWithPathSeparatorsStop) {
  for (std::string name : {std::string("ic_a/b_24.png"), std::string("ic_a\\b.png"), std::string("ic_a\0b.png", 10)}) {
    try {
      glyph(name, "wifi", 24);
      ADD_FAILURE() << "no stop for " << name;
    } catch (const StopError& e) {
      // A NUL is written \x00: the message goes on past it.
      std::string shown;
      for (char c : name) shown += c == '\0' ? std::string("\\x00") : std::string(1, c);
      EXPECT_EQ(std::string(e.what()), "[X] 图片名不能含路径分隔符：" + shown + "（图标语义名请用库里的名字）");
    }
  }
  EXPECT_TRUE(assets.empty());
  EXPECT_TRUE(pictures->uses().empty());
}

}  // namespace
}  // namespace ub
