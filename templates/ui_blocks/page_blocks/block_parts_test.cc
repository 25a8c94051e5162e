#include "page_blocks/block_parts.h"

#include <gtest/gtest.h>

namespace {

using ub::split_columns;

TEST(SplitColumns, LastColumnTakesTheRemainder) {
  auto two = split_columns(101, 2);
  EXPECT_EQ(two.widths, (std::vector<int>{50, 51}));
  EXPECT_EQ(two.lefts, (std::vector<int>{0, 50}));

  auto three = split_columns(800, 3);
  EXPECT_EQ(three.widths, (std::vector<int>{266, 266, 268}));
  EXPECT_EQ(three.lefts.back() + three.widths.back(), 800);

  auto chart_slots = split_columns(100, 3);
  EXPECT_EQ(chart_slots.widths, (std::vector<int>{33, 33, 34}));
}

TEST(SplitColumns, GapsStepTheLeftsAndTheLastEndsOnTheEdge) {
  // A span of 310 less two gaps of 8, as the keypad and gallery lay out their columns.
  auto c = split_columns(310 - 2 * 8, 3, 8);
  EXPECT_EQ(c.widths, (std::vector<int>{98, 98, 98}));
  EXPECT_EQ(c.lefts, (std::vector<int>{0, 106, 212}));
  auto odd = split_columns(300 - 2 * 8, 3, 8);
  EXPECT_EQ(odd.widths, (std::vector<int>{94, 94, 96}));
  EXPECT_EQ(odd.lefts.back() + odd.widths.back(), 300);
  EXPECT_EQ(odd.min_width(), 94);
}

TEST(BlockParts, EntriesAndLists) {
  EXPECT_EQ(ub::entry_map(Json(7), "text"), (Json{{"text", "7"}}));
  Json m = {{"icon", "x"}};
  EXPECT_EQ(ub::entry_map(m, "text"), m);
  EXPECT_FALSE(ub::entry_state(Json{{"state", nullptr}}).has_value());
  EXPECT_EQ(ub::entry_state(Json{{"state", ""}}), std::optional<std::string>(""));

  EXPECT_TRUE(ub::list_or_empty(Json{{"items", 0}}, "items", "x").empty());
  EXPECT_THROW(ub::list_or_empty(Json{{"items", "abc"}}, "items", "x"), ub::InputError);
  EXPECT_THROW(ub::list_or_empty(Json{{"items", {{"a", 1}}}}, "items", "x"), ub::InputError);
}

}  // namespace
