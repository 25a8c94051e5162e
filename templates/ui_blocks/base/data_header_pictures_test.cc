#include "base/data_header_pictures.h"

#include <gtest/gtest.h>

namespace {

TEST(DataHeaderPictures, TakesTheQuotedPictureNamesOnly) {
  const std::string text =
      "static const ListRow kRows[] = {\n"
      "    {\"快洗\", \"0:15\", \"ic_flash_24.png\", true},\n"
      "    {\"a.png\", \"\", \"\", false},\n"
      "    {\"x\", \"y\", \"ic_fan_24_2.png\", true},\n"
      "};\n// not a literal: ic_other.png\n\"dir/ic_x.png\"\n";
  EXPECT_EQ(ub::pictures_in_data_header(text),
            (std::set<std::string>{"a.png", "ic_flash_24.png", "ic_fan_24_2.png"}));
  EXPECT_TRUE(ub::pictures_in_data_header("").empty());
  EXPECT_TRUE(ub::data_header_pictures("/nonexistent/project").empty());
}

}  // namespace
