#include "kinds/value_check.h"

#include <gtest/gtest.h>

#include "kinds/kinds_testing.h"

using namespace ub;

namespace {

// The refusal of one block at 800x480, or "" when the page composes.
std::string refused(const char* block) { return refusal_of(Json::array({Json::parse(block)})); }

}  // namespace

TEST(ValueCheck, FlagsTakeTrueFalseOneOrZero) {
  for (const char* ok : {R"({"type": "toggle_row", "label": "a", "on": false})",
                         R"({"type": "toggle_row", "label": "a", "on": 1})",
                         R"({"type": "checkbox_row", "label": "a", "checked": 0.0})",
                         R"({"type": "setting_row", "label": "a", "chevron": true})"})
    EXPECT_EQ(refused(ok), "") << ok;
  const struct {
    const char* block;
    const char* message;
  } bad[] = {
      {R"({"type": "toggle_row", "label": "a", "on": "false"})",
       "spec.json: page.blocks[0].on: expected true or false, got a text 'false' (toggle_row)"},
      {R"({"type": "toggle_row", "label": "a", "on": "yes"})",
       "spec.json: page.blocks[0].on: expected true or false, got a text 'yes' (toggle_row)"},
      {R"({"type": "setting_row", "label": "a", "chevron": null})",
       "spec.json: page.blocks[0].chevron: expected true or false, got null (setting_row)"},
      {R"({"type": "card", "blocks": [{"type": "checkbox_row", "checked": 2}]})",
       "spec.json: page.blocks[0].blocks[0].checked: expected true or false, got a number 2 (checkbox_row)"},
      {R"({"type": "setting_row", "label": "a", "chevron": []})",
       "spec.json: page.blocks[0].chevron: expected true or false, got a list [] (setting_row)"},
  };
  for (const auto& c : bad) EXPECT_EQ(refused(c.block), c.message) << c.block;
}

TEST(ValueCheck, TextsAndListEntriesHoldTextsOrRecords) {
  // A false value stands for an absent key; numbers are texts.
  for (const char* ok : {R"({"type": "setting_row", "label": 5, "value": false})",
                         R"({"type": "setting_row", "label": "a", "value": []})",
                         R"({"type": "tabs", "items": ["a", 2]})",
                         R"({"type": "list_item", "items": ["a", {"title": "b"}]})"})
    EXPECT_EQ(refused(ok), "") << ok;
  const struct {
    const char* block;
    const char* message;
  } bad[] = {
      {R"({"type": "setting_row", "label": ["a"]})",
       "spec.json: page.blocks[0].label: expected a text or a number, got a list ['a'] (setting_row)"},
      {R"({"type": "setting_row", "label": true})",
       "spec.json: page.blocks[0].label: expected a text or a number, got a truth value True (setting_row)"},
      {R"({"type": "setting_row", "label": "a", "icon": 5})",
       "spec.json: page.blocks[0].icon: expected a text, got a number 5 (setting_row)"},
      {R"({"type": "tabs", "items": ["a", null]})",
       "spec.json: page.blocks[0].items[1]: expected a text or a number, got null (tabs)"},
      {R"({"type": "radio_row", "options": ["a", ["b"]]})",
       "spec.json: page.blocks[0].options[1]: expected a text, got a list ['b'] (radio_row)"},
      {R"({"type": "list_item", "items": [{"title": {"a": 1}}]})",
       "spec.json: page.blocks[0].items[0].title: expected a text or a number, got a mapping {'a': 1} (list_item)"},
  };
  for (const auto& c : bad) EXPECT_EQ(refused(c.block), c.message) << c.block;
}

TEST(ValueCheck, AnIndexNamesAnEntryOfItsListForEveryType) {
  EXPECT_EQ(refused(R"({"type": "radio_row", "options": ["a", "b"], "selected": 1})"), "");
  EXPECT_EQ(refused(R"({"type": "radio_row", "options": ["a", "b"], "selected": 2})"),
            "spec.json: page.blocks[0].selected: 2 names no entry of options: 0 to 1 (radio_row)");
  EXPECT_EQ(refused(R"({"type": "radio_row", "options": ["a", "b"], "selected": -1})"),
            "spec.json: page.blocks[0].selected: -1 names no entry of options: 0 to 1 (radio_row)");
  EXPECT_EQ(refused(R"({"type": "radio_row", "selected": "1"})"),
            "spec.json: page.blocks[0].selected: '1' names no entry of options: it has none (radio_row)");
  EXPECT_EQ(refused(R"({"type": "tabs", "items": ["a", "b"], "selected": 2})"),
            "spec.json: page.blocks[0].selected: 2 names no entry of items: 0 to 1 (tabs)");
}

TEST(ValueCheck, ForbiddenCharactersAreNamedWithTheirCodePointAtEverySize) {
  const std::string tail = "（check_all 会 FAIL）——请改用 ASCII 等价写法（如 … → ...；℃ → 摄氏度）：\n    ";
  // value_short is shown on small screens only: refused on large ones too.
  for (auto [w, h] : {std::pair{320, 240}, {1280, 800}})
    EXPECT_EQ(refusal_of(R"([{"type": "setting_row", "label": "x", "value_short": "a…"}])"_json, w, h),
              "[X] 文本含引擎字库黑名单字符 … U+2026" + tail + "page.blocks[0].value_short: 'a…'");
  EXPECT_EQ(refused(R"({"type": "card", "blocks": [{"type": "toggle_row", "label": "开→关"}]})"),
            "[X] 文本含引擎字库黑名单字符 → U+2192" + tail + "page.blocks[0].blocks[0].label: '开→关'");
  EXPECT_EQ(refused(R"({"type": "tabs", "items": ["a", "①"]})"),
            "[X] 文本含引擎字库黑名单字符 ① U+2460" + tail + "page.blocks[0].items[1]: '①'");
  Json spec = ubtest::page_spec(800, 480, R"([{"type": "toolbar", "title": "t"}])"_json);
  spec["page"]["subtitle"] = "25℃";
  try {
    ubtest::composer(spec);
    ADD_FAILURE() << "composed";
  } catch (const StopError& e) {
    EXPECT_EQ(std::string(e.what()), "[X] 文本含引擎字库黑名单字符 ℃ U+2103" + tail + "page.subtitle: '25℃'");
  }
}

TEST(ValueCheck, IconNamesAreNeverPaths) {
  const std::string nul = std::string("{\"type\": \"toolbar\", \"backIcon\": \"a") + "\\u0000" + "b\"}";
  const struct {
    std::string block, message;
  } bad[] = {
      {R"({"type": "toolbar", "backIcon": "a/b"})",
       "[X] 图片名不能含路径分隔符：a/b（图标语义名请用库里的名字）\n    page.blocks[0].backIcon"},
      {nul, "[X] 图片名不能含路径分隔符：a\\x00b（图标语义名请用库里的名字）\n    page.blocks[0].backIcon"},
      {R"({"type": "image_gallery", "icon": "..\\x"})",
       "[X] 图片名不能含路径分隔符：..\\x（图标语义名请用库里的名字）\n    page.blocks[0].icon"},
      {R"({"type": "grid_icons", "items": [{"icon": "wifi"}, {"icon": "a/b"}]})",
       "[X] 图片名不能含路径分隔符：a/b（图标语义名请用库里的名字）\n    page.blocks[0].items[1].icon"},
  };
  for (const auto& c : bad) EXPECT_EQ(refused(c.block.c_str()), c.message) << c.block;
}

TEST(ValueCheck, NumbersAreReadAsTheSchemaStatesThem) {
  // Progress as numeric text with a fraction, wheel columns as a whole number with a zero fraction.
  for (const char* ok : {R"({"type": "slider_row", "progress": "72.5"})", R"({"type": "progress_row", "progress": " 1e1 "})",
                         R"({"type": "wheel_picker", "columns": 2.0})"})
    EXPECT_EQ(refused(ok), "") << ok;
  EXPECT_NE(refused(R"({"type": "wheel_picker", "columns": 2.5})"), "");
  EXPECT_NE(refused(R"({"type": "slider_row", "progress": "72.5%"})"), "");
  auto c = ubtest::composer(ubtest::page_spec(800, 480, R"([{"type": "slider_row", "progress": "72.9"},
      {"type": "wheel_picker", "columns": 2.0}])"_json));
  const std::string layout = c->layout().text;
  EXPECT_NE(layout.find("\"defProgress\": 72,"), std::string::npos);
  EXPECT_NE(layout.find("\"ListWheelPicker2Col2\""), std::string::npos);
}
