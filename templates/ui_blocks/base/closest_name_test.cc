#include "base/closest_name.h"

#include <gtest/gtest.h>

using namespace ub;

TEST(ClosestName, EditDistance) {
  const struct {
    const char *a, *b;
    size_t d;
  } cases[] = {{"", "", 0},          {"", "abc", 3},         {"label", "label", 0}, {"lable", "label", 1},
               {"lbel", "label", 1}, {"labell", "label", 1}, {"kitten", "sitting", 3}, {"标签", "标题", 1}};
  for (const auto& c : cases) {
    EXPECT_EQ(edit_distance(c.a, c.b), c.d) << c.a << " / " << c.b;
    EXPECT_EQ(edit_distance(c.b, c.a), c.d) << c.b << " / " << c.a;
  }
}

TEST(ClosestName, SuggestsOnlyWhatIsClose) {
  const std::vector<std::string> keys = {"label", "value", "icon", "toggle_row", "setting_row"};
  EXPECT_EQ(closest_name("lable", keys), "label");
  EXPECT_EQ(closest_name("togle_rw", keys), "toggle_row");
  EXPECT_EQ(closest_name("ikon", keys), "icon");
  EXPECT_EQ(closest_name("colour", keys), std::nullopt);  // nothing within two edits
  EXPECT_EQ(closest_name("label", keys), std::nullopt);   // known names are not misspelt
  EXPECT_EQ(closest_name("x", {}), std::nullopt);
  EXPECT_EQ(closest_name("颜色", {"on", "text"}), std::nullopt);  // every code point replaced
  EXPECT_EQ(closest_name("onn", {"on", "text"}), "on");
  EXPECT_EQ(closest_name("vale", {"value", "vale_"}), "value");  // ties: the first
}
