#include "block_test_util.h"
#include "kinds/block_kind.h"
#include "rows/rows.h"

namespace ub {
extern const BlockKind kPinDisplay;
}

namespace {

using namespace pbtest;

struct Built {
  std::unique_ptr<ubtest::PageBench> c;
  ub::NodeList nodes;
  int bottom = 0;
  int planned = 0;
};

Built build(int w, int h, const Json& blk) {
  Built b;
  b.c = ubtest::bench(w, h);
  ubtest::Named rec(blk, 5);
  const auto& m = b.c->m;
  b.bottom = ub::kPinDisplay.build(b.c->bd, rec, b.nodes, ub::Spot{m.margin, 0, m.content_w});
  b.planned = ub::row_height(b.c->ctx, rec);
  return b;
}

TEST(PinDisplay, FilledDotsComeFirstAndShareTwoPictures) {
  for (auto [w, h] : {std::pair{320, 240}, {800, 480}, {1280, 800}}) {
    SCOPED_TRACE(ub::cat(w, "x", h));
    Built b = build(w, h, {{"type", "pin_display"}, {"length", 6}, {"filled", 2}, {"caption", "请输入密码"}});
    const auto& m = b.c->m;
    ASSERT_EQ(b.nodes.size(), 7u);
    EXPECT_EQ(b.nodes[0]->caption, "PinDisplay5Caption");
    const int d = b.nodes[1]->pos.width;
    const std::string on = ub::cat("pin_", d, "_on.png"), off = ub::cat("pin_", d, "_off.png");
    for (int i = 1; i <= 6; ++i) {
      const auto& dot = *b.nodes[i];
      EXPECT_EQ(dot.caption, ub::cat("PinDisplay5Dot", i));
      EXPECT_EQ(bg_name(dot), i <= 2 ? on : off);
      // Every picture is its box.
      EXPECT_EQ(dot.pos.width, d);
      EXPECT_EQ(dot.pos.height, d);
      if (i > 1) { EXPECT_EQ(dot.pos.left - b.nodes[i - 1]->pos.left, 2 * d); }
    }
    // The row is centred in the content.
    const int right = b.nodes[6]->pos.left + d;
    EXPECT_LE(std::abs((b.nodes[1]->pos.left - m.margin) - (m.margin + m.content_w - right)), 1);
    EXPECT_EQ(b.c->pictures.all().at(on).fill, b.c->ctx.tcol("fg1"));
    EXPECT_EQ(b.c->pictures.all().at(off).border, b.c->ctx.tcol("fg2"));
    EXPECT_EQ(b.c->pictures.all().at(off).fill.a, 0);
    EXPECT_EQ(b.bottom, b.planned);
    EXPECT_EQ(b.bottom, 2 * m.spacer + m.h_b1 + m.spacer + d);
  }
}

TEST(PinDisplay, LengthAndFilledAreChecked) {
  Built b = build(480, 272, {{"type", "pin_display"}, {"length", 4}, {"filled", 9}});
  ASSERT_EQ(b.nodes.size(), 4u);
  for (const auto& dot : b.nodes) EXPECT_NE(bg_name(*dot).find("_on"), std::string::npos) << dot->caption;
  EXPECT_EQ(b.c->notes.all().back(), "pin_display B5：filled 9 > length 4 → 只画满 4 个点");
  // An absent length is four dots, none filled.
  EXPECT_EQ(build(480, 272, {{"type", "pin_display"}}).nodes.size(), 4u);
  EXPECT_EQ(stop_message([] { build(480, 272, {{"type", "pin_display"}, {"length", 13}}); }),
            "[X] pin_display.length 应在 1~12，得到 13");
  EXPECT_EQ(stop_message([] { build(480, 272, {{"type", "pin_display"}, {"length", -1}}); }),
            "[X] pin_display.length 应在 1~12，得到 -1");
  EXPECT_EQ(stop_message([] { build(480, 272, {{"type", "pin_display"}, {"filled", -2}}); }),
            "[X] pin_display.filled 应在 0~12，得到 -2");
}

}  // namespace
