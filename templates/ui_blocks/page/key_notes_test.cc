#include "page/key_notes.h"

#include <gtest/gtest.h>

#include "page_bench.h"

using namespace ub;

TEST(KeyNotes, KeysNoBlockReadsAreNotedWithTheNearestKnownKey) {
  const struct {
    std::string blocks;
    std::vector<std::string> notes;
  } cases[] = {
      {R"([{"type": "setting_row", "label": "a", "name": "N", "value": "v", "chevron": false}])", {}},
      {R"([{"type": "section_header", "txt": "a"}, {"type": "setting_row", "lable": "a", "icn": "wifi"}])",
       {R"(page.blocks[0]: unknown key "txt" (did you mean "text"?))",
        R"(page.blocks[1]: unknown key "lable" (did you mean "label"?))",
        R"(page.blocks[1]: unknown key "icn" (did you mean "icon"?))"}},
      {R"([{"type": "card", "blocks": [{"type": "toggle_row", "label": "a", "onn": true, "颜色": 1}], "titel": "t"}])",
       {R"(page.blocks[0]: unknown key "titel" (did you mean "title"?))",
        R"(page.blocks[0].blocks[0]: unknown key "onn" (did you mean "on"?))",
        R"(page.blocks[0].blocks[0]: unknown key "颜色")"}},
      {R"([{"type": "divider_label", "blocks": []}, {"type": "mystery", "x": 1}])",
       {R"(page.blocks[0]: unknown key "blocks")"}},  // only containers hold blocks; unknown types stop later
      {R"([{"type": "list_item", "items": ["a", {"titel": "b", "value": "c"}]}])",
       {R"(page.blocks[0].items[1]: unknown key "titel" (did you mean "title"?))"}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ubtest::composer(ubtest::page_spec(800, 480, Json::parse(c.blocks)))->notes().all(), c.notes) << c.blocks;
  }
  Json spec = ubtest::page_spec(800, 480);
  spec["page"]["footer"]["secundary"] = "b";
  EXPECT_EQ(ubtest::composer(spec)->notes().all(),
            std::vector<std::string>{R"(page.footer: unknown key "secundary" (did you mean "secondary"?))"});
}
