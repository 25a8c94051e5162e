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

// The showcase pages pin the usual charts and marks; these are the cases they do not reach.
TEST(Chart, FlatDataSinglePointAndNoData) {
  // All-equal values sit on the baseline: the 2-pixel bars start on its row and cover it.
  Image flat = chart_image(chart("bar", {5, 5, 5}));
  EXPECT_EQ(alpha(flat, 16, 48), 0);
  EXPECT_EQ(flat.at(16, 49)[0], 40);
  EXPECT_EQ(flat.at(3, 49)[0], 200);  // the axis colour between bars
  // One value: a round dot at w / 2 on the baseline; base_h 0 counts as 1.
  Image dot = chart_image(chart("spark", {3}, 0));
  EXPECT_GT(alpha(dot, 50, 48), 200);
  EXPECT_EQ(alpha(dot, 40, 48), 0);
  EXPECT_EQ(alpha(dot, 0, 49), 255);
  EXPECT_EQ(alpha(dot, 0, 48), 0);
  EXPECT_THROW(chart_image(chart("bar", {})), std::runtime_error);
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
