#include "rows/row_testing.h"

using namespace ub;
using rowtest::page;

TEST(RowFamily, ReserveIsTheWidestRightEndControl) {
  auto reserve = [](Json blocks) { return page(800, 480, blocks)->rows.reserve().value(); };
  auto c = page(800, 480, Json::array());
  const Metrics& m = c->m;
  // Controls in a band of their own reserve nothing.
  EXPECT_EQ(reserve(R"([{"type":"input_row"},{"type":"slider_row"},{"type":"radio_row"}])"_json), 0);
  EXPECT_EQ(reserve(R"([{"type":"checkbox_row"},{"type":"setting_row"}])"_json), std::max(m.cb, m.chev_w));
  EXPECT_EQ(reserve(R"([{"type":"setting_row","chevron":false}])"_json), 0);
  // The switch and the chevron combine by maximum, not by sum.
  EXPECT_EQ(reserve(R"([{"type":"toggle_row"}])"_json), std::max(r4(m.row_h * 1.3), m.chev_w));
  EXPECT_EQ(reserve(R"([{"type":"toggle_row","chevron":false}])"_json), r4(m.row_h * 1.3));
  // Rows in containers count; list and wheel rows do not.
  EXPECT_EQ(reserve(R"([{"type":"form_section","blocks":[{"type":"checkbox_row"}]},
                        {"type":"list_item","items":["a"]}])"_json),
            m.cb);
}

TEST(RowFamily, OneTextBoxForRowsOnThePageAndInCards) {
  auto c = page(800, 480, R"([{"type":"setting_row","icon":"wifi"},
      {"type":"card","blocks":[{"type":"setting_row","icon":"user"},{"type":"slider_row"}]}])"_json);
  const Metrics& m = c->m;
  ASSERT_TRUE(c->rows.icon().value());
  RowBoxes page_row = c->rows.row_boxes(m.margin, 40, m.content_w), card_row = c->rows.row_boxes(0, 0, m.content_w);
  EXPECT_EQ(page_row.text_left - m.margin, card_row.text_left);
  EXPECT_EQ(card_row.text_w, card_row.right_edge - card_row.text_left);
  EXPECT_EQ(c->rows.row_boxes(0, 0, 10).text_w, 1);
}

TEST(RowFamily, IconsAllOrNone) {
  EXPECT_EQ(rowtest::stop_message([] {
              page(800, 480, R"([{"type":"setting_row","label":"网络","icon":"wifi"},
                  {"type":"card","blocks":[{"type":"icon_row","icon":"user"},{"type":"toggle_row","label":"蓝牙"}]}])"_json);
            }),
            "[X] 同页行族图标不统一（2/3 行有图标）：缺图标 蓝牙（page.blocks[1].blocks[1]）\n"
            "口径：同一页面行族图标「要么都有、要么都没有」；缺图标的行请补 icon，或去掉所有 icon");
  // Field rows take no icon.
  EXPECT_THROW(page(800, 480, R"([{"type":"setting_row"},{"type":"slider_row","icon":"sun"}])"_json), InputError);
  // Several rows without an icon are all named.
  EXPECT_EQ(rowtest::stop_message([] {
              page(800, 480, R"([{"type":"setting_row","label":"网络"},{"type":"toggle_row","icon":"user"},
                  {"type":"icon_row","name":"Pwr"}])"_json);
            }),
            "[X] 同页行族图标不统一（1/3 行有图标）：缺图标 网络（page.blocks[0]）；Pwr（page.blocks[2]）\n"
            "口径：同一页面行族图标「要么都有、要么都没有」；缺图标的行请补 icon，或去掉所有 icon");
  for (auto [w, h] : rowtest::kSizes) {
    auto d = page(w, h, R"([{"type":"setting_row","icon":"wifi"}])"_json);
    EXPECT_EQ(d->rows.icon().value(), !d->m.compact) << w << "x" << h;
  }
}

TEST(RowFamily, BlocksMustBeMappings) {
  EXPECT_THROW(page(480, 272, R"([{"type":"setting_row"}, "setting_row"])"_json), InputError);
  EXPECT_THROW(page(480, 272, R"([{"type":"card","blocks":[3]}])"_json), InputError);
  EXPECT_THROW(page(480, 272, R"([{"type":"card","blocks":"setting_row"}])"_json), InputError);
}

// The counts that plan a height: text, sign and false values of rows and options.
TEST(RowFamily, PlannedHeights) {
  auto c = page(480, 272, Json::array());
  const Metrics& m = c->m;
  auto h = [&](const char* js) { return row_height(c->ctx, *ubtest::OneBlock(Json::parse(js))); };
  EXPECT_EQ(h(R"({"type":"radio_row","options":["a","b","c"]})"), m.row_h + 3 * m.opt_h + 2 * m.widget_pad);
  EXPECT_EQ(h(R"({"type":"list_item","rows":"2","rowSpacing":-5,"label":"x"})"), 2 * m.li_h + 1 + m.h_b2 + m.spacer);
  EXPECT_EQ(h(R"({"type":"wheel_picker","rows":1})"), 3 * m.wheel_h);
  EXPECT_THROW(h(R"({"type":"radio_row","options":"ab"})"), InputError);
}

TEST(RowFamily, GapsMustAgree) {
  auto c = page(480, 272, Json::array());
  c->rows.note_row_gaps("TextRowA", 100, std::nullopt);
  c->rows.note_row_gaps("TextRowA", 100, 120);
  c->rows.note_row_gaps("TextRowB", 90, 110);
  EXPECT_NO_THROW(c->rows.assert_row_gaps());
  c->rows.note_row_gaps("TextRowC", 90, 100);
  EXPECT_EQ(rowtest::stop_message([&] { c->rows.assert_row_gaps(); }),
            "[X] 行族「值→右端控件」间隙不一致：TextRowA=20；TextRowB=20；TextRowC=10");
}
