#include "block_test_util.h"
#include "kinds/block_kind.h"
#include "rows/rows.h"

namespace ub {
extern const BlockKind kGauge;
}

namespace {

using namespace pbtest;

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
  ubtest::Named rec(blk, 2);
  const auto& m = b.c->m;
  b.bottom = ub::kGauge.build(b.c->bd, rec, b.nodes, ub::Spot{m.margin, 0, m.content_w});
  b.planned = ub::row_height(b.c->ctx, rec);
  return b;
}

TEST(Gauge, RingPictureIsItsBoxAndItsNameCarriesWhatItDraws) {
  for (auto [w, h] : {std::pair{320, 240}, {480, 272}, {800, 480}, {1024, 600}, {1280, 800}}) {
    SCOPED_TRACE(ub::cat(w, "x", h));
    Built b = build(w, h, {{"type", "gauge"}, {"value", 72}, {"unit", "%"}, {"limit", 90}, {"caption", "湿度"}});
    const auto ring = must_find(b.nodes, "Gauge2Ring");
    const ub::Asset& a = b.c->pictures.all().at(bg_name(*ring));
    EXPECT_EQ(a.kind, "gauge");
    EXPECT_EQ(a.w, ring->pos.width);
    EXPECT_EQ(a.h, ring->pos.height);
    EXPECT_EQ(bg_name(*ring), ub::cat("gauge_", a.w, "_", a.stroke, "_720_900.png"));
    EXPECT_EQ(a.color, b.c->ctx.tcol("brand"));
    EXPECT_EQ(shown(*must_find(b.nodes, "Gauge2Value")), "72%");
    EXPECT_EQ(shown(*must_find(b.nodes, "Gauge2Range")), "0 ~ 100%，上限 90%");
    EXPECT_EQ(b.bottom, b.planned);
    EXPECT_TRUE(b.c->notes.all().empty()) << b.c->notes.all().front();
    // The reading stands inside the ring.
    const auto value = must_find(b.nodes, "Gauge2Value");
    EXPECT_GE(value->pos.left, ring->pos.left + a.stroke);
    EXPECT_LE(value->pos.left + value->pos.width, ring->pos.left + ring->pos.width - a.stroke);
  }
}

// A reading too wide for the ring at the smallest font grows the ring, so the text box
// keeps the room the project checks ask for.
TEST(Gauge, ALongReadingGrowsTheRing) {
  for (auto [w, h] : {std::pair{320, 240}, {480, 272}, {800, 480}}) {
    SCOPED_TRACE(ub::cat(w, "x", h));
    Built b = build(w, h, {{"type", "gauge"}, {"value", 1250}, {"max", 2000}, {"unit", "kWh"}});
    const auto value = must_find(b.nodes, "Gauge2Value");
    const int fs = value->payload.find("fontSize").to_json().get<int>();
    EXPECT_GE(value->pos.width, b.c->ctx.text_box_w("1250kWh", fs));
    const auto ring = must_find(b.nodes, "Gauge2Ring");
    const ub::Asset& a = b.c->pictures.all().at(bg_name(*ring));
    EXPECT_EQ(value->pos.width, ring->pos.width - 2 * a.stroke);
    EXPECT_EQ(b.bottom, b.planned);
  }
}

TEST(Gauge, PastTheLimitTheArcTurnsDangerAndValuesAreHeldToTheRange) {
  Built b = build(800, 480, {{"type", "gauge"}, {"value", 130}, {"min", 20}, {"max", 120}, {"limit", 100}});
  const ub::Asset& a = b.c->pictures.all().at(bg_name(*must_find(b.nodes, "Gauge2Ring")));
  EXPECT_EQ(a.value_pm, 1000);
  EXPECT_EQ(a.limit_pm, 800);
  EXPECT_EQ(a.color, b.c->ctx.tcol("danger"));
  EXPECT_NE(bg_name(*must_find(b.nodes, "Gauge2Ring")).find("_over.png"), std::string::npos);
  EXPECT_EQ(shown(*must_find(b.nodes, "Gauge2Value")), "130");
  // No limit: no tick, no caption line.
  Built plain = build(800, 480, {{"type", "gauge"}, {"value", -5}});
  const ub::Asset& p = plain.c->pictures.all().at(bg_name(*must_find(plain.nodes, "Gauge2Ring")));
  EXPECT_EQ(p.value_pm, 0);
  EXPECT_EQ(p.limit_pm, -1);
  EXPECT_EQ(find(plain.nodes, "Gauge2Caption"), nullptr);
  EXPECT_EQ(shown(*must_find(plain.nodes, "Gauge2Range")), "0 ~ 100");
}

TEST(Gauge, RangeAndValueAreChecked) {
  EXPECT_EQ(stop_message([] { build(800, 480, {{"type", "gauge"}, {"value", 1}, {"min", 5}, {"max", 5}}); }),
            "[X] gauge.max 必须大于 min，得到 min 5、max 5");
  EXPECT_EQ(stop_message([] { build(800, 480, {{"type", "gauge"}}); }),
            "[X] gauge.value 不能为空（仪表盘就是为了显示它）");
  // 0 is a value and a limit; a limit of false or "" is none.
  Built zero = build(800, 480, {{"type", "gauge"}, {"value", 0}, {"limit", 0}});
  EXPECT_EQ(shown(*must_find(zero.nodes, "Gauge2Value")), "0");
  EXPECT_EQ(zero.c->pictures.all().at(bg_name(*must_find(zero.nodes, "Gauge2Ring"))).limit_pm, 0);
  for (const Json& none : {Json(false), Json("")}) {
    Built b = build(800, 480, {{"type", "gauge"}, {"value", 3}, {"limit", none}});
    EXPECT_EQ(b.c->pictures.all().at(bg_name(*must_find(b.nodes, "Gauge2Ring"))).limit_pm, -1);
  }
}

}  // namespace
