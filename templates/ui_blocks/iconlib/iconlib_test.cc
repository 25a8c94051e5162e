#include "iconlib/iconlib.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>

#include "test_support.h"

namespace {

// The checkout's library, loaded once.
struct IconLib : ::testing::Test {
  static const iconlib::Index& lib() {
    static const iconlib::Index index = iconlib::Index::load(ubtest::icon_dir());
    return index;
  }
};

// The published token list is what lookups find, every state at every tier has its picture.
TEST_F(IconLib, PublishedListMatchesTheIndex) {
  ASSERT_TRUE(lib().available());
  std::ifstream in(ubtest::source_dir() + "/templates/ui_blocks/blocks/_icons.json");
  iconlib::Json published = iconlib::Json::parse(in);
  std::set<std::string> names;
  for (auto& [token, rec] : published.items()) {
    EXPECT_EQ(lib().lookup(token), rec) << token;
    names.insert(rec["name"].get<std::string>());
    // Every state of every record has its picture at every tier.
    for (int t : iconlib::tiers())
      for (auto& s : rec["states"])
        ASSERT_TRUE(std::filesystem::exists(lib().root() + "/" + std::to_string(t) + "/" +
                                            rec["name"].get<std::string>() + "_" + s.get<std::string>() + ".png"))
            << token;
  }
  EXPECT_GE(names.size(), 150u);
  EXPECT_FALSE(lib().lookup("no-such-token"));
  EXPECT_EQ(lib().lookup("gear")->at("name"), "settings");  // an alias shares its picture's record
}

TEST_F(IconLib, TierIsTheLargestNotAboveTheSize) {
  for (auto [size, tier] : std::vector<std::pair<int, int>>{{100, 56}, {56, 56}, {55, 24}, {23, 22}, {16, 22}})
    EXPECT_EQ(iconlib::tier_of(size), tier) << size;
}

// Drawn to fill: the tier that covers the box, reduced to it; past the largest tier, that one.
TEST_F(IconLib, TierCoveringTheBoxIsTheSmallestNotBelowIt) {
  for (auto [size, tier] : std::vector<std::pair<int, int>>{{100, 56}, {56, 56}, {40, 56}, {25, 56}, {24, 24}, {23, 24},
                                                            {22, 22}, {16, 22}})
    EXPECT_EQ(iconlib::tier_covering(size), tier) << size;
  // The glyph of the covering tier spans the box as the 24 px one spans 24 px.
  auto ink = [](const gen_res::Image& img) {
    int x0 = img.w, x1 = -1;
    for (int y = 0; y < img.h; ++y)
      for (int x = 0; x < img.w; ++x)
        if (img.at(x, y)[3] >= 128) x0 = std::min(x0, x), x1 = std::max(x1, x);
    return x1 - x0 + 1;
  };
  auto own = lib().produce("bulb", 24, {0, 0, 0, 255});
  auto filled = lib().produce("bulb", 40, {0, 0, 0, 255}, std::nullopt, iconlib::tier_covering(40));
  auto pasted = lib().produce("bulb", 40, {0, 0, 0, 255});
  EXPECT_EQ(filled.first.w, 40);
  EXPECT_EQ(filled.second["render"], "outline 56→40px");
  EXPECT_EQ(pasted.first.w, 24);
  EXPECT_NEAR(ink(filled.first) / 40.0, ink(own.first) / 24.0, 0.06);
}

TEST_F(IconLib, ProduceRecoloursAtTheTier) {
  auto [img, meta] = lib().produce("wifi", 40, {200, 10, 20, 255});
  EXPECT_EQ(img.w, 24);
  EXPECT_EQ(meta["render"], "outline 24px");
  int opaque = 0;
  for (size_t i = 0; i < img.px.size(); i += 4) {
    ASSERT_EQ(img.px[i], 200);
    ASSERT_EQ(img.px[i + 2], 20);
    opaque += img.px[i + 3] == 255;
  }
  EXPECT_GT(opaque, 10);
  // The colour's alpha scales the coverage.
  auto [faint, m2] = lib().produce("wifi", 40, {200, 10, 20, 51});
  for (size_t i = 3; i < faint.px.size(); i += 4) ASSERT_LE(faint.px[i], 51);
}

TEST_F(IconLib, StatesAndSmallSizes) {
  auto off = lib().produce("home", 24, {0, 0, 0, 255}, std::string("off"));
  auto on = lib().produce("home", 24, {0, 0, 0, 255}, std::string("on"));
  auto none = lib().produce("home", 24, {0, 0, 0, 255});
  EXPECT_EQ(on.second["render"], "filled 24px");
  EXPECT_NE(on.first.px, off.first.px);
  EXPECT_EQ(none.first.px, off.first.px);
  // An icon with one state ignores "on"; "" is off.
  EXPECT_EQ(lib().produce("wifi", 24, {0, 0, 0, 255}, std::string("on")).second["render"], "outline 24px");
  EXPECT_EQ(lib().produce("home", 24, {0, 0, 0, 255}, std::string("")).first.px, off.first.px);
  // Below the smallest tier the picture is reduced to the size, never larger than the box.
  auto small = lib().produce("check", 16, {0, 0, 0, 255});
  EXPECT_EQ(small.first.w, 16);
  EXPECT_EQ(small.second["tier"], 22);
  EXPECT_EQ(small.second["render"], "outline 22→16px");
}

TEST_F(IconLib, MissingLibraryIsUnavailable) {
  std::string dir = ubtest::temp_dir("noicons");
  const iconlib::Index none = iconlib::Index::load(dir);
  EXPECT_FALSE(none.available());
  EXPECT_FALSE(none.lookup("check"));
  EXPECT_THROW(none.produce("check", 24, {0, 0, 0, 255}), std::runtime_error);
  EXPECT_FALSE(iconlib::Index().available());
  // A broken index is no library either.
  std::ofstream(dir + "/index.json") << "{ not json";
  EXPECT_FALSE(iconlib::Index::load(dir).available());
  std::filesystem::remove_all(dir);
}

}  // namespace
