#include "block_test_util.h"
#include "kinds/block_kind.h"
#include "page_blocks/display_font.h"
#include "rows/rows.h"

namespace ub {
extern const BlockKind kBigValue;
}

namespace {

using namespace pbtest;

int font_size(const ub::Node& nd) { return nd.payload.find("fontSize").to_json().get<int>(); }
std::string shown(const ub::Node& nd) { return nd.payload.find("text").to_json().get<std::string>(); }

struct Built {
  std::unique_ptr<ubtest::PageBench> c;
  ub::NodeList nodes;
  int bottom = 0;
  int planned = 0;
};

Built build(int w, int h, const Json& blk) {
  Built b;
  b.c = ubtest::bench(w, h);
  ubtest::Named rec(blk, 3);
  const auto& m = b.c->m;
  b.bottom = ub::kBigValue.build(b.c->bd, rec, b.nodes, ub::Spot{m.margin, 10, m.content_w});
  b.planned = ub::row_height(b.c->ctx, rec);
  return b;
}

// The reading takes the display font of the screen; the height the flow gets is the one
// a card plans.
TEST(BigValue, ReadingTakesTheDisplayFontOfEachScreen) {
  const Json blk = {{"type", "big_value"}, {"value", 22.5}, {"unit", "°C"}, {"caption", "室内温度"}};
  for (auto [w, h, fs] : {std::tuple{320, 240, 28}, {480, 272, 28}, {800, 480, 48}, {1024, 600, 56}, {1280, 800, 64}}) {
    SCOPED_TRACE(ub::cat(w, "x", h));
    Built b = build(w, h, blk);
    const auto& m = b.c->m;
    EXPECT_EQ(ub::display_font(b.c->ctx), fs);
    const auto value = must_find(b.nodes, "BigValue3Value");
    EXPECT_EQ(shown(*value), "22.5");
    EXPECT_EQ(font_size(*value), fs);
    EXPECT_EQ(font_size(*must_find(b.nodes, "BigValue3Unit")), m.fs.h2);
    EXPECT_EQ(shown(*must_find(b.nodes, "BigValue3Caption")), "室内温度");
    EXPECT_EQ(b.bottom - 10, b.planned);
    // Reading and unit sit side by side, centred, the unit within the reading's line.
    const auto unit = must_find(b.nodes, "BigValue3Unit");
    EXPECT_EQ(unit->pos.left, value->pos.left + value->pos.width);
    EXPECT_LE(std::abs((value->pos.left - m.margin) - (m.margin + m.content_w - unit->pos.left - unit->pos.width)), 1);
    EXPECT_GE(unit->pos.top, value->pos.top);
    EXPECT_LE(unit->pos.top + unit->pos.height, value->pos.top + value->pos.height);
    EXPECT_TRUE(b.c->notes.all().empty()) << b.c->notes.all().front();
  }
}

TEST(BigValue, LongReadingStepsTheFontDownUntilItFits) {
  Built b = build(320, 240, {{"type", "big_value"}, {"value", "1234567.25"}, {"unit", "kWh"}});
  const auto& m = b.c->m;
  const auto value = must_find(b.nodes, "BigValue3Value");
  EXPECT_LT(font_size(*value), ub::display_font(b.c->ctx));
  const auto unit = must_find(b.nodes, "BigValue3Unit");
  EXPECT_GE(value->pos.left, m.margin + m.pad_l);
  EXPECT_LE(unit->pos.left + unit->pos.width, m.margin + m.content_w - m.pad_l);
  EXPECT_TRUE(b.c->notes.all().empty()) << b.c->notes.all().front();
  // Without caption or unit the block is the reading's line and its padding.
  EXPECT_EQ(find(b.nodes, "BigValue3Caption"), nullptr);
  EXPECT_EQ(b.bottom - 10, 2 * m.spacer + ub::line_height(b.c->ctx, font_size(*value)));
}

TEST(BigValue, ZeroIsAReadingAndNothingIsRefused) {
  Built b = build(800, 480, {{"type", "big_value"}, {"value", 0}});
  EXPECT_EQ(shown(*must_find(b.nodes, "BigValue3Value")), "0");
  EXPECT_EQ(find(b.nodes, "BigValue3Unit"), nullptr);
  for (const Json& v : {Json(""), Json(nullptr)}) {
    Json blk = {{"type", "big_value"}, {"value", v}};
    EXPECT_EQ(stop_message([&] { build(800, 480, blk); }), "[X] big_value.value 不能为空（大读数块就是为了显示它）");
  }
}

}  // namespace
