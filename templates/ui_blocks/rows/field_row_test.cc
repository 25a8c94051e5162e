#include "rows/row_testing.h"

using namespace ub;
using rowtest::captions;
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
      const Json& b = rowtest::block(*c, i);
      EXPECT_EQ(c->build_field_row(b, out, 0, 0, c->m.content_w), c->row_height(b)) << w << "x" << h << " " << i;
    }
  }
}

TEST(FieldRow, ControlBands) {
  auto c = page(800, 480, R"([{"type":"slider_row","label":"音量"},{"type":"progress_row","icon":"sun"},
      {"type":"checkbox_row","label":"自动"},{"type":"radio_row","label":"模式"}])"_json);
  const Metrics& m = c->m;
  NodeList out;
  c->build_field_row(rowtest::block(*c, 0), out, 0, 100, m.content_w);
  c->build_field_row(rowtest::block(*c, 1), out, 0, 100, m.content_w);
  const Node* slider = find(out, "SeekRowSliderRow1Bar");
  const Node* progress = find(out, "SeekRowProgressRow2Bar");
  // The band uses the row padding, not the text box or the icon column.
  EXPECT_EQ(slider->pos.left, m.pad_l);
  EXPECT_EQ(slider->pos.top, 100 + m.row_h + m.widget_pad);
  EXPECT_EQ(slider->pos.width, m.content_w - 2 * m.pad_l);
  EXPECT_EQ(progress->pos.left, slider->pos.left);
  EXPECT_EQ(progress->payload["thumb"]["size"]["width"], 0);
  EXPECT_EQ(slider->payload["thumb"]["size"]["width"], m.thumb);
  // No icon is drawn although the text stands behind the icon column.
  EXPECT_EQ(find(out, "TextRowProgressRow2Label")->pos.left, m.icon_left + m.icon_bg + m.spacer);

  NodeList cb;
  c->build_field_row(rowtest::block(*c, 2), cb, 0, 0, m.content_w);
  EXPECT_EQ(captions(cb), (std::vector<std::string>{"TextRowCheckboxRow3Label", "CheckRowCheckboxRow3Box"}));
  EXPECT_EQ(cb[1]->pos.left + cb[1]->pos.width, m.content_w - m.pad_r);
  EXPECT_EQ(cb[1]->pos.top, (m.row_h - m.cb) / 2);

  NodeList radio;
  EXPECT_EQ(c->build_field_row(rowtest::block(*c, 3), radio, 0, 0, m.content_w), m.row_h + 2 * m.widget_pad);
  EXPECT_EQ(radio.back()->pos.height, 0);
  EXPECT_FALSE(c->row_gaps_.has_value());
}
