#include "spec/page_limits.h"

#include <gtest/gtest.h>

#include "page_bench.h"

using namespace ub;

namespace {

// The message of the page check, or "" when the page passes it.
std::string refusal(const Json& blocks, const std::string& page = "main", int w = 800, int h = 480) {
  try {
    ubtest::composer(ubtest::page_spec(w, h, blocks), page);
  } catch (const InputError& e) {
    return e.what();
  }
  return "";
}

Json repeat(size_t n, const Json& v) {
  Json a = Json::array();
  for (size_t i = 0; i < n; ++i) a.push_back(v);
  return a;
}

Json block(const std::string& type, Json keys = Json::object()) {
  keys["type"] = type;
  return keys;
}

}  // namespace

TEST(Identifier, LettersOfAnyScriptDigitsAndUnderscores) {
  for (const char* ok : {"a", "_", "Wifi2", "无线网络", "设置_页1", "नमस्ते", "Ärger", "_1"})
    EXPECT_TRUE(is_identifier(ok)) << ok;
  for (const char* bad : {"", "1abc", "a b", "a-b", "a.b", "../x", "a/b", "x(){}", "a\nb", "😀", "\xcc\x81x",
                          "\xff", "\xc1\x81", "ab\xe4\xb8"})
    EXPECT_FALSE(is_identifier(bad)) << bad;
  EXPECT_FALSE(is_identifier(std::string("a\0b", 3)));
  EXPECT_TRUE(is_identifier(std::string(64, 'x')));
  EXPECT_FALSE(is_identifier(std::string(65, 'x')));
  // The limit counts characters, not bytes.
  std::string cjk;
  for (int i = 0; i < 64; ++i) cjk += "字";
  EXPECT_TRUE(is_identifier(cjk));
  EXPECT_FALSE(is_identifier(cjk + "字"));
}

TEST(PageLimits, NamesNameTheBlockByItsPath) {
  Json card = block("card", {{"blocks", Json::array({block("setting_row", {{"label", "a"}}),
                                                      block("toggle_row", {{"label", "b"}, {"name", "x y"}})})}});
  const std::string msg = refusal(Json::array({block("section_header"), card}));
  EXPECT_NE(msg.find("page.blocks[1].blocks[1].name: 'x y' is not an identifier: letters"), std::string::npos)
      << msg;
  EXPECT_TRUE(msg.ends_with(" (toggle_row)")) << msg;
  EXPECT_NE(refusal(Json::array({block("setting_row", {{"name", 5}})})).find("name: 5 is not"), std::string::npos);
  EXPECT_EQ(refusal(Json::array({block("setting_row", {{"name", "网络"}})})), "");
  EXPECT_NE(refusal({}, "../../escaped").find("page name '../../escaped'"), std::string::npos);
  EXPECT_EQ(refusal({}, "设置"), "");
}

TEST(PageLimits, CountsBeyondTheScreenAreRefused) {
  const std::vector<std::pair<Json, std::string>> cases = {
      {block("image_gallery", {{"rows", 100000}}), "rows: 100000 is more than fits"},
      {block("loading", {{"variant", "skeleton"}, {"lines", 1000000}}), "lines: 1000000"},
      {block("wheel_picker", {{"columns", 100000}}), "columns: 100000"},
      {block("wheel_picker", {{"columns", Json::array({Json::array(), repeat(5000, 1), 0})}}), "columns[1]: 5000"},
      {block("wheel_picker", {{"rows", 1000001}}), "rows: 1000001"},
      {block("list_item", {{"rows", 1e12}}), "rows: 1000000000000"},
      {block("list_item", {{"rowSpacing", 100000}}), "rowSpacing: 100000"},
      {block("tabs", {{"items", repeat(1000, "t")}}), "items: 1000"},
      {block("grid_icons", {{"items", repeat(100000, "g")}}), "items: 100000"},
      {block("radio_row", {{"options", repeat(5000, "o")}}), "options: 5000"},
      {block("chart_card", {{"data", repeat(1000, 1)}}), "data: 1000"},
  };
  for (const auto& [blk, part] : cases) {
    const std::string msg = refusal(Json::array({block("section_header"), blk}));
    EXPECT_NE(msg.find("page.blocks[1]." + part), std::string::npos) << blk.dump().substr(0, 80) << " -> " << msg;
    EXPECT_TRUE(msg.ends_with(" (" + blk["type"].get<std::string>() + ")")) << msg;
  }
  // Each block is bounded on its own; a long page of blocks that each fit is fine.
  Json many = Json::array();
  for (int i = 0; i < 40; ++i) many.push_back(block("image_gallery", {{"rows", 20}}));
  EXPECT_EQ(refusal(many), "");
  // What fits passes.
  EXPECT_EQ(refusal(Json::array({block("image_gallery", {{"rows", 4}}), block("wheel_picker", {{"columns", 3}}),
                                 block("tabs", {{"items", {"a", "b", "c"}}})})),
            "");
}

TEST(PageLimits, NumbersAreRangeCheckedBeforeConversion) {
  const std::vector<std::pair<Json, std::string>> cases = {
      {block("slider_row", {{"progress", 1e300}}), "progress: 1e+300 must lie"},
      {block("progress_row", {{"progress", -1}}), "between 0 and 100"},
      {block("slider_row", {{"progress", "x"}}), "progress: expected a number, got a text 'x'"},
      {block("image_gallery", {{"count", 1e30}}), "count: number out of range"},
      {block("tabs", {{"items", {"a", "b"}}, {"selected", -1e19}}), "selected"},
      {block("chart_card", {{"data", {1, "inf"}}}), "data[1]: 'inf' must be a finite number"},
      {block("chart_card", {{"data", {1, 1e300}}}), "data[1]"},
  };
  for (const auto& [blk, part] : cases)
    EXPECT_NE(refusal(Json::array({blk})).find(part), std::string::npos) << blk.dump();
  EXPECT_EQ(refusal(Json::array({block("slider_row", {{"progress", 100}})})), "");
}

TEST(PageLimits, TextsOfPictureNamesMustBeTexts) {
  const std::pair<const char*, const char*> cases[] = {
      {R"({"type": "setting_row", "icon": ["a", "b"]})", "icon: expected a text, got a list ['a', 'b']"},
      {R"({"type": "banner", "icon": {"k": 1}})", "icon: expected a text, got a mapping"},
      {R"({"type": "toolbar", "backIcon": ["x"]})", "backIcon: expected a text"},
      {R"({"type": "toolbar", "actions": [["x"]]})", "actions[0]: expected a text or a mapping"},
      {R"({"type": "toolbar", "actions": [{"icon": ["x"]}]})", "actions[0].icon: expected a text"},
      {R"({"type": "grid_icons", "items": [{"icon": {"a": 1}}]})", "items[0].icon: expected a text"},
      {R"({"type": "list_item", "items": [{"icon": "wifi", "icon_state": [1]}]})", "items[0].icon_state: expected a text"},
      {R"({"type": "keypad", "items": [{"state": ["on"]}]})", "items[0].state: expected a text"},
  };
  for (const auto& [blk, part] : cases) {
    const std::string msg = refusal(Json::array({Json::parse(blk)}));
    EXPECT_NE(msg.find(part), std::string::npos) << blk << " -> " << msg;
  }
}
