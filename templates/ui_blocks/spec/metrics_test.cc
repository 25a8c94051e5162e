#include "spec/metrics.h"

#include <gtest/gtest.h>

#include "spec/library.h"
#include "base/primitives.h"
#include "spec/rgba.h"
#include "test_support.h"

using namespace ub;

namespace {

// Tokens with fixed font sizes (min == max), so geometry can be followed by hand.
Json fixed_tokens() {
  return Json::parse(R"({
    "base_screen": {"height": 480},
    "compact_when_h_lt": 300,
    "ladder": [12, 14, 16, 18, 20, 22, 24, 28, 32],
    "font": {"h1": {"base": 28, "min": 28, "max": 28}, "h2": {"base": 22, "min": 22, "max": 22},
             "b1": {"base": 18, "min": 18, "max": 18}, "b2": {"base": 14, "min": 14, "max": 14}},
    "compact_font": {"h1": 18, "h2": 16, "b1": 14, "b2": 12},
    "spacer": {"spacer": 8, "spacer1": 4, "spacer2": 16, "spacer3": 24, "spacer4": 32},
    "size": {"pad_l_compact": "spacer2", "pad_l_wide": "spacer3", "card_inset": "spacer2", "group_gap": "spacer1",
             "row_gap_px": 4, "text_vpad": 4, "text_h_of_fs": 1.3, "chev_w_of_w": 0.02, "chev_w_min": 12,
             "chev_h_of_h": 0.04, "chev_h_min": 16, "text_chev_gap_of_h": 0.02, "text_chev_gap_min": 8,
             "text_chev_gap_max": 16, "row_h_of_h": 0.12, "row_h_of_h_compact": 0.16, "icon_bg_of_row_h": 0.7,
             "icon_of_row_h": 0.42, "icon_min": 16, "icon_pad_of_pad_l": 0.5, "tb_h_of_h": 0.12,
             "tb_ic_of_tb_h": 0.5, "key_h_max_of_h": 0.12, "key_h_of_w": 0.4, "chart_h_of_h": 0.3,
             "gal_tile_of_w": 0.75, "gal_ic_max": 48, "load_h_of_h": 0.25, "load_bar_h_of_fs": 0.6,
             "bar_top_of_h": 0.14, "bar_bot_of_h": 0.12, "bar_min_pad": 8},
    "shape": {"container_radius_of_row_h": 0.11, "container_radius_px": 8, "container_radius_min": 4,
              "line_px": 1, "line_px_thick_below_row_h": 24},
    "scroll": {"drag_max_dis_of_w": 0.25, "drag_max_dis_min": 60, "orientation": 1, "edge_effect": 1}
  })");
}

}  // namespace

// The boundaries and rounding edges; the shipped tokens are pinned by the whole pages.
TEST(Metrics, RoundingForms) {
  Metrics m = build_metrics(800, 480, fixed_tokens());
  EXPECT_EQ(m.text_chev_gap, 8);   // r4(9.6) = 8, within 8..16
  EXPECT_EQ(m.radius, 6);          // half_even(6.16)
  EXPECT_EQ(m.key_w, 250);         // (768 - 16) // 3
  EXPECT_EQ(m.gal_tile_h, 184);    // r4(245 * 0.75 = 183.75)
}

TEST(Metrics, CompactBoundaryIsStrict) {
  Json tok = fixed_tokens();
  Metrics at = build_metrics(400, 300, tok);
  Metrics below = build_metrics(400, 299, tok);
  EXPECT_EQ(std::tuple(at.compact, at.fs.b1, at.pad_l), std::tuple(false, 18, 24));
  EXPECT_EQ(below.fs.plain_text(), "{'h1': 18, 'h2': 16, 'b1': 14, 'b2': 12}");
  // Compact title band holds the title line only: h_h1 24 + pad 8, against r4(41.86) = 40.
  EXPECT_EQ(std::tuple(below.compact, below.pad_l, below.two_line, below.bar_top), std::tuple(true, 16, false, 40));
}

TEST(Metrics, SmallScreenRowHeightComesFromText) {
  Metrics m = build_metrics(320, 240, fixed_tokens());
  ASSERT_TRUE(m.compact);
  EXPECT_EQ(m.row_h, 40);  // r4(38.4) = 40 beats r4(28)
  Json tok = fixed_tokens();
  tok["size"]["row_h_of_h_compact"] = 0.05;
  EXPECT_EQ(build_metrics(320, 240, tok).row_h, 28);  // r4(h_b1 + 8) wins over r4(12)
  EXPECT_EQ(m.load_bar_h, 12);
  tok["size"]["load_bar_h_of_fs"] = 0.1;
  EXPECT_EQ(build_metrics(320, 240, tok).load_bar_h, 10);
}

TEST(Metrics, TwoLineTestUsesLessOrEqual) {
  Json tok = fixed_tokens();
  // h_b1 + h_b2 + 8 = 52 at every height with fixed fonts.
  Metrics eq = build_metrics(800, 372, tok);  // r4(52.08) = 52
  EXPECT_TRUE(eq.two_line);
  EXPECT_EQ(eq.row_h, 52);
  Metrics below = build_metrics(800, 357, tok);  // r4(49.98) = 48
  EXPECT_FALSE(below.two_line);
  EXPECT_EQ(below.row_h, 44);  // text_need 32, ratio r4(42.84) = 44
}

TEST(Metrics, FontsSnapToLadderAndStepWithHeight) {
  Json tok = fixed_tokens();
  tok["font"]["b1"] = {{"base", 18}, {"min", 12}, {"max", 28}};
  EXPECT_EQ(build_metrics(1024, 600, tok).fs.b1, 22);  // 22.5 snaps to 22
  EXPECT_EQ(build_metrics(1280, 800, tok).fs.b1, 28);  // 30 capped
  EXPECT_EQ(build_metrics(480, 300, tok).fs.b1, 12);   // 11.25 -> 12
  // Two heights with the same fonts and differing rows.
  Metrics a = build_metrics(800, 480, tok), b = build_metrics(800, 500, tok);
  EXPECT_EQ(a.fs.b1, b.fs.b1);
  EXPECT_NE(a.row_h, b.row_h);
}

TEST(Metrics, GlyphFloorAndLineGuard) {
  Json tok = fixed_tokens();
  EXPECT_EQ(build_metrics(320, 240, tok).ic_min, 24);  // icon 16, default floor 24
  tok["size"]["glyph_min_px"] = 20;
  EXPECT_EQ(build_metrics(320, 240, tok).ic_min, 20);
  tok["shape"]["line_px_thick_below_row_h"] = 0;
  EXPECT_EQ(build_metrics(800, 480, tok).line_w, 0);  // a false threshold passes through
  tok["shape"]["line_px_thick_below_row_h"] = 60;
  EXPECT_EQ(build_metrics(800, 480, tok).line_w, 2);  // row_h 56 < 60
}

TEST(Metrics, BrokenTokensThrow) {
  using Break = void (*)(Json&);
  const std::pair<Break, int> cases[] = {  // the change and the screen height
      {[](Json& t) { t["size"].erase("bar_min_pad"); }, 480},
      {[](Json& t) { t["base_screen"]["height"] = 0; }, 240},  // read also in compact mode
      {[](Json& t) { t["size"]["pad_l_wide"] = "spacer9"; }, 480},
      {[](Json& t) { t["spacer"].erase("spacer"); }, 480}};
  for (const auto& [change, h] : cases) {
    Json tok = fixed_tokens();
    change(tok);
    EXPECT_THROW(build_metrics(h * 4 / 3, h, tok), InputError) << h;
  }
}

// The shipped tokens: grid spacing, small radius, and room for the device dot.
TEST(ShippedTokens, ServeEverySupportedScreen) {
  Json tok = load_json(ubtest::source_dir() + "/templates/ui_blocks/blocks/_tokens.json");
  for (auto [w, h] : {std::pair{320, 240}, {480, 272}, {800, 480}, {1024, 600}, {1280, 800}}) {
    SCOPED_TRACE(cat(w, "x", h));
    Metrics m = build_metrics(w, h, tok);
    EXPECT_EQ(m.compact, h == 240);
    for (const auto& [k, v] : m.spacers) EXPECT_EQ(v % 4, 0) << k;
    int d = std::max((int)half_even(m.icon * 0.28), 4);
    EXPECT_GE(m.pad_l, m.spacer + d);
    EXPECT_GT(m.viewport, 3 * m.row_h);
    EXPECT_GE(m.row_h, m.two_line ? m.h_b1 + m.h_b2 + 2 * m.text_vpad : m.h_b1 + 2 * m.text_vpad);
    EXPECT_GE(m.btn_h, 16);
    EXPECT_GE(m.radius, 4);
    EXPECT_LE(m.radius, 8);
  }
  EXPECT_EQ(build_metrics(800, 480, tok).radius, 6);
  for (const auto& [name, colour] : tok["color"].items())
    EXPECT_EQ(rgba(colour.get<std::string>()).a, 255) << name;
}
