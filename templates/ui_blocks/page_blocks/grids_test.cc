#include "block_test_util.h"

namespace {

using namespace pbtest;

TEST(Grid, ShortLastRowAndTilesCentredInTheirSlots) {
  auto c = composer(970, 600);
  const auto& m = c->m;
  ASSERT_NE(m.content_w % 4, 0);  // a real remainder for the last column
  ub::NodeList content;
  Json items = {"a", "b", {{"text", "c"}, {"icon", "wifi"}}, "d", "e", "f", "g"};
  const int gh = 2 * m.grid_tile_h + m.grid_row_gap;
  EXPECT_EQ(c->build_grid(named({{"type", "grid_icons"}, {"items", items}, {"cols", 0}}, 2), content, m.margin, 0), gh);
  EXPECT_EQ(content[0]->children.size(), 7u * 4);  // not tappable: no buttons

  const int base = m.content_w / 4, last = m.content_w - 3 * base, tw = std::max(last - m.grid_gap, 8);
  const auto tile4 = must_find(content, "GridIcons2Cell4Bg");
  EXPECT_EQ(ltwh(*tile4), std::make_tuple(3 * base + (last - tw) / 2, 0, tw, m.grid_tile_h));
  EXPECT_EQ(bg_name(*tile4), ub::cat("gtile_", tw, "x", m.grid_tile_h, ".png"));
  EXPECT_EQ(must_find(content, "GridIcons2Cell5Bg")->pos.top, m.grid_tile_h + m.grid_row_gap);
  EXPECT_EQ(bg_name(*must_find(content, "GridIcons2Cell3Icon")), ub::cat("ic_wifi_", m.grid_ic, ".png"));
}

TEST(Grid, TappableButtonsComeAfterEveryDecoration) {
  auto c = composer(800, 480);
  ub::NodeList content;
  c->build_grid(named({{"items", {"a", "b", "c"}}, {"cols", "3"}, {"tappable", true}}, 1), content, 0, 0);
  const auto caps = captions(content[0]->children);
  ASSERT_EQ(caps.size(), 15u);
  EXPECT_EQ(std::vector<std::string>(caps.end() - 3, caps.end()),
            (std::vector<std::string>{"GridIcons1Cell1", "GridIcons1Cell2", "GridIcons1Cell3"}));
  EXPECT_EQ(ltwh(*content[0]->children[12]), ltwh(*content[0]->children[0]));  // the tile, not the slot
}

TEST(Gallery, ColumnsCountLineAndTitle) {
  auto c = composer(800, 480);
  const auto& m = c->m;
  ASSERT_NE((m.content_w - 2 * m.grid_gap) % 3, 0);
  ub::NodeList content;
  Json blk = {{"title", "相册"}, {"rows", -3}, {"count", 0}, {"icon", "camera"}, {"tappable", 1}};
  const int end = c->build_gallery(named(blk, 3), content, m.margin, 20);
  const auto& win = *content[0];
  EXPECT_EQ(end, 20 + win.pos.height);
  const int base = (m.content_w - 2 * m.grid_gap) / 3;
  const auto t3 = must_find(content, "ImageGallery3Thumb3Bg");
  EXPECT_EQ(t3->pos.left, 2 * (base + m.grid_gap));
  EXPECT_EQ(t3->pos.left + t3->pos.width, m.content_w);
  EXPECT_EQ(t3->pos.top, m.h_b1 + m.spacer1);
  EXPECT_EQ(must_find(content, "ImageGallery3Count")->payload["text"], "共 3 张");  // rows -3 gives 1
  EXPECT_EQ(captions(win.children).front(), "ImageGallery3Title");
  EXPECT_EQ(captions(win.children).back(), "ImageGallery3Thumb3");
  const auto icon = must_find(content, "ImageGallery3Thumb1Icon");
  EXPECT_EQ(bg_name(*icon).rfind("ic_photo_", 0), 0u);
  EXPECT_EQ(c->assets.at(bg_name(*icon)).g, "camera");

  content.clear();
  c->build_gallery(named({{"countText", "全部"}, {"rows", 0}}, 4), content, 0, 0);
  EXPECT_EQ(must_find(content, "ImageGallery4Count")->payload["text"], "全部");
  EXPECT_EQ(must_find(content, "ImageGallery4Thumb1Bg")->pos.top, 0);
  EXPECT_NE(find(content, "ImageGallery4Thumb6Bg"), nullptr);
}

TEST(Keypad, DefaultTableWithBrandConfirmKey) {
  auto c = composer(1024, 600);
  const auto& m = c->m;
  ASSERT_NE((m.content_w - 2 * m.key_gap) % 3, 0);
  ub::NodeList content;
  const int end = c->build_keypad(named({{"type", "keypad"}, {"display", "123"}}, 8), content, m.margin, 0);
  ASSERT_EQ(content.size(), 2u);
  EXPECT_EQ(content[0]->caption, "Keypad8Display");  // outside the window, before it
  EXPECT_EQ(content[1]->pos.top, m.h_b1 + m.spacer1);
  EXPECT_EQ(end, content[1]->pos.top + content[1]->pos.height);

  const auto face12 = must_find(content, "Keypad8Key12Face"), face10 = must_find(content, "Keypad8Key10Face");
  EXPECT_EQ(bg_name(*face12).rfind("keybrand_", 0), 0u);
  EXPECT_EQ(c->assets.at(bg_name(*face12)).fill, c->tcol("brand"));
  EXPECT_EQ(bg_name(*face10).rfind("key_", 0), 0u);
  EXPECT_EQ(c->assets.at(bg_name(*must_find(content, "Keypad8Key10Icon"))).g, "arrow-left");
  EXPECT_EQ(must_find(content, "Keypad8Key11")->payload["text"], "0");

  const int slot = m.content_w - 2 * m.key_gap, base = slot / 3;
  const auto k3 = must_find(content, "Keypad8Key3");
  EXPECT_EQ(ltwh(*k3), std::make_tuple(2 * (base + m.key_gap), 0, slot - 2 * base, k3->pos.height));
  EXPECT_EQ(captions(content[1]->children)[14], "Keypad8Key1");  // 12 faces and 2 icons first

  // Nine plain values make three rows of text keys.
  content.clear();
  c->build_keypad(named({{"items", {1, 2, 3, 4, 5, 6, 7, 8, 9}}}, 1), content, 0, 0);
  EXPECT_EQ(content[0]->children.size(), 18u);
  EXPECT_EQ(content[0]->pos.height, 3 * k3->pos.height + 2 * m.key_gap);
}

}  // namespace
