#include "page/page_records.h"

#include <gtest/gtest.h>

#include "kinds/registry.h"
#include "test_support.h"

using namespace ub;

namespace {

PageRecords read(const Json& page) { return read_page_records(page, ubtest::installation().blocks, block_kinds()); }

}  // namespace

// One sequence in reading order through containers; own names keep their number, the rest
// take their type's prefix. Nothing is written into the page.
TEST(PageRecords, SequenceNamesAndPlaces) {
  const Json page = Json::parse(R"({"blocks": [
    {"type": "card", "blocks": [{"type": "toggle_row", "name": "Wifi"}, {"type": "toggle_row", "name": ""},
                                {"type": "setting_row"}]},
    {"type": "card", "blocks": [{"type": "setting_row"}]},
    {"type": "bottom_actions"}, {"type": "page_title"}, {"type": "mystery"}, {"name": "NoType"}
  ]})");
  const Json before = page;
  const PageRecords r = read(page);
  EXPECT_EQ(page, before);
  const auto& b = r.blocks;
  const std::tuple<const BlockRecord*, std::string, int, std::string> want[] = {
      {&b[0], "Card1", 1, "page.blocks[0]"},
      {&b[0].blocks[0], "Wifi", 2, "page.blocks[0].blocks[0]"},
      {&b[0].blocks[1], "ToggleRow3", 3, "page.blocks[0].blocks[1]"},  // empty counts as absent
      {&b[0].blocks[2], "SettingRow4", 4, "page.blocks[0].blocks[2]"},
      {&b[1], "Card5", 5, "page.blocks[1]"},
      {&b[1].blocks[0], "SettingRow6", 6, "page.blocks[1].blocks[0]"},
      {&b[2], "Action7", 7, "page.blocks[2]"},
      {&b[3], "Title8", 8, "page.blocks[3]"},
      {&b[4], "Block9", 9, "page.blocks[4]"},
      {&b[5], "NoType", 10, "page.blocks[5]"}};
  for (const auto& [rec, name, seq, path] : want) {
    EXPECT_EQ(rec->name, name);
    EXPECT_EQ(rec->seq, seq) << name;
    EXPECT_EQ(rec->path, path) << name;
  }
  EXPECT_TRUE(b[0].blocks[0].named);
  EXPECT_EQ(caption_id(b[0].blocks[0]), "Wifi");
  EXPECT_EQ(caption_id(b[0].blocks[1]), "3");
  EXPECT_EQ(b[4].kind, nullptr);
  EXPECT_EQ(type_text(b[4]), "mystery");
  EXPECT_EQ(type_text(b[5]), "?");
  EXPECT_FALSE(r.title);  // a page_title block holds the band
  EXPECT_FALSE(r.footer);
  EXPECT_TRUE(read(Json::object()).blocks.empty());
}

// The title band made from page.title and the bottom bar from page.footer come after every
// block; page.footer is numbered only when the page has no bottom bar of its own.
TEST(PageRecords, TitleAndFooterFromThePage) {
  const Json page = Json::parse(R"({"title": "T", "subtitle": "S", "footer": {"primary": "OK", "name": "Save"},
                                    "blocks": [{"type": "setting_row"}]})");
  const PageRecords r = read(page);
  ASSERT_TRUE(r.title && r.footer);
  EXPECT_EQ(std::tie(r.title->name, r.title->seq, r.title->path), std::make_tuple(std::string("Title2"), 2, std::string("page.title")));
  EXPECT_EQ(text(*r.title, "title"), "T");
  EXPECT_EQ(text(*r.title, "subtitle"), "S");
  EXPECT_EQ(std::tie(r.footer->name, r.footer->seq, r.footer->path), std::make_tuple(std::string("Save"), 3, std::string("page.footer")));
  EXPECT_EQ(caption_id(*r.footer), "Save");
  EXPECT_EQ(type_text(*r.footer), "bottom_actions");
  EXPECT_EQ(text(*r.footer, "primary"), "OK");

  // With a bottom_actions block page.footer is only checked; with a toolbar there is no title band.
  const Json bars = Json::parse(R"({"title": "T", "footer": {"primary": "OK"},
      "blocks": [{"type": "toolbar"}, {"type": "toolbar", "title": "own"}, {"type": "bottom_actions"}]})");
  const PageRecords t = read(bars);
  EXPECT_FALSE(t.title);
  ASSERT_TRUE(t.footer);
  EXPECT_EQ(t.footer->seq, 0);
  EXPECT_EQ(text(t.blocks[0], "title"), "T");  // a toolbar without a title takes page.title
  EXPECT_EQ(text(t.blocks[1], "title"), "own");
  EXPECT_EQ(given_value(t.blocks[0], "title"), Json());  // as given: absent

  // An empty footer is no bottom bar; a footer that is no mapping gives no record.
  const Json empty_footer = Json::parse(R"({"footer": {}})"), text_footer = Json::parse(R"({"footer": "ok"})"),
             empty_title = Json::parse(R"({"title": ""})");
  EXPECT_EQ(read(empty_footer).footer->seq, 0);
  EXPECT_FALSE(read(text_footer).footer);
  EXPECT_FALSE(read(empty_title).title);
}
