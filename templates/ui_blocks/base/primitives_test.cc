#include "base/primitives.h"

#include <gtest/gtest.h>

using namespace ub;

// Halfway values go to the even multiple of 4, not always up; nothing goes below 4.
TEST(Primitives, GridRounding) {
  for (auto [v, want] : std::vector<std::pair<double, int>>{{1.9, 4}, {-8, 4}, {6, 8}, {10, 8}, {14, 16}, {42, 40}})
    EXPECT_EQ(r4(v), want) << v;
  for (auto [v, want] : std::vector<std::pair<double, int>>{{0, 4}, {4.1, 8}, {42, 44}, {44, 44}, {-20, 4}})
    EXPECT_EQ(r4up(v), want) << v;
}

TEST(Primitives, PickTieKeepsFirstEntryAndLimits) {
  EXPECT_EQ(pick(15, 12, 40, {14, 16}), 14);
  EXPECT_EQ(pick(15, 12, 40, {16, 14}), 16);
  EXPECT_EQ(pick(30, 12, 20, {14, 16, 28}), 20);  // above hi
  EXPECT_EQ(pick(10, 13, 40, {12, 14}), 13);      // lo need not be on the ladder
  EXPECT_EQ(pick(30, 25, 20, {28}), 25);          // lo wins over hi
  EXPECT_THROW(pick(15, 12, 40, {}), InputError);
}

TEST(Primitives, ColourReadings) {
  EXPECT_EQ(colour_channels("#112233"), (std::array<int, 4>{17, 34, 51, 255}));
  EXPECT_EQ(colour_channels("#11223344"), (std::array<int, 4>{17, 34, 51, 68}));
  EXPECT_EQ(colour_channels("##112233", 102), (std::array<int, 4>{17, 34, 51, 102}));
  EXPECT_EQ(colour_channels("#1122334455"), (std::array<int, 4>{17, 34, 51, 68}));  // trailing digits ignored
  EXPECT_THROW(colour_channels("#1122"), InputError);
  EXPECT_THROW(colour_channels("#11zz33"), InputError);
  EXPECT_EQ(hex2int("#112233"), 0x112233);
  EXPECT_EQ(hex2int("#11223344"), 0x44112233);
  EXPECT_EQ(hex2int("#1122334"), 0x112233);  // other lengths: first six digits
  EXPECT_EQ(hex2int("#abc"), 0xabc);
  EXPECT_THROW(hex2int("#"), InputError);
}

TEST(Primitives, TextEstimate) {
  EXPECT_EQ(text_min_size("", 24, 37), std::make_pair(0, 0));
  EXPECT_EQ(text_min_size("A", 10, 38), std::make_pair(22, 12));
  EXPECT_EQ(text_min_size("A", 10, 37), std::make_pair(30, 12));
  // Chinese weighs 1.0: 2 * 20 * 1.1 = 44 + 16 + 8.
  EXPECT_EQ(text_min_size("设置", 20, 36).first, 68);
  // Blank and punctuation weigh 0.6, brackets 0.55: (0.6 + 0.55) * 20 * 1.1 = 25.3.
  EXPECT_EQ(text_min_size(" (", 20, 38).first, 41);
  // Accented Latin, Greek, Cyrillic and a circled digit below the wide range weigh 0.55.
  for (const char* s : {"é", "Ж", "①", "½"}) EXPECT_EQ(text_min_size(s, 20, 38).first, 28) << s;
  // A symbol below the wide range weighs 0.6: 13.2 -> 13.
  for (const char* s : {"℃", "€"}) EXPECT_EQ(text_min_size(s, 20, 38).first, 29) << s;
  // The wide range starts above U+2E7F.
  EXPECT_EQ(text_min_size("\u2E80", 20, 38).first, 38);
}

TEST(Primitives, RowFieldSkipsOnlyAbsentNullAndEmptyText) {
  Json row = Json::parse(R"({"title": "", "label": "Wi-Fi", "value": 0, "flag": false, "none": null})");
  EXPECT_EQ(row_field(row, {"title", "label"}), "Wi-Fi");
  EXPECT_EQ(row_field(row, {"value"}), "0");
  EXPECT_EQ(row_field(row, {"none", "flag"}), "False");
  EXPECT_EQ(row_field(Json::parse(R"({"value": 2.5})"), {"value"}), "2.5");
}
