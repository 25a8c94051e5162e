// Stops and bad input met while the page is built name the block they are about.
#include "kinds/block_place.h"

#include <gtest/gtest.h>

#include "kinds/kinds_testing.h"

using namespace ub;

TEST(BlockPlace, StopsAboutOneBlockGetItsPlaceOnASecondLine) {
  const std::string icon300(300, 'w');
  const struct {
    std::string blocks, first, place;
  } cases[] = {
      {R"([{"type": "section_header"}, {"type": "togle_row"}])", "[X] 未知块类型：togle_row（可用：banner, ",
       R"(  at page.blocks[1] (togle_row Block2) — did you mean "toggle_row"?)"},
      {R"([{"type": "zzz"}])", "[X] 未知块类型：zzz（", "  at page.blocks[0] (zzz Block1)"},
      {R"([{"type": "card", "blocks": [{"type": "setting_row"}, {"type": "setting_rwo"}]}])",
       "[X] 卡内不支持的块类型：setting_rwo",
       R"(  at page.blocks[0].blocks[1] (setting_rwo Block3) — did you mean "setting_row"?)"},
      {R"([{"type": "card", "blocks": [{"type": "dialog", "name": "Ask"}]}])", "[X] 卡内不支持的块类型：dialog",
       "  at page.blocks[0].blocks[0] (dialog Ask)"},
      {R"([{"type": "section_header", "text": "s"}, {"type": "card", "blocks": [{"type": "wheel_picker", "rows": 4}]}])",
       "[X] wheel_picker.rows 必须为奇数", "  at page.blocks[1].blocks[0] (wheel_picker WheelPicker3)"},
      {R"([{"type": "empty_state", "icon": ")" + icon300 + R"("}])", "[X] 图片名过长",
       "  at page.blocks[0] (empty_state EmptyState1)"},
      {R"([{"type": "setting_row", "icon": "wifi"}, {"type": "setting_row"}])", "[X] 同页行族图标不统一",
       "口径：同一页面行族图标「要么都有、要么都没有」；缺图标的行请补 icon，或去掉所有 icon"},  // about the page
  };
  for (const auto& c : cases) {
    const std::string msg = refusal_of(Json::parse(c.blocks));
    const size_t nl = msg.find('\n');
    EXPECT_TRUE(msg.starts_with(c.first)) << msg;
    if (c.place.empty()) {
      EXPECT_EQ(nl, std::string::npos) << msg;
    } else {
      ASSERT_NE(nl, std::string::npos) << msg;
      EXPECT_EQ(msg.substr(nl + 1), c.place);
    }
  }
}

TEST(BlockPlace, BadInputFoundWhileBuildingNamesTheKey) {
  EXPECT_EQ(refusal_of(Json::parse(R"([{"type": "radio_row", "options": "abc"}])")),
            "spec.json: page.blocks[0].options: expected a list, got a text 'abc' (radio_row)");
  EXPECT_EQ(refusal_of(Json::parse(R"([{"type": "form_section", "blocks": [{"type": "radio_row", "options": {"a": 1}}]}])")),
            "spec.json: page.blocks[0].blocks[0].options: expected a list, got a mapping {'a': 1} (radio_row)");
  EXPECT_EQ(refusal_of(Json::parse(R"([{"type": "keypad", "items": "123"}])")),
            "spec.json: page.blocks[0].items: expected a list, got a text '123' (keypad)");
}
