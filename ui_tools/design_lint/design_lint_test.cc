#include "design_lint/design_lint.h"

#include <gtest/gtest.h>

#include "base/values.h"
#include "json2img/layout_reader.h"

namespace {

using gen_res::Image;
using gen_res::Rgba;

Json box(int l, int t, int w, int h) { return {{"left", l}, {"top", t}, {"width", w}, {"height", h}}; }

// A 320x240 page on a white ground with the given controls at root level.
layout::Layout page(const Json& controls) {
  Json doc = {{"id", 0}, {"position", box(0, 0, 320, 240)}, {"resolution", {{"width", 320}, {"height", 240}}},
              {"backgroundColor", 0xFFFFFF}};
  for (auto& [k, v] : controls.items()) doc[k] = v;
  return layout::read_layout_text(doc.dump());
}

Json button(const std::string& cap, Json pos) {
  return {{"id", 20001}, {"caption", cap}, {"position", pos}, {"touchable", true}, {"text", ""}};
}

Json label(const std::string& cap, Json pos, int color, int fs = 16, bool bold = false) {
  return {{"id", 50001}, {"caption", cap}, {"position", pos}, {"colorTab", {{"color0", color}}},
          {"fontSize", fs}, {"bold", bold}, {"text", "Abc"}, {"touchable", false}};
}

Json decoration(const std::string& cap, Json pos, const std::string& pic) {
  return {{"id", 50002}, {"caption", cap}, {"position", pos}, {"text", ""}, {"touchable", false},
          {"backgroundPic", pic}};
}

TEST(DesignLint, TouchTargetsBelowTouchMinOnEitherSide) {
  layout::Layout lay = page({{"button__1", button("Small", box(0, 0, 64, 16))},
                             {"button__2", button("Big", box(0, 40, 64, 32))},
                             {"button__3", button("Narrow", box(0, 80, 20, 100))},
                             {"textview__1", label("Label", box(0, 200, 10, 10), 0)},
                             {"window__1", {{"id", 110001}, {"caption", "Win"}, {"position", box(100, 0, 8, 8)}}}});
  lint::Settings s{32};
  auto found = lint::touch_findings(lay, s);
  ASSERT_EQ(found.size(), 2u);
  EXPECT_EQ(lay.controls[(size_t)found[0].control].caption, "Small");
  EXPECT_EQ(lay.controls[(size_t)found[1].control].caption, "Narrow");
  EXPECT_EQ(lint::detail(lay, found[0], s), "64x16 < touch_min 32 px");
  EXPECT_EQ(lint::summary_line(lay, lint::Kind::touch, found, s),
            "  [!] 触控目标小于 touch_min 32 px：2 处（例 Small 64x16）\n");
  // Without the token the rule is left out.
  EXPECT_TRUE(lint::touch_findings(lay, lint::Settings{}).empty());
  EXPECT_EQ(lint::summary_line(lay, lint::Kind::touch, {}, s), "");
}

TEST(DesignLint, TouchMinComesFromTheSizeTokens) {
  EXPECT_EQ(lint::settings_from_tokens(Json{{"size", {{"touch_min", 40}}}}).touch_min, 40);
  EXPECT_EQ(lint::settings_from_tokens(Json{{"size", {{"icon_min", 16}}}}).touch_min, 0);
  EXPECT_EQ(lint::settings_from_tokens(Json::object()).touch_min, 0);
}

TEST(DesignLint, ContrastRatioFollowsWcag) {
  EXPECT_DOUBLE_EQ(lint::contrast_ratio({0, 0, 0, 255}, {255, 255, 255, 255}), 21.0);
  EXPECT_DOUBLE_EQ(lint::contrast_ratio({10, 20, 30, 255}, {10, 20, 30, 255}), 1.0);
  // #767676 is the lightest grey that passes 4.5:1 on white, #777777 the first to fail.
  EXPECT_GE(lint::contrast_ratio({0x76, 0x76, 0x76, 255}, {255, 255, 255, 255}), 4.5);
  EXPECT_LT(lint::contrast_ratio({0x77, 0x77, 0x77, 255}, {255, 255, 255, 255}), 4.5);
}

TEST(DesignLint, LowContrastTextNeedsLessWhenLarge) {
  // #959595 on white is about 2.9:1: short of 3:1 too. #8C8C8C is about 3.4:1.
  layout::Layout lay = page({{"textview__1", label("Body", box(0, 0, 100, 20), 0x8C8C8C)},
                             {"textview__2", label("Large", box(0, 30, 100, 32), 0x8C8C8C, 24)},
                             {"textview__3", label("BoldLarge", box(0, 70, 100, 24), 0x8C8C8C, 19, true)},
                             {"textview__4", label("Faint", box(0, 100, 100, 32), 0x959595, 24)},
                             {"textview__5", label("Dark", box(0, 140, 100, 20), 0x1F2329)}});
  auto found = lint::contrast_findings(lay, nullptr);
  ASSERT_EQ(found.size(), 2u);
  EXPECT_EQ(lay.controls[(size_t)found[0].control].caption, "Body");
  EXPECT_EQ(found[0].need, 4.5);
  EXPECT_EQ(lay.controls[(size_t)found[1].control].caption, "Faint");
  EXPECT_EQ(found[1].need, 3.0);
  EXPECT_EQ(lint::detail(lay, found[0], lint::Settings{}),
            "100x20 文字「Abc」对比度 3.3:1 < 4.5:1（#8C8C8C 在 #FFFFFF 上）");
}

TEST(DesignLint, BackgroundIsThePictureOrFillDrawnBeneath) {
  Image dark(100, 40, Rgba{0x20, 0x20, 0x20, 255});
  Image clear(100, 40);  // transparent: what lies below shows
  lint::PictureSource pics = [&](std::string_view ref) -> const Image* {
    if (ref == "images/dark.png") return &dark;
    if (ref == "images/clear.png") return &clear;
    return nullptr;
  };
  // Light text on a dark tile passes; the same text beside the tile, on the white ground, fails.
  layout::Layout lay = page({{"textview__1", decoration("Tile", box(0, 0, 100, 40), "images/dark.png")},
                             {"textview__2", decoration("Glass", box(0, 0, 100, 40), "images/clear.png")},
                             {"textview__3", label("OnTile", box(0, 10, 100, 20), 0xEEEEEE)},
                             {"textview__4", label("OffTile", box(0, 100, 100, 20), 0xEEEEEE)}});
  EXPECT_EQ(lint::backdrop(lay, 2, 50, 20, pics), (Rgba{0x20, 0x20, 0x20, 255}));
  auto found = lint::contrast_findings(lay, pics);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(lay.controls[(size_t)found[0].control].caption, "OffTile");
  // A window's fill counts too, and a hidden overlay's fill only for its own texts.
  Json dialog = {{"id", 110001}, {"caption", "Dialog"}, {"position", box(0, 0, 320, 240)}, {"visible", false},
                 {"backgroundColor", 0x000000}};
  dialog["textview__2"] = label("DialogText", box(0, 0, 100, 20), 0x202020);
  layout::Layout with_dialog = page({{"textview__1", label("PageText", box(0, 100, 100, 20), 0x202020)},
                                     {"window__1", dialog}});
  found = lint::contrast_findings(with_dialog, pics);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(with_dialog.controls[(size_t)found[0].control].caption, "DialogText");
}

TEST(DesignLint, GlyphsMuchSmallerThanTheirBox) {
  auto glyph = [](int side, int ink) {
    Image img(side, side);
    const int o = (side - ink) / 2;
    for (int y = o; y < o + ink; ++y)
      for (int x = o; x < o + ink; ++x) img.at(x, y)[3] = 255;
    return img;
  };
  Image tiny = glyph(48, 20), full = glyph(48, 40), dot = glyph(8, 2), wrong = glyph(40, 10);
  lint::PictureSource pics = [&](std::string_view ref) -> const Image* {
    if (ref == "images/tiny.png") return &tiny;
    if (ref == "images/full.png") return &full;
    if (ref == "images/dot.png") return &dot;
    if (ref == "images/wrong.png") return &wrong;
    return nullptr;
  };
  layout::Layout lay = page({{"textview__1", decoration("TinyIcon", box(0, 0, 48, 48), "images/tiny.png")},
                             {"textview__2", decoration("FullIcon", box(50, 0, 48, 48), "images/full.png")},
                             {"textview__3", decoration("Dot", box(100, 0, 8, 8), "images/dot.png")},
                             {"textview__4", decoration("WrongSize", box(150, 0, 48, 48), "images/wrong.png")},
                             {"textview__5", decoration("Missing", box(200, 0, 48, 48), "images/none.png")}});
  auto found = lint::glyph_findings(lay, pics);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(lay.controls[(size_t)found[0].control].caption, "TinyIcon");
  EXPECT_EQ(found[0].ink, 20);
  EXPECT_EQ(lint::detail(lay, found[0], lint::Settings{}), "48x48 字形只有 20 px（41% < 55%）");
  EXPECT_EQ(lint::summary_line(lay, lint::Kind::glyph, found, lint::Settings{}),
            "  [!] 图标字形远小于盒（< 55%）：1 处（例 TinyIcon 48x48 字形 20 px）\n");
}

}  // namespace
