#include "assets/recipes.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "assets/registry.h"
#include "iconlib/iconlib.h"
#include "test_support.h"

namespace ub {
namespace {

using gen_res::Image;

const Rgba kInk{40, 40, 40, 255};
const Rgba kAxis{200, 200, 200, 255};

int alpha(const Image& img, int x, int y) { return img.at(x, y)[3]; }

TEST(Chevron, MirroredSmoothAndInItsColour) {
  Image img = chevron_image(12, 16, kInk);
  ASSERT_EQ(std::pair(img.w, img.h), std::pair(12, 16));
  EXPECT_EQ(alpha(img, 0, 8), 0);  // open side of the arrow
  int partial = 0;
  for (int y = 0; y < 16; ++y)
    for (int x = 0; x < 12; ++x) {
      ASSERT_EQ(alpha(img, x, y), alpha(img, x, 15 - y));  // mirror about the middle line
      if (alpha(img, x, y)) {
        ASSERT_EQ(img.at(x, y)[0], 40);  // straight alpha: colour kept
      }
      partial += alpha(img, x, y) > 0 && alpha(img, x, y) < 255;
    }
  EXPECT_GT(partial, 10);  // smooth edges, not a hard 1-pixel diagonal
  EXPECT_EQ(chevron_image(12, 16, kInk, 4).px, img.px);  // a factor below 8 works at 8
}

Asset chart(const std::string& kind, std::vector<double> data, int base_h = 1, int w = 100, int h = 50) {
  return chart_entry(w, h, kind, data, kInk, kAxis, base_h);
}

// The height of the bar whose slot holds column x: its opaque pixels above the axis.
int bar_height(const Image& img, int x, int base_h = 1) {
  int n = 0;
  for (int y = img.h - base_h - 1; y >= 0 && alpha(img, x, y) == 255; --y) ++n;
  return n;
}

// The showcase pages pin the usual charts and marks; these are the cases they do not reach.
TEST(Chart, FlatDataSinglePointAndNoData) {
  // All-equal positive values stand on zero: full bars, the axis showing between them.
  Image flat = chart_image(chart("bar", {5, 5, 5}));
  EXPECT_EQ(bar_height(flat, 16), bar_height(flat, 50));
  EXPECT_GT(bar_height(flat, 16), 35);
  EXPECT_EQ(flat.at(3, 49)[0], 200);  // the axis colour between bars
  // Values below zero keep the scale from the smallest: its 2-pixel bar covers the axis row.
  Image low = chart_image(chart("bar", {-5, -5, -5}));
  EXPECT_EQ(alpha(low, 16, 47), 0);
  EXPECT_EQ(low.at(16, 49)[0], 40);
  // One value: a round dot at w / 2 on the baseline; base_h 0 counts as 1.
  Image dot = chart_image(chart("spark", {3}, 0));
  EXPECT_GT(alpha(dot, 50, 48), 200);
  EXPECT_EQ(alpha(dot, 40, 48), 0);
  EXPECT_EQ(alpha(dot, 0, 49), 255);
  EXPECT_EQ(alpha(dot, 0, 48), 0);
  EXPECT_THROW(chart_image(chart("bar", {})), std::runtime_error);
}

// Positive bars start at zero, so their heights keep the values' ratios.
TEST(Chart, PositiveBarsStartAtZero) {
  const Image img = chart_image(chart("bar", {1180, 1242, 980}, 1, 300, 120));
  const int h1180 = bar_height(img, 50), h1242 = bar_height(img, 150), h980 = bar_height(img, 250);
  EXPECT_GT(h1242, 90);
  EXPECT_NEAR(h980, h1242 * 980.0 / 1242, 1.0);
  EXPECT_NEAR(h1180, h1242 * 1180.0 / 1242, 1.0);
  EXPECT_EQ(img.at(150, 118)[0], 40);  // bars stand on the axis row
  EXPECT_EQ(img.at(150, 119)[0], 200);
}

// A value far below the largest keeps a visible stub; a zero is no bar at all.
TEST(Chart, SmallValuesStayVisibleAndZeroIsNone) {
  const Image img = chart_image(chart("bar", {1e9, 1, 0}, 1, 300, 120));
  EXPECT_EQ(bar_height(img, 150), kMinBarPx);
  EXPECT_EQ(bar_height(img, 250), 0);
  EXPECT_EQ(img.at(250, 119)[0], 200);  // the axis alone
}

// The limit line: full width at its value's row, in its own colour, the scale reaching it.
TEST(Chart, LimitDrawsALineAtItsValue) {
  const Rgba red{220, 38, 38, 255};
  auto with_limit = [&](const std::string& kind, std::vector<double> data, double limit) {
    return chart_image(chart_entry(300, 120, kind, data, kInk, kAxis, 1, limit, red));
  };
  auto red_rows = [&](const Image& img, int x) {
    std::vector<int> rows;
    for (int y = 0; y < img.h; ++y)
      if (img.at(x, y)[0] == 220 && alpha(img, x, y) == 255) rows.push_back(y);
    return rows;
  };
  // Bars of 100 under a limit of 50: the line crosses them at half their height.
  const Image half = with_limit("bar", {100, 100}, 50);
  const int tall = bar_height(half, 80);
  const std::vector<int> rows = red_rows(half, 5);  // left of the first bar
  ASSERT_FALSE(rows.empty());
  EXPECT_LE(rows.size(), 3u);
  EXPECT_NEAR(rows.front(), 119 - tall / 2.0, 2.0);
  EXPECT_EQ(red_rows(half, 80), rows);  // drawn over the bar
  // A limit above every value raises the scale: the largest bar no longer reaches it.
  const Image over = with_limit("bar", {100, 100}, 200);
  EXPECT_NEAR(bar_height(over, 80), tall / 2.0, 1.5);
  const std::vector<int> top = red_rows(over, 5);
  ASSERT_FALSE(top.empty());
  EXPECT_NEAR(top.front(), 119 - tall, 2.0);
  // Line charts draw it too; without a limit nothing is red.
  EXPECT_FALSE(red_rows(with_limit("line", {1, 3, 2}, 2), 0).empty());
  EXPECT_TRUE(red_rows(chart_image(chart("bar", {1, 2}, 1, 300, 120)), 5).empty());
}

TEST(Mark, ASymbolLargerThanItsBoxIsRefused) {
  EXPECT_THROW(mark_image(mark_entry(10, 10, 2, kInk, "dot", 12, Rgba{255, 255, 255, 255}, {}, 1),
                          ubtest::installation().icons),
               std::runtime_error);
}

// Without the library, or with an empty record for the check, a wire-frame check is drawn;
// nothing is printed, the caller is told, and emission reports it once for all boxes.
TEST(Mark, CheckFallsBackToAWireFrame) {
  const Asset checked = mark_entry(28, 28, 6, kInk, "check", 20, Rgba{255, 255, 255, 255}, {}, 1);
  bool fell_back = false;
  mark_image(checked, ubtest::installation().icons, &fell_back);
  EXPECT_FALSE(fell_back);
  for (const char* index : {"", R"({"icons": {"check": {}}})"}) {
    std::string dir = ubtest::temp_dir("nolib_mark");
    if (*index) write_file_atomic(dir + "/index.json", index);
    const iconlib::Index lib = iconlib::Index::load(dir);
    ::testing::internal::CaptureStdout();
    Image box = mark_image(checked, lib, &fell_back);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "") << index;
    EXPECT_TRUE(fell_back) << index;
    int white_px = 0;
    for (size_t i = 0; i < box.px.size(); i += 4) white_px += box.px[i] > 200;
    EXPECT_GT(white_px, 20) << index;
    AssetMap two{{"cb_28_on.png", checked}, {"cb_30_on.png", mark_entry(30, 30, 6, kInk, "check", 20, Rgba{255, 255, 255, 255}, {}, 1)}};
    std::ostringstream log;
    render_registry(two, lib, log);
    EXPECT_EQ(log.str(), std::string(kCheckFallbackLine) + "\n") << index;
    std::filesystem::remove_all(dir);
  }
}

}  // namespace
}  // namespace ub
