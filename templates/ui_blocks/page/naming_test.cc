#include <gtest/gtest.h>

#include "compose.h"
#include "test_support.h"

using namespace ub;

namespace {
Composer composer(const Json& blocks) { return Composer(ubtest::page_spec(800, 480, blocks), "main", ubtest::installation()); }
}  // namespace

TEST(Naming, SequenceRunsThroughContainersInReadingOrder) {
  Json rows = Json::parse(R"([{"type": "setting_row"}, {"type": "setting_row"}, {"type": "setting_row"}])");
  Json blocks = Json::array({{{"type", "card"}, {"blocks", rows}}, {{"type", "card"}, {"blocks", rows}},
                             {{"type", "section_header"}}});
  Composer c = composer(blocks);
  Json& b = c.page["blocks"];
  c.name_tree(b);
  EXPECT_EQ(b[0]["_name"], "Card1");
  EXPECT_EQ(b[1]["_name"], "Card5");
  std::vector<int> seqs;
  for (int i : {0, 1})
    for (const Json& r : b[i]["blocks"]) seqs.push_back(r["_seq"].get<int>());
  EXPECT_EQ(seqs, (std::vector<int>{2, 3, 4, 6, 7, 8}));
  EXPECT_EQ(b[0]["blocks"][2]["_name"], "SettingRow4");
  EXPECT_EQ(b[2]["_name"], "SectionHeader9");
  EXPECT_EQ(c.next_seq(), 10);
}

TEST(Naming, OwnNamesKeepTheirNumberAndFallBackToPrefixes) {
  Json blocks = Json::parse(R"([
    {"type": "card", "blocks": [{"type": "toggle_row", "name": "Wifi"}, {"type": "toggle_row", "name": ""}]},
    {"type": "bottom_actions"}, {"type": "page_title"}, {"type": "mystery"}, {"name": "NoType"}
  ])");
  Composer c = composer(blocks);
  Json& b = c.page["blocks"];
  c.name_tree(b);
  EXPECT_EQ(b[0]["blocks"][0]["_name"], "Wifi");
  EXPECT_EQ(b[0]["blocks"][0]["_seq"], 2);
  EXPECT_EQ(b[0]["blocks"][1]["_name"], "ToggleRow3");  // an empty name counts as absent
  EXPECT_EQ(b[1]["_name"], "Action4");
  EXPECT_EQ(b[2]["_name"], "Title5");
  EXPECT_EQ(b[3]["_name"], "Block6");
  EXPECT_EQ(b[4]["_name"], "NoType");
}

TEST(Naming, WrongShapesAreBadInput) {
  Composer c = composer(Json::array());
  Json not_a_list = 5;
  EXPECT_THROW(c.name_tree(not_a_list), InputError);
  Json text_items = Json::array({"setting_row"});
  EXPECT_THROW(c.name_tree(text_items), InputError);
  Json nested = Json::parse(R"([{"type": "form_section", "blocks": {"type": "input_row"}}])");
  EXPECT_THROW(c.name_tree(nested), InputError);
  Json none;
  EXPECT_NO_THROW(c.name_tree(none));  // absent list: nothing to name
}
