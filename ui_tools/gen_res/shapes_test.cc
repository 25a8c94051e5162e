#include "gen_res/shapes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

#include "gen_res/glyphs.h"
#include "gen_res/raster.h"
#include "test_support.h"

namespace gen_res {
namespace {

const Rgba kBlue{10, 120, 240, 255};

double total_alpha(const Image& img) {
  double s = 0;
  for (size_t i = 3; i < img.px.size(); i += 4) s += img.px[i];
  return s / 255.0;
}

int alpha(const Image& img, int x, int y) { return img.at(x, y)[3]; }

TEST(Shapes, ExactSizeIncludingDegenerateBoxes) {
  for (auto [w, h, r] : std::vector<std::tuple<int, int, double>>{
           {40, 20, 6}, {40, 0, 6}, {40, 1, 8}, {1, 1, 3}, {7, 3, 100}, {30, 30, 0}, {0, 10, 2}}) {
    const Image img = rounded_rect_cov(w, h, r, kBlue), b = bordered_cov(w, h, r, kBlue, {0, 0, 0, 255}, 2);
    const Mask m = coverage_mask(w, h, r);
    EXPECT_EQ(std::vector<int>({img.w, img.h, b.w, b.h, m.w, m.h}), std::vector<int>({w, h, w, h, w, h}));
  }
}

TEST(Shapes, AreaMatchesTheRoundedRectangle) {
  // Exact coverage: the alpha sum is the analytic area up to byte rounding.
  for (auto [w, h, r] : std::vector<std::tuple<int, int, double>>{{40, 20, 6}, {64, 32, 16}, {9, 5, 2.5}}) {
    double area = w * h - (4 - M_PI) * r * r;
    EXPECT_NEAR(total_alpha(rounded_rect_cov(w, h, r, kBlue)), area, w * h * 0.002 + 0.5) << w << "x" << h;
  }
  // A radius beyond half the side is a pill: a 40x1 bar with ends of radius 0.5.
  EXPECT_NEAR(total_alpha(rounded_rect_cov(40, 1, 8, kBlue)), 40 - (4 - M_PI) * 0.25, 0.1);
}

TEST(Shapes, CornersAreSmoothAndSymmetricEdgesSolid) {
  Image img = rounded_rect_cov(48, 24, 8, kBlue);
  EXPECT_EQ(alpha(img, 0, 0), 0);     // outside the arc
  EXPECT_EQ(alpha(img, 24, 0), 255);  // straight top edge
  int a = alpha(img, 2, 2);  // on the arc: partly covered
  EXPECT_GT(a, 40);
  EXPECT_LT(a, 250);
  for (int y = 0; y < 24; ++y)
    for (int x = 0; x < 48; ++x) {
      ASSERT_EQ(alpha(img, x, y), alpha(img, 47 - x, y));
      ASSERT_EQ(alpha(img, x, y), alpha(img, x, 23 - y));
    }
  // Coverage falls monotonically along the diagonal towards the corner: no stair step.
  for (int k = 1; k < 8; ++k) EXPECT_LE(alpha(img, k - 1, k - 1), alpha(img, k, k));
  // Straight alpha: every pixel keeps the fill colour, so edges show no dark halo.
  for (size_t i = 0; i < img.px.size(); i += 4) ASSERT_EQ(img.px[i], 10);
  // Radius 0 is a plain rectangle; the fill's alpha scales the coverage.
  EXPECT_DOUBLE_EQ(total_alpha(rounded_rect_cov(5, 4, 0, kBlue)), 20);
  EXPECT_EQ(alpha(rounded_rect_cov(20, 10, 0, {0, 0, 0, 128}), 10, 5), 128);
}

TEST(Shapes, BorderedRingAroundFill) {
  Rgba white{255, 255, 255, 255}, grey{128, 128, 128, 255};
  Image img = bordered_cov(40, 20, 6, white, grey, 2);
  EXPECT_EQ(img.at(20, 0)[0], 128);  // the ring
  EXPECT_EQ(img.at(20, 10)[0], 255);  // the fill
  EXPECT_EQ(img.at(20, 10)[3], 255);
  EXPECT_EQ(alpha(img, 0, 0), 0);
  // A fractional border mixes the two paints in its inner pixel, fully opaque.
  Image half = bordered_cov(20, 20, 0, white, grey, 1.5);
  EXPECT_EQ(half.at(10, 1)[3], 255);
  EXPECT_NEAR(half.at(10, 1)[0], (128 + 255) / 2.0, 1);
  // rounded_rect_ss takes the bordered form only with a border.
  EXPECT_EQ(rounded_rect_ss(40, 20, 6, white, grey, 2).px, img.px);
  EXPECT_EQ(rounded_rect_ss(40, 20, 6, white).px, rounded_rect_cov(40, 20, 6, white).px);
}

TEST(Shapes, CoverageMaskCropKeepsTheBarsEnds) {
  Mask m = coverage_mask(100, 20, 10);
  Mask left = crop(m, 0, 10, 30, 20);
  ASSERT_EQ(left.w, 30);
  EXPECT_EQ(left.at(0, 9), 0);     // rounded bottom-left corner of the whole bar
  EXPECT_EQ(left.at(29, 9), 255);  // square where the piece meets the bar's middle
}

TEST(Raster, BoxReductionOfSupersampledStrokes) {
  SsCanvas cv(10, 10, 8);
  cv.polygon({{0, 0}, {40, 0}, {40, 80}, {0, 80}});  // exactly the left half
  Mask m = cv.coverage();
  EXPECT_EQ(m.at(4, 5), 255);
  EXPECT_EQ(m.at(5, 5), 0);
  SsCanvas half(1, 1, 8);
  half.polygon({{0, 0}, {4, 0}, {4, 8}, {0, 8}});
  EXPECT_EQ(half.coverage().at(0, 0), 128);
  // A disc's covered fraction approaches its area.
  SsCanvas disc(20, 20, 8);
  disc.ellipse(0, 0, 160, 160);
  double sum = 0;
  for (uint8_t v : disc.coverage().v) sum += v / 255.0;
  EXPECT_NEAR(sum, M_PI * 100, 2);
  // Overlapping shapes do not add up beyond full coverage.
  disc.ellipse(0, 0, 160, 160);
  EXPECT_EQ(disc.paint({1, 2, 3, 200}).at(10, 10)[3], 200);
  // Larger factors than 8 take more than one word per pixel.
  SsCanvas big(2, 2, 12);
  big.polygon({{0, 0}, {12, 0}, {12, 24}, {0, 24}});
  EXPECT_EQ(big.coverage().at(0, 1), 255);
  EXPECT_EQ(big.coverage().at(1, 1), 0);
}

TEST(Glyphs, SizesVisibilityAndFile) {
  for (const std::string t : {"check", "arrow-left"}) {
    EXPECT_TRUE(has_wireframe(t)) << t;
    Image g = glyph_image(t, 24, {0, 0, 0, 255});
    EXPECT_EQ(g.w, 24);
    EXPECT_GT(total_alpha(g), 15) << t;
  }
  // Any other token still shows a visible glyph.
  EXPECT_FALSE(has_wireframe("no-such-token"));
  Image generic = glyph_image("no-such-token", 32, {0, 0, 0, 255}, std::pair{40, 36});
  EXPECT_EQ(std::pair(generic.w, generic.h), std::pair(40, 36));
  EXPECT_GT(total_alpha(generic), 40);
  EXPECT_EQ(alpha(generic, 0, 0), 0);  // centred: the margin stays clear
  std::string dir = ubtest::temp_dir("glyph");
  std::string path = glyph_icon(dir, "g.png", "check", 20, {255, 0, 0, 255}, std::pair{28, 28});
  int w = 0, h = 0;
  ASSERT_TRUE(png_size(path, w, h));
  EXPECT_EQ(std::pair(w, h), std::pair(28, 28));
  std::filesystem::remove_all(dir);
}

}  // namespace
}  // namespace gen_res
