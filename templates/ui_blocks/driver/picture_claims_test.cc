#include "driver/picture_claims.h"

#include <gtest/gtest.h>

using namespace ub;

namespace {
using Names = std::map<std::string, std::string>;
}

TEST(PictureClaims, SamePicturesAreSharedAndTheFirstPageKeepsAName) {
  std::vector<PagePictures> pages = {{"a", {{"card.png", "1"}, {"dot.png", "2"}}, {}},
                                     {"b", {{"card.png", "1"}, {"dot.png", "9"}}, {}},
                                     {"c", {{"dot.png", "9"}, {"x", "3"}}, {}}};
  const std::vector<Clash> clashes = assign_picture_names(pages);
  EXPECT_EQ(pages[0].renamed, Names{});
  EXPECT_EQ(pages[1].renamed, (Names{{"dot.png", "dot_2.png"}}));
  // A later page with the same different picture shares the name already given to it.
  EXPECT_EQ(pages[2].renamed, (Names{{"dot.png", "dot_2.png"}}));
  ASSERT_EQ(clashes.size(), 2u);
  EXPECT_EQ(std::tie(clashes[0].picture, clashes[0].first_page, clashes[0].page, clashes[0].written_as),
            std::tuple("dot.png", "a", "b", "dot_2.png"));
}

TEST(PictureClaims, ANewNameIsNeitherTakenNorOneThePageDrawsItself) {
  std::vector<PagePictures> pages = {{"a", {{"dot.png", "1"}, {"dot_2.png", "2"}}, {}},
                                     {"b", {{"dot.png", "7"}, {"dot_3.png", "8"}}, {}}};
  assign_picture_names(pages);
  EXPECT_EQ(pages[1].renamed, (Names{{"dot.png", "dot_4.png"}}));
  EXPECT_EQ(numbered_name("noext", 2), "noext_2");
}

TEST(PictureClaims, LayoutReferencesAreRenamedAndNothingElse) {
  const std::string layout =
      "{\n  \"text__1\": {\n    \"backgroundPic\": \"images/dot.png\",\n    \"txt\": \"dot.png\"\n  },\n"
      "  \"list__1\": {\n    \"picTab\": {\n      \"pic0\": \"images/dot.png\",\n      \"pic1\": \"images/card.png\"\n    }\n  }\n}\n";
  EXPECT_EQ(renamed_layout(layout, {{"dot.png", "dot_2.png"}}),
            "{\n  \"text__1\": {\n    \"backgroundPic\": \"images/dot_2.png\",\n    \"txt\": \"dot.png\"\n  },\n"
            "  \"list__1\": {\n    \"picTab\": {\n      \"pic0\": \"images/dot_2.png\",\n      \"pic1\": \"images/card.png\"\n    }\n  }\n}\n");
}
