// A block's own name stands where its number stands in every caption formed from it, so
// the captions and callbacks of named blocks hold when blocks are added above them.
#include <gtest/gtest.h>

#include <set>

#include "page_bench.h"
#include "spec/spec_text.h"

using namespace ub;

namespace {

Json showcase() {
  const std::string path = ubtest::source_dir() + "/examples/showcase_800x480.json";
  return parse_spec_text(read_file(path), path);
}

// Every block of the list (and of its containers) gets its own name.
void name_all(Json& blocks, int& n) {
  for (Json& b : blocks) {
    b["name"] = cat("N", ++n);
    if (b.contains("blocks")) name_all(b["blocks"], n);
  }
}

std::set<std::string> captions(const LayoutText& layout) {
  std::set<std::string> out;
  for (const ControlRef& r : layout.controls)
    if (r.caption) out.insert(*r.caption);
  return out;
}

std::set<std::string> lines(const std::string& text) {
  std::set<std::string> out;
  size_t at = 0;
  for (size_t nl; (nl = text.find('\n', at)) != std::string::npos; at = nl + 1) out.insert(text.substr(at, nl - at));
  return out;
}

std::vector<std::string> missing(const std::set<std::string>& from, const std::set<std::string>& in) {
  std::vector<std::string> out;
  for (const std::string& s : from)
    if (!in.count(s)) out.push_back(s);
  return out;
}

}  // namespace

// The showcase holds every block type. Named throughout, it keeps every caption and every
// callback when a block goes in at the top and a row goes in above the named rows of a card.
TEST(Names, NamedBlocksKeepTheirCaptionsWhenBlocksAreInsertedAbove) {
  Json spec = showcase();
  int n = 0;
  name_all(spec["page"]["blocks"], n);
  const ubtest::Composed before = ubtest::compose_page(spec, "main", false);

  Json& blocks = spec["page"]["blocks"];
  blocks.insert(blocks.begin() + 1, Json{{"type", "section_header"}, {"text", "新"}});
  size_t card = 0;
  while (blocks[card]["type"] != "card") ++card;
  Json& rows = blocks[card]["blocks"];
  rows.insert(rows.begin(), Json{{"type", "setting_row"}, {"label", "新"}});
  const ubtest::Composed after = ubtest::compose_page(spec, "main", false);

  const std::set<std::string> was = captions(before.layout), is = captions(after.layout);
  EXPECT_EQ(missing(was, is), std::vector<std::string>{});
  // What is new comes from the two unnamed blocks alone.
  const BlockRecord& head = after.composer->records().blocks[1];
  const BlockRecord& row = after.composer->records().blocks[card].blocks[0];
  for (const std::string& c : missing(is, was))
    EXPECT_TRUE(c == "SectionHeader" + caption_id(head) || c.find(row.name) != std::string::npos ||
                c == "RowSep" + caption_id(row))
        << c;
  EXPECT_EQ(missing(lines(before.logic), lines(after.logic)), std::vector<std::string>{});
  // The new row's callback alone is added.
  for (const std::string& l : missing(lines(after.logic), lines(before.logic)))
    EXPECT_NE(l.find("ButtonRow" + row.name), std::string::npos) << l;
  EXPECT_NE(after.logic.find("onButtonClick_ButtonRow" + row.name + "("), std::string::npos);
}

// The name takes the number's place in the captions of the block's own controls, the
// heading of a card or form section and the separator under a row; rows keep their names
// as before. A page without names keeps its numbers.
TEST(Names, TheNameStandsWhereTheNumberStood) {
  Json spec = ubtest::page_spec(800, 480, Json::parse(R"([
    {"type": "banner", "name": "Alert", "text": "a"},
    {"type": "tabs", "name": "Mode", "items": ["a", "b"]},
    {"type": "card", "name": "Net", "title": "网络", "blocks": [
      {"type": "setting_row", "name": "Wifi", "label": "a"}, {"type": "setting_row", "label": "b"}]},
    {"type": "dialog", "name": "Pwd", "title": "t"}
  ])"));
  spec["page"]["footer"]["name"] = "Save";
  const ubtest::Composed c = ubtest::compose_page(spec, "main", false);
  const std::set<std::string> caps = captions(c.layout);
  for (const char* want : {"BannerAlertIcon", "BannerAlertClose", "TabsModeItem1", "CardNet", "CardBgNet",
                           "SectionHeaderNet", "RowSepWifi", "TextRowWifiLabel", "ButtonRowSettingRow5",
                           "DialogButtonPrimaryPwd", "ButtonPrimarySave", "FooterBgSave"})
    EXPECT_TRUE(caps.count(want)) << want;
  EXPECT_NE(c.logic.find("onButtonClick_DialogButtonPrimaryPwd("), std::string::npos);

  spec["page"]["footer"].erase("name");
  for (Json& b : spec["page"]["blocks"]) b.erase("name");
  spec["page"]["blocks"][2]["blocks"][0].erase("name");
  const std::set<std::string> plain = captions(ubtest::compose_page(spec, "main", false).layout);
  for (const char* want : {"Banner1Icon", "Tabs2Item1", "Card3", "CardBg3", "SectionHeader3", "RowSep4",
                           "DialogButtonPrimary6", "ButtonPrimary8"})
    EXPECT_TRUE(plain.count(want)) << want;
}

// Two blocks of one name give one caption twice: the caption check refuses the page.
TEST(Names, OneNameOnTwoBlocksIsRefused) {
  const Json spec = ubtest::page_spec(800, 480, Json::parse(R"([
    {"type": "banner", "name": "A", "text": "a"}, {"type": "banner", "name": "A", "text": "b"}])"));
  std::string msg;
  try {
    ubtest::composer(spec)->layout();
  } catch (const StopError& e) {
    msg = e.what();
  }
  EXPECT_EQ(msg.rfind("[X] caption 重名 ", 0), 0u) << msg;
  EXPECT_NE(msg.find("BannerA "), std::string::npos) << msg;
  EXPECT_NE(msg.find("  at page.blocks[1] (banner A)"), std::string::npos) << msg;
}
