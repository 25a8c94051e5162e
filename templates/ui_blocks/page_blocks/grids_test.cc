#include "block_test_util.h"

namespace {

using namespace pbtest;

// 970 wide: the content width does not split into four, the last column takes the rest.
TEST(Grid, ShortLastRowAndTilesCentredInTheirSlots) {
  auto c = bench(970, 600);
  const auto& m = c->m;
  ASSERT_NE(m.content_w % 4, 0);
  ub::NodeList content;
  Json items = {"a", "b", "c", "d", "e", "f", "g"};
  const int gh = 2 * m.grid_tile_h + m.grid_row_gap;
  EXPECT_EQ(build_grid(c->bd, named({{"type", "grid_icons"}, {"items", items}, {"cols", 0}}, 2), content, m.margin, 0), gh);
  EXPECT_EQ(content[0]->children.size(), 7u * 4);  // not tappable: no buttons
  const int base = m.content_w / 4, last = m.content_w - 3 * base, tw = std::max(last - m.grid_gap, 8);
  EXPECT_EQ(ltwh(*must_find(content, "GridIcons2Cell4Bg")), std::make_tuple(3 * base + (last - tw) / 2, 0, tw, m.grid_tile_h));
}

TEST(Grid, TappableButtonsComeAfterEveryDecoration) {
  auto c = bench(800, 480);
  ub::NodeList content;
  build_grid(c->bd, named({{"type", "grid_icons"}, {"items", {"a", "b", "c"}}, {"cols", "3"}, {"tappable", true}}, 1), content, 0, 0);
  const auto caps = captions(content[0]->children);
  ASSERT_EQ(caps.size(), 15u);
  EXPECT_EQ(std::vector<std::string>(caps.end() - 3, caps.end()),
            (std::vector<std::string>{"GridIcons1Cell1", "GridIcons1Cell2", "GridIcons1Cell3"}));
  EXPECT_EQ(ltwh(*content[0]->children[12]), ltwh(*content[0]->children[0]));  // the tile, not the slot
}

TEST(Gallery, RowsCountAndIcon) {
  auto c = bench(800, 480);
  ub::NodeList content;
  build_gallery(c->bd, named({{"type", "image_gallery"}, {"rows", -3}, {"count", 0}, {"icon", "camera"}}, 3), content, 0, 0);
  EXPECT_EQ(must_find(content, "ImageGallery3Count")->payload.to_json()["text"], "共 3 张");  // rows -3 gives 1
  EXPECT_EQ(c->pictures.all().at(bg_name(*must_find(content, "ImageGallery3Thumb1Icon"))).g, "camera");
  build_gallery(c->bd, named({{"type", "image_gallery"}, {"countText", "全部"}, {"rows", 0}}, 4), content, 0, 0);
  EXPECT_EQ(must_find(content, "ImageGallery4Count")->payload.to_json()["text"], "全部");
  EXPECT_NE(find(content, "ImageGallery4Thumb6Bg"), nullptr);
}

TEST(Keypad, NinePlainValuesMakeThreeRowsOfTextKeys) {
  auto c = bench(1024, 600);
  ub::NodeList content;
  build_keypad(c->bd, named({{"type", "keypad"}, {"items", {1, 2, 3, 4, 5, 6, 7, 8, 9}}}, 1), content, 0, 0);
  EXPECT_EQ(content[0]->children.size(), 18u);
  const int key_h = must_find(content, "Keypad1Key1")->pos.height;
  EXPECT_EQ(content[0]->pos.height, 3 * key_h + 2 * c->m.key_gap);
}

}  // namespace
