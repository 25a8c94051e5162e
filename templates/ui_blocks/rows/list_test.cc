#include "rows/row_testing.h"

#include <algorithm>

using namespace ub;
using rowtest::page;
using rowtest::stop_message;

TEST(List, HeightLeavesTheScrollHintAsRemainder) {
  auto c = page(800, 480, R"([{"type":"list_item","rows":1},{"type":"list_item","rows":2,"rowSpacing":"3"},
      {"type":"list_item","rows":3,"label":"最近"},{"type":"list_item","rows":7}])"_json);
  const Metrics& m = c->m;
  const int rows[] = {1, 2, 3, 7}, rs[] = {0, 3, 0, 0}, peek[] = {0, 1, 2, 2};
  for (size_t i = 0; i < 4; ++i) {
    NodeList out;
    const BlockRecord& b = rowtest::block(*c, i);
    EXPECT_EQ(build_list(c->bd, b, out, m.margin, 10, m.content_w), 10 + row_height(c->ctx, b));
    const Node& lv = *out.back();
    EXPECT_EQ(lv.pos.height / rows[i] - rs[i], m.li_h);
    EXPECT_EQ(lv.pos.height % rows[i], rows[i] == 1 ? 0 : peek[i]) << i;
    EXPECT_EQ(lv.payload.to_json()["item"]["position"]["height"], m.li_h);
  }
  EXPECT_TRUE(c->notes.all().empty());  // no items: nothing checked
}

TEST(List, ItemsMustBeAList) {
  auto c = page(480, 272, R"([{"type":"list_item","items":"a,b"},{"type":"list_item","items":{"a":1}}])"_json);
  NodeList out;
  EXPECT_EQ(stop_message([&] { build_list(c->bd, rowtest::block(*c, 0), out, 0, 0, 400); }),
            "[X] list_item.items 应为数组（每行一个 {icon,title,value}），得到 str");
  EXPECT_EQ(stop_message([&] { build_list(c->bd, rowtest::block(*c, 1), out, 0, 0, 400); }),
            "[X] list_item.items 应为数组（每行一个 {icon,title,value}），得到 dict");
}

TEST(List, TemplateRowFromFirstItemAndNotes) {
  std::string long_value;
  for (int i = 0; i < 60; ++i) long_value += "长";
  Json blocks = R"([{"type":"list_item","name":"Recent","chevron":false,
      "items":[{"label":"客厅","value":"22"},"卧室",{"title":"厨房"}]}])"_json;
  blocks[0]["items"][2]["value"] = long_value;
  auto c = page(800, 480, blocks);
  const Metrics& m = c->m;
  NodeList out;
  build_list(c->bd, rowtest::block(*c, 0), out, m.margin, 0, m.content_w);
  const Json subs = out.back()->payload.to_json()["item"]["subItem"];
  ASSERT_EQ(subs.size(), 2u);  // title from `label`, value; no chevron
  EXPECT_EQ(subs[0]["text"], "客厅");
  // A very long value leaves the title at least 4 pixels.
  EXPECT_EQ(list_row_boxes(c->bd, m.content_w - 2 * m.pad_l, m.li_h, list_rows(rowtest::block(*c, 0))[2], false).tw, 4);
  ASSERT_FALSE(c->notes.all().empty());
  EXPECT_NE(c->notes.all()[0].find("RecentRow3SubTitle(列表行标题) 文本「厨房」"), std::string::npos);
  EXPECT_EQ(c->notes.all()[c->notes.all().size() - 2],
            "list_item Recent：items 3 行 < rows 4 → 其余 1 行在真机上是空行（**列表高按 rows 算**，不把已有行挤在一起）");
  EXPECT_EQ(c->notes.all().back().substr(0, c->notes.all().back().find("｜ 逐行")),
            "list_item Recent：rows 4 ｜ items 3 行（模板行 = items[0]：客厅 / 22） ｜ itemH " + std::to_string(m.li_h) +
                " = int(" + std::to_string(4 * m.li_h + 2) + "/4)−0（余 2 px = 可滑动提示） ｜ 行内图标 0 处 × " +
                std::to_string(m.ic_min) + "px ");
  EXPECT_NE(c->notes.all().back().find("逐行宽度最紧者 RecentRow3 标题「厨房」需 "), std::string::npos);
}

TEST(List, IconsLeftOutWhenTheRowIsTooLow) {
  for (auto [w, h] : rowtest::kSizes) {
    auto c = page(w, h, R"([{"type":"list_item","rows":2,"items":[{"icon":"wifi","title":"a"},{"icon":"no-such-icon","title":"b"}]}])"_json);
    const Metrics& m = c->m;
    NodeList out;
    build_list(c->bd, rowtest::block(*c, 0), out, m.margin, 0, m.content_w);
    const bool fits = m.ic_min + 2 * m.spacer <= m.li_h;
    const Json first = out.back()->payload.to_json()["item"]["subItem"][0];
    EXPECT_EQ(first["caption"], fits ? "ListItem1ItemSubIcon" : "ListItem1ItemSubTitle");
    EXPECT_EQ(first["position"]["left"], m.pad_l);
    int left_out = 0;
    for (const auto& n : c->notes.all()) left_out += n.find("行内图标省去") != std::string::npos;
    EXPECT_EQ(left_out, fits ? 0 : 1) << w << "x" << h;
    // Unknown tokens are named whether or not the icon is shown.
    EXPECT_EQ(std::count(c->notes.all().begin(), c->notes.all().end(),
                         "list_item 行内图标「no-such-icon」不在 components/icons 资产库里（ListItem1Row2）——请改用库里语义名"
                         "（允许值见 blocks/_icons.json）"),
              1);
  }
}

// Every row of a list reads from its record: a plain entry is a title, a record gives the
// first of title, label and text that is given (not null or empty text), its value, icon
// and icon state.
TEST(List, RowsOfTheRecord) {
  const ubtest::OneBlock list(Json::parse(R"({"type": "list_item", "items": ["卧室", 5,
      {"title": "", "label": "客厅", "value": 0, "icon": "wifi", "icon_state": "on"},
      {"text": false, "icon_state": null}, {}]})"));
  const std::vector<ListRow> rows = list_rows(*list);
  ASSERT_EQ(rows.size(), 5u);
  EXPECT_EQ(rows[0].title, "卧室");
  EXPECT_EQ(rows[1].title, "5");
  EXPECT_EQ(std::tie(rows[2].title, rows[2].value, rows[2].icon), std::make_tuple("客厅", "0", "wifi"));
  EXPECT_EQ(rows[2].icon_state, "on");
  EXPECT_EQ(rows[3].title, "False");
  EXPECT_EQ(rows[3].icon_state, std::nullopt);
  EXPECT_EQ(rows[4].title, "");
  EXPECT_TRUE(list_rows(*ubtest::OneBlock(Json::parse(R"({"type": "list_item", "items": 0})"))).empty());
}

TEST(List, EveryRowIsKeptForTheDevice) {
  auto c = page(800, 480, R"([{"type":"list_item","name":"P","items":[
      {"icon":"wifi","title":"甲","value":"1"},{"icon":"lock","title":"乙"},{"icon":"wifi","title":"丙"},"丁"]}])"_json);
  const Metrics& m = c->m;
  NodeList out;
  build_list(c->bd, rowtest::block(*c, 0), out, m.margin, 0, m.content_w);
  ASSERT_EQ(c->data.lists.size(), 1u);
  const ListData& d = c->data.lists[0];
  EXPECT_EQ(d.base, "P");
  ASSERT_EQ(d.rows.size(), 4u);
  // The template row's icon is the picture the layout names; another row with that icon
  // shares it, and a row of another icon takes the name the template would give it.
  const std::string pic = out.back()->payload.to_json()["item"]["subItem"][0]["picTab"]["pic0"].get<std::string>();
  EXPECT_EQ("images/" + d.rows[0].icon, pic);
  EXPECT_EQ(d.rows[2].icon, d.rows[0].icon);
  EXPECT_EQ(d.rows[1].icon, cat("ic_lock_", m.ic_min, ".png"));
  EXPECT_EQ(d.rows[3], (ListDataRow{"丁", "", "", true}));
  EXPECT_EQ(d.rows[0].value, "1");
}
