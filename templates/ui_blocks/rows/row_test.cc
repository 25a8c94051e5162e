#include "rows/row_testing.h"

using namespace ub;
using rowtest::captions;
using rowtest::find;
using rowtest::page;

namespace {

// Builds block i of the page straight on the page, as run() does.
NodeList build(Composer& c, size_t i) {
  NodeList out;
  const Json& b = rowtest::block(c, i);
  const bool has_icon = c.fam_icon.value() && truthy(get(b, "icon"));
  EXPECT_EQ(c.build_row(b, out, c.m.margin, 0, c.m.content_w, c.fam_reserve.value(), has_icon), c.m.row_h);
  return out;
}

}  // namespace

TEST(Row, ControlsInZOrder) {
  auto c = page(800, 480, R"([{"type":"device_card","icon":"tv","label":"客厅","value":"在线"},
                              {"type":"toggle_row","icon":"wifi","label":"WLAN","on":false}])"_json);
  EXPECT_EQ(captions(build(*c, 0)),
            (std::vector<std::string>{"ImageRowDeviceCard1IconBg", "ImageRowDeviceCard1Icon", "TextRowDeviceCard1Label",
                                      "TextRowDeviceCard1Value", "ImageRowDeviceCard1Chevron", "DeviceRowDeviceCard1Dot",
                                      "ButtonRowDeviceCard1"}));
  // A toggle row never draws a chevron; off puts the knob at the left.
  NodeList t = build(*c, 1);
  EXPECT_EQ(captions(t), (std::vector<std::string>{"ImageRowToggleRow2IconBg", "ImageRowToggleRow2Icon",
                                                   "TextRowToggleRow2Label", "ToggleRowToggleRow2Track",
                                                   "ToggleRowToggleRow2Knob", "ButtonRowToggleRow2"}));
  const Node* track = find(t, "ToggleRowToggleRow2Track");
  EXPECT_EQ(find(t, "ToggleRowToggleRow2Knob")->pos.left, track->pos.left + 2);
  EXPECT_EQ(track->pos.left + track->pos.width, c->m.margin + c->m.content_w - c->m.pad_r);
  EXPECT_TRUE(c->assets.count("sw_" + std::to_string(track->pos.width) + "x" + std::to_string(track->pos.height) +
                              "_off.png"));
}

TEST(Row, ChevronAndGapFollowTheFamilyReserve) {
  // Without any reserve: no chevron and no gap noted.
  auto c = page(480, 272, R"([{"type":"setting_row","chevron":false,"label":"a"}])"_json);
  EXPECT_EQ(find(build(*c, 0), "ImageRowSettingRow1Chevron"), nullptr);
  EXPECT_FALSE(c->row_gaps_.has_value());

  // A row without chevron beside one with: the same text box, the same gap.
  auto d = page(480, 272, R"([{"type":"setting_row","label":"a","value":"1"},
                              {"type":"setting_row","label":"b","value":"2","chevron":false}])"_json);
  NodeList a = build(*d, 0), b = build(*d, 1);
  EXPECT_NE(find(a, "ImageRowSettingRow1Chevron"), nullptr);
  EXPECT_EQ(find(b, "ImageRowSettingRow2Chevron"), nullptr);
  EXPECT_EQ(find(a, "TextRowSettingRow1Value")->pos.width, find(b, "TextRowSettingRow2Value")->pos.width);
  EXPECT_EQ(d->row_gaps_->size(), 2u);
  EXPECT_NO_THROW(d->assert_row_gaps());
}

TEST(Row, TextFormsAndShortValues) {
  for (auto [w, h] : rowtest::kSizes) {
    auto c = page(w, h, R"([{"type":"setting_row","text":"亮度","value":"自动调节","value_short":"自动"},
                            {"type":"device_card","label":"灯"}])"_json);
    const Metrics& m = c->m;
    NodeList out = build(*c, 0);
    const Node* label = find(out, "TextRowSettingRow1Label");
    const Node* value = find(out, "TextRowSettingRow1Value");
    EXPECT_EQ(label->payload["text"], "亮度");
    EXPECT_EQ(value->payload["text"], m.compact ? "自动" : "自动调节");
    if (m.two_line) {
      EXPECT_EQ(value->pos.top, m.text_vpad + m.h_b1);
      EXPECT_EQ(value->pos.left, label->pos.left);
    } else {
      EXPECT_EQ(label->pos.width, r4(c->row_boxes(0, 0, m.content_w).text_w * 0.42) - m.spacer);
      EXPECT_EQ(value->payload["alignment"], kAlignRight);
      EXPECT_EQ(value->pos.left + value->pos.width, label->pos.left + c->row_boxes(0, 0, m.content_w).text_w);
    }
    // Empty value: no value control; the dot only on a page that is not compact.
    NodeList dev = build(*c, 1);
    EXPECT_EQ(find(dev, "TextRowDeviceCard2Value"), nullptr);
    EXPECT_EQ(find(dev, "DeviceRowDeviceCard2Dot") != nullptr, !m.compact) << w << "x" << h;
  }
}
