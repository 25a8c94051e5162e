#include "page/key_notes.h"

#include <gtest/gtest.h>

#include "page_bench.h"

using namespace ub;

// The refusal of a page, or "" when it composes.
static std::string refusal(const Json& spec) {
  try {
    ubtest::composer(spec);
  } catch (const std::runtime_error& e) {
    return e.what();
  }
  return "";
}

TEST(UnknownKeys, AreRefusedWithTheirPlaceAndTheNearestKnownKey) {
  const struct {
    std::string blocks;
    std::string refusal;
  } cases[] = {
      {R"([{"type": "setting_row", "label": "a", "name": "N", "value": "v", "chevron": false}])", ""},
      // Keys starting with an underscore are comments.
      {R"([{"type": "setting_row", "label": "a", "_note": {"x": 1}, "_": null}])", ""},
      {R"([{"type": "section_header", "txt": "a"}, {"type": "setting_row", "lable": "a", "icn": "wifi"}])",
       "spec.json: page.blocks[0]: unknown key \"txt\" (did you mean \"text\"?)\n"
       "spec.json: page.blocks[1]: unknown key \"lable\" (did you mean \"label\"?)\n"
       "spec.json: page.blocks[1]: unknown key \"icn\" (did you mean \"icon\"?)"},
      {R"([{"type": "card", "blocks": [{"type": "toggle_row", "label": "a", "颜色": 1}], "titel": "t"}])",
       "spec.json: page.blocks[0]: unknown key \"titel\" (did you mean \"title\"?)\n"
       "spec.json: page.blocks[0].blocks[0]: unknown key \"颜色\""},
      // Only containers hold blocks.
      {R"([{"type": "divider_label", "blocks": []}])", "spec.json: page.blocks[0]: unknown key \"blocks\""},
      {R"([{"type": "list_item", "items": ["a", {"titel": "b", "value": "c", "_c": 1}]}])",
       "spec.json: page.blocks[0].items[1]: unknown key \"titel\" (did you mean \"title\"?)"},
      // A key that takes one record: its keys are declared with it.
      {R"([{"type": "dialog", "input": {"kind": "password", "placholder": "p", "_c": 1}}])",
       "spec.json: page.blocks[0].input: unknown key \"placholder\" (did you mean \"placeholder\"?)"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(refusal(ubtest::page_spec(800, 480, Json::parse(c.blocks))), c.refusal) << c.blocks;

  Json spec = ubtest::page_spec(800, 480);
  spec["page"]["footer"]["secundary"] = "b";
  EXPECT_EQ(refusal(spec), "spec.json: page.footer: unknown key \"secundary\" (did you mean \"secondary\"?)");
  // The frame: the top level (where $schema names the schema), resolution and page.
  spec = ubtest::page_spec(800, 480);
  spec["$schema"] = "./spec.schema.json";
  spec["_comment"] = "x";
  spec["resolution"]["_dpi"] = 3;
  EXPECT_EQ(refusal(spec), "");
  spec["resolution"]["widht"] = 3;
  EXPECT_EQ(refusal(spec), "spec.json: resolution: unknown key \"widht\" (did you mean \"width\"?)");
  spec = ubtest::page_spec(800, 480);
  spec["page"]["titel"] = "x";
  EXPECT_EQ(refusal(spec), "spec.json: page: unknown key \"titel\" (did you mean \"title\"?)");
  spec = ubtest::page_spec(800, 480);
  spec["pgae"] = Json::object();
  EXPECT_EQ(refusal(spec), "spec.json: unknown key \"pgae\" (did you mean \"page\"?)");
}

TEST(UnknownKeys, APageFooterThatIsNoMappingIsRefusedEvenBesideABottomBarBlock) {
  Json spec = ubtest::page_spec(800, 480, R"([{"type": "bottom_actions"}])"_json);
  spec["page"]["footer"] = "ok";
  EXPECT_EQ(refusal(spec), "spec.json: page.footer: expected a mapping, got a text 'ok'");
  spec["page"]["footer"] = "";
  EXPECT_EQ(refusal(spec), "");
}
