#include <gtest/gtest.h>

#include "logic/data_header.h"
#include "page_bench.h"

using namespace ub;

namespace {

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

}  // namespace

TEST(DataHeader, StringLiteralsEscapeWhatCppReadsSpecially) {
  EXPECT_EQ(cpp_string_literal(""), "\"\"");
  EXPECT_EQ(cpp_string_literal("say \"hi\" C:\\x"), R"("say \"hi\" C:\\x")");
  EXPECT_EQ(cpp_string_literal("a\nb\tc\rd"), R"("a\nb\tc\rd")");
  // Octal escapes take at most three digits, so a digit after one stays a digit.
  EXPECT_EQ(cpp_string_literal(std::string("\x01" "7\x7f", 3)), R"("\0017\177")");
  EXPECT_EQ(cpp_string_literal(std::string("a\0b", 3)), R"("a\000b")");
  // No trigraph can form; a lone question mark stays.
  EXPECT_EQ(cpp_string_literal("?" "?=?"), R"("?\?=?")");
  EXPECT_EQ(cpp_string_literal("温度 60°C ✓"), "\"温度 60°C ✓\"");
}

TEST(DataHeader, TablesAndFunctionsAreNamedAfterTheirListview) {
  PageData d;
  d.lists.push_back({"Programs", {{"快洗", "15", "ic_water_24.png", true}, {"羊毛", "", "", true}}});
  d.wheels.push_back({"Timer", {{"0", "1"}, {}}});
  const std::string h = data_header_text("washer", d);
  EXPECT_TRUE(has(h, "namespace washerData {\n"));
  EXPECT_TRUE(has(h, "\n}  // namespace washerData\n"));
  EXPECT_TRUE(has(h, "static const ListRow kListProgramsRows[] = {\n"
                     "    {\"快洗\", \"15\", \"ic_water_24.png\", true},\n"
                     "    {\"羊毛\", \"\", \"\", true},\n};\n"));
  EXPECT_TRUE(has(h, "static inline int ListProgramsCount() { return 2; }\n"));
  EXPECT_TRUE(has(h, "return index >= 0 && index < 2 ? kListProgramsRows[index] : kNoRow;"));
  EXPECT_TRUE(has(h, "static inline void fillListProgramsItem(Item &item, int index) {"));
  EXPECT_TRUE(has(h, "static const char *const kListTimerCol1Values[] = {\n    \"0\",\n    \"1\",\n};\n"));
  EXPECT_TRUE(has(h, "static inline void fillListTimerCol1Item(Item &item, int index) {\n"
                     "    item.title = ListTimerCol1Value(index);\n}\n"));
  // An empty column has no table (C++ has no empty arrays): every index is out of range.
  EXPECT_FALSE(has(h, "kListTimerCol2Values"));
  EXPECT_TRUE(has(h, "static inline int ListTimerCol2Count() { return 0; }\n"
                     "static inline const char *ListTimerCol2Value(int index) {\n"
                     "    (void)index;\n    return \"\";\n}\n"));
  EXPECT_EQ(h.back(), '\n');
}

TEST(DataHeader, APageWithoutListsStillGetsItsHeader) {
  const std::string h = data_header_text("main", PageData{});
  EXPECT_TRUE(has(h, "#pragma once\n"));
  EXPECT_TRUE(has(h, "struct ListRow {"));
  EXPECT_FALSE(has(h, "// ---- "));
  EXPECT_EQ(data_header_path("main"), "src/logic/mainData.h");
}

TEST(DataHeader, ComesFromThePageAndHoldsWhenBlocksAreInsertedAbove) {
  Json spec = R"({"resolution": {"width": 800, "height": 480}, "page": {"title": "洗衣", "blocks": [
      {"type": "list_item", "name": "Programs", "chevron": false, "items": ["快洗", {"title": "羊毛", "value": 40}]},
      {"type": "list_item"},
      {"type": "wheel_picker", "columns": [[1, 2], ["a"]]}], "footer": {"primary": "启动"}}})"_json;
  const auto before = ubtest::compose_page(spec, "main", false);
  const PageData& d = before.composer->data();
  ASSERT_EQ(d.lists.size(), 2u);
  EXPECT_EQ(d.lists[0], (ListData{"Programs", {{"快洗", "", "", false}, {"羊毛", "40", "", false}}}));
  EXPECT_EQ(d.lists[1], (ListData{"ListItem2", {}}));
  EXPECT_EQ(d.wheels, (std::vector<WheelData>{{"WheelPicker3", {{"1", "2"}, {"a"}}}}));

  spec["page"]["blocks"].insert(spec["page"]["blocks"].begin(), R"({"type": "banner", "text": "新"})"_json);
  const auto after = ubtest::compose_page(spec, "main", false);
  EXPECT_EQ(after.composer->data().lists[0], d.lists[0]);           // named: the same names
  EXPECT_EQ(after.composer->data().lists[1].base, "ListItem3");     // numbered: moves with its number
}
