#include "rows/row_testing.h"

using namespace ub;
using rowtest::captions;
using rowtest::page;
using rowtest::stop_message;

TEST(Card, HeightIsTheSumOfPlannedRowsAndSeparatorsLieBetween) {
  for (auto [w, h] : rowtest::kSizes) {
    auto c = page(w, h, R"([{"type":"card","blocks":[{"type":"setting_row","label":"a"},{"type":"slider_row"},
        {"type":"list_item","rows":2,"items":["x"]},{"type":"wheel_picker","rows":3},{"type":"setting_row"}]}])"_json);
    const Metrics& m = c->m;
    NodeList out;
    const int slider = m.row_h + m.seek_h + 2 * m.widget_pad;
    const int list = 2 * m.li_h + 1, wheel = 3 * m.wheel_h;
    EXPECT_EQ(build_card(c->bd, rowtest::block(*c, 0), out, m.margin, 10), 10 + 2 * m.row_h + slider + list + wheel);
    const Node& win = *out.at(0);
    EXPECT_EQ(win.caption, "Card1");
    std::vector<std::string> want = {"CardBg1", "RowSep2", "RowSep3", "RowSep4", "RowSep5"};
    std::vector<std::string> got = captions(win.children);
    got.resize(want.size());
    EXPECT_EQ(got, want);
    EXPECT_EQ(win.children[1]->pos.top, m.row_h);
    EXPECT_EQ(win.children[2]->pos.top, m.row_h + slider);
    EXPECT_EQ(win.children[4]->pos.top, m.row_h + slider + list + wheel);
    EXPECT_TRUE(c->pictures.all().count("card_" + std::to_string(m.content_w) + "x" + std::to_string(win.pos.height) + ".png"));
  }
}

TEST(Card, TitleEmptyCardAndCaptionNumbers) {
  auto c = page(480, 272, R"([{"type":"card","title":"网络","blocks":[{"type":"setting_row"},{"type":"setting_row"}]},
      {"type":"card","title":""},{"type":"card","blocks":[{"type":"toggle_row"}]}])"_json);
  const Metrics& m = c->m;
  NodeList out;
  int y = build_card(c->bd, rowtest::block(*c, 0), out, m.margin, 0);
  EXPECT_EQ(captions(out), (std::vector<std::string>{"SectionHeader1", "Card1"}));
  EXPECT_EQ(out[1]->pos.top, std::max(m.h_h2, m.spacer3));
  EXPECT_EQ(y, out[1]->pos.top + 2 * m.row_h);
  // An empty card has height 0 and returns y unchanged.
  EXPECT_EQ(build_card(c->bd, rowtest::block(*c, 1), out, m.margin, y), y);
  EXPECT_TRUE(c->pictures.all().count("card_" + std::to_string(m.content_w) + "x0.png"));
  build_card(c->bd, rowtest::block(*c, 2), out, m.margin, y);
  EXPECT_EQ(out.back()->caption, "Card5");
  EXPECT_EQ(captions(out.back()->children).back(), "ButtonRowToggleRow6");
  EXPECT_EQ(c->controls.current_origin(), (std::pair<double, double>{0, 0}));
}

TEST(FormSection, SurfaceAndRefusals) {
  auto c = page(480, 272, R"([{"type":"form_section","blocks":[{"type":"input_row"}]},
      {"type":"form_section","surface":true,"blocks":[{"type":"setting_row"},{"type":"checkbox_row"}]},
      {"type":"form_section"},{"type":"form_section","blocks":[{"type":"banner"}]},
      {"type":"card","blocks":[{"type":"tabs"}]}])"_json);
  const Metrics& m = c->m;
  NodeList out;
  build_form_section(c->bd, rowtest::block(*c, 0), out, m.margin, 0);
  EXPECT_EQ(captions(out[0]->children), (std::vector<std::string>{"TextRowInputRow2Label", "EditRowInputRow2Box"}));
  build_form_section(c->bd, rowtest::block(*c, 1), out, m.margin, 0);
  EXPECT_EQ(captions(out[1]->children)[0], "FormSection3Bg");
  EXPECT_EQ(captions(out[1]->children)[1], "RowSep4");
  EXPECT_EQ(stop_message([&] { build_form_section(c->bd, rowtest::block(*c, 2), out, 0, 0); }),
            "[X] form_section.blocks 不能为空（它就是「组标题 + 字段行集合」）");
  EXPECT_EQ(stop_message([&] { build_form_section(c->bd, rowtest::block(*c, 3), out, 0, 0); }),
            "[X] form_section 只收行块/列表块（与 card 同口径）：banner\n  at page.blocks[3].blocks[0] (banner Banner8)");
  EXPECT_EQ(stop_message([&] { build_card(c->bd, rowtest::block(*c, 4), out, 0, 0); }),
            "[X] 卡内不支持的块类型：tabs（卡内只能是行块/列表块；page_title/section_header/card/empty_state/"
            "bottom_actions/dialog/tabs/bottom_nav/banner/toast/status_pill/divider_label/grid_icons/chart_card/"
            "image_gallery/keypad/loading/form_section/toolbar/button_row/pill_row 是根层块）\n  at page.blocks[4].blocks[0] (tabs Tabs10)");
}
