#include "rows/row_testing.h"

using namespace ub;
using rowtest::find;
using rowtest::page;

TEST(FieldRow, ReportedHeightEqualsPlannedHeightAtEverySize) {
  const Json blocks = R"([{"type":"slider_row","label":"音量","progress":40},{"type":"progress_row","progress":false},
      {"type":"input_row","label":"名称","hintText":"输入"},{"type":"checkbox_row","label":"自动","checked":true},
      {"type":"radio_row","label":"模式","options":["A","B"],"selected":1},{"type":"radio_row"}])"_json;
  for (auto [w, h] : rowtest::kSizes) {
    auto c = page(w, h, blocks);
    for (size_t i = 0; i < blocks.size(); ++i) {
      NodeList out;
      const BlockRecord& b = rowtest::block(*c, i);
      EXPECT_EQ(build_field_row(c->bd, b, out, 0, 12, c->m.content_w), 12 + row_height(c->ctx, b)) << w << "x" << h << " " << i;
    }
  }
}

TEST(FieldRow, BandsAndTheirEdgeCases) {
  auto c = page(800, 480, R"([{"type":"slider_row"},{"type":"progress_row"},{"type":"radio_row"}])"_json);
  const Metrics& m = c->m;
  NodeList out;
  for (size_t i = 0; i < 3; ++i) build_field_row(c->bd, rowtest::block(*c, i), out, 0, 0, m.content_w);
  // Slider and progress differ only in the thumb.
  EXPECT_EQ(find(out, "SeekRowSliderRow1Bar")->payload.to_json()["thumb"]["size"]["width"], m.thumb);
  EXPECT_EQ(find(out, "SeekRowProgressRow2Bar")->payload.to_json()["thumb"]["size"]["width"], 0);
  EXPECT_EQ(find(out, "TextRowProgressRow2Label")->pos.left, m.pad_l);
  EXPECT_EQ(find(out, "RadioRowRadioRow3Group")->pos.height, 0);
  EXPECT_EQ(out.size(), 6u);
  EXPECT_FALSE(c->rows.row_gaps().has_value());
}
