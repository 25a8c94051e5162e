#include "rows/row_testing.h"

using namespace ub;
using rowtest::find;
using rowtest::page;

namespace {

// Builds block i of the page straight on the page, as run() does.
NodeList build(ubtest::PageBench& c, size_t i) {
  NodeList out;
  const BlockRecord& b = rowtest::block(c, i);
  const bool has_icon = c.rows.icon().value() && is_set(b, "icon");
  EXPECT_EQ(build_row(c.bd, b, out, c.m.margin, 0, c.m.content_w, c.rows.reserve().value(), has_icon), c.m.row_h);
  return out;
}

}  // namespace

TEST(Row, ChevronAndGapFollowTheFamilyReserve) {
  // Without any reserve: no chevron and no gap noted.
  auto c = page(480, 272, R"([{"type":"setting_row","chevron":false,"label":"a"}])"_json);
  EXPECT_EQ(find(build(*c, 0), "ImageRowSettingRow1Chevron"), nullptr);
  EXPECT_FALSE(c->rows.row_gaps().has_value());

  // A row without chevron beside one with: the same text box, the same gap.
  auto d = page(480, 272, R"([{"type":"setting_row","label":"a","value":"1"},
                              {"type":"setting_row","label":"b","value":"2","chevron":false}])"_json);
  NodeList a = build(*d, 0), b = build(*d, 1);
  EXPECT_NE(find(a, "ImageRowSettingRow1Chevron"), nullptr);
  EXPECT_EQ(find(b, "ImageRowSettingRow2Chevron"), nullptr);
  EXPECT_EQ(find(a, "TextRowSettingRow1Value")->pos.width, find(b, "TextRowSettingRow2Value")->pos.width);
  EXPECT_EQ(d->rows.row_gaps()->size(), 2u);
  EXPECT_NO_THROW(d->rows.assert_row_gaps());
}

TEST(Row, TextFormsAndShortValues) {
  for (auto [w, h] : rowtest::kSizes) {
    auto c = page(w, h, R"([{"type":"setting_row","text":"亮度","value":"自动调节","value_short":"自动"},
                            {"type":"device_card","label":"灯"}])"_json);
    const Metrics& m = c->m;
    NodeList out = build(*c, 0);
    const Node* label = find(out, "TextRowSettingRow1Label");
    const Node* value = find(out, "TextRowSettingRow1Value");
    EXPECT_EQ(label->payload.to_json()["text"], "亮度");
    EXPECT_EQ(value->payload.to_json()["text"], m.compact ? "自动" : "自动调节");
    if (m.two_line) {
      EXPECT_EQ(value->pos.top, m.text_vpad + m.h_b1);
      EXPECT_EQ(value->pos.left, label->pos.left);
    } else {
      EXPECT_EQ(value->payload.to_json()["alignment"], kAlignRight);
      EXPECT_EQ(value->pos.left + value->pos.width, label->pos.left + c->rows.row_boxes(0, 0, m.content_w).text_w);
    }
    // Empty value: no value control; the dot only on a page that is not compact.
    NodeList dev = build(*c, 1);
    EXPECT_EQ(find(dev, "TextRowDeviceCard2Value"), nullptr);
    EXPECT_EQ(find(dev, "DeviceRowDeviceCard2Dot") != nullptr, !m.compact) << w << "x" << h;
  }
}

TEST(Row, DeviceDotsOfBothStatesKeepTheirOwnColour) {
  auto c = page(800, 480, R"([{"type":"device_card","label":"a","online":true},
                              {"type":"device_card","label":"b","online":false}])"_json);
  const std::string on = find(build(*c, 0), "DeviceRowDeviceCard1Dot")->payload.to_json()["backgroundPic"];
  const std::string off = find(build(*c, 1), "DeviceRowDeviceCard2Dot")->payload.to_json()["backgroundPic"];
  ASSERT_NE(on, off);
  EXPECT_NE(c->pictures.all().at(on.substr(7)).fill, c->pictures.all().at(off.substr(7)).fill);
}
