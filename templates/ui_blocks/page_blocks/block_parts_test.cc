#include "page_blocks/block_parts.h"

#include <gtest/gtest.h>

namespace {

TEST(SplitColumns, LastColumnTakesTheRemainderAndEndsOnTheEdge) {
  EXPECT_EQ(ub::split_columns(101, 2).widths, (std::vector<int>{50, 51}));
  EXPECT_EQ(ub::split_columns(800, 3).widths, (std::vector<int>{266, 266, 268}));
  EXPECT_EQ(ub::split_columns(100, 3).widths, (std::vector<int>{33, 33, 34}));
  // A span of 300 less two gaps of 8, as keypad and gallery lay out their columns.
  auto c = ub::split_columns(300 - 2 * 8, 3, 8);
  EXPECT_EQ(c.widths, (std::vector<int>{94, 94, 96}));
  EXPECT_EQ(c.lefts, (std::vector<int>{0, 102, 204}));
  EXPECT_EQ(c.min_width(), 94);
}

}  // namespace
