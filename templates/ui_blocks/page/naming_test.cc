#include <gtest/gtest.h>

#include "page/naming.h"

using namespace ub;

// One sequence in reading order through containers; own names keep their number, the rest
// take their type's prefix.
TEST(Naming, SequenceAndNames) {
  Json blocks = Json::parse(R"([
    {"type": "card", "blocks": [{"type": "toggle_row", "name": "Wifi"}, {"type": "toggle_row", "name": ""},
                                {"type": "setting_row"}]},
    {"type": "card", "blocks": [{"type": "setting_row"}]},
    {"type": "bottom_actions"}, {"type": "page_title"}, {"type": "mystery"}, {"name": "NoType"}
  ])");
  FlowState flow;
  Json& b = blocks;
  name_tree(flow, b);
  const std::pair<const Json*, std::string> want[] = {
      {&b[0], "Card1"}, {&b[0]["blocks"][0], "Wifi"}, {&b[0]["blocks"][1], "ToggleRow3"},  // empty counts as absent
      {&b[0]["blocks"][2], "SettingRow4"}, {&b[1], "Card5"}, {&b[1]["blocks"][0], "SettingRow6"},
      {&b[2], "Action7"}, {&b[3], "Title8"}, {&b[4], "Block9"}, {&b[5], "NoType"}};
  for (const auto& [blk, name] : want) EXPECT_EQ((*blk)["_name"], name);
  EXPECT_EQ(b[0]["blocks"][0]["_seq"], 2);
  EXPECT_EQ(flow.next_seq(), 11);
}

TEST(Naming, WrongShapesAreBadInput) {
  FlowState flow;
  Json not_a_list = 5;
  EXPECT_THROW(name_tree(flow, not_a_list), InputError);
  Json text_items = Json::array({"setting_row"});
  EXPECT_THROW(name_tree(flow, text_items), InputError);
  Json nested = Json::parse(R"([{"type": "form_section", "blocks": {"type": "input_row"}}])");
  EXPECT_THROW(name_tree(flow, nested), InputError);
  Json none;
  EXPECT_NO_THROW(name_tree(flow, none));  // absent list: nothing to name
}
