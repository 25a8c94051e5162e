#include "block_test_util.h"
#include "kinds/kinds_testing.h"

namespace {

using namespace pbtest;

// Equal buttons over the content width, the spacer between them, the last one ending on
// the right edge; a style picks the picture and the text colour.
TEST(ButtonRow, EqualButtonsFillTheContentWidth) {
  for (auto [w, h] : {std::pair{320, 240}, {800, 480}, {1280, 800}}) {
    auto c = bench(w, h);
    const auto& m = c->m;
    for (int n = 1; n <= 4; ++n) {
      SCOPED_TRACE(ub::cat(w, "x", h, " n=", n));
      Json buttons = Json::array();
      for (int i = 0; i < n; ++i) buttons.push_back(ub::cat("键", i));
      buttons[0] = {{"text", "开始"}, {"style", "primary"}};
      ub::NodeList content;
      EXPECT_EQ(build_button_row(c->bd, named({{"type", "button_row"}, {"buttons", buttons}}, 3), content, m.margin, 10),
                10 + m.edit_h);
      const auto& kids = content[0]->children;
      ASSERT_EQ((int)kids.size(), n);
      EXPECT_EQ(content[0]->pos.width, m.content_w);
      for (int i = 0; i < n; ++i) {
        EXPECT_EQ(kids[i]->type, "button");
        EXPECT_EQ(kids[i]->caption, ub::cat("ButtonBar3Item", i + 1));
        EXPECT_LE(std::abs(kids[i]->pos.width - kids[0]->pos.width), n - 1);
        if (i > 0) { EXPECT_EQ(kids[i]->pos.left, kids[i - 1]->pos.left + kids[i - 1]->pos.width + m.spacer); }
      }
      EXPECT_EQ(kids.back()->pos.left + kids.back()->pos.width, m.content_w);
      EXPECT_EQ(color0(*kids[0]), c->ctx.col("onBrand"));
      EXPECT_EQ(c->pictures.all().at(bg_name(*kids[0])).fill, c->ctx.tcol("brand"));
      if (n > 1) { EXPECT_EQ(c->pictures.all().at(bg_name(*kids[1])).fill, c->ctx.tcol("brand1")); }
    }
  }
}

// Own names stand for the block's and the buttons' numbers; each button gets its callback.
TEST(ButtonRow, NamedButtonsGetTheirCallbacks) {
  Json spec = ubtest::page_spec(480, 272, Json::parse(R"([
    {"type": "button_row", "name": "Wash", "buttons": [{"text": "开始", "name": "Start"}, "暂停"]},
    {"type": "button_row", "buttons": ["确定"]}])"));
  const ubtest::Composed c = ubtest::compose_page(spec, "main", false);
  for (const char* cb : {"onButtonClick_ButtonBarWashStart", "onButtonClick_ButtonBarWashItem2",
                         "onButtonClick_ButtonBar2Item1"})
    EXPECT_NE(c.logic.find(cb), std::string::npos) << cb;
}

TEST(ButtonRow, BadButtonsAreRefusedAtTheirPlace) {
  const std::vector<std::pair<const char*, const char*>> cases = {
      {R"({"type": "button_row", "buttons": ["a", "b", "c", "d", "e"]})", "page.blocks[0].buttons"},
      {R"({"type": "button_row", "buttons": []})", "page.blocks[0].buttons"},
      {R"({"type": "button_row"})", "page.blocks[0].buttons"},
      {R"({"type": "button_row", "buttons": [{"text": "a", "style": "loud"}]})", "page.blocks[0].buttons[0].style"},
      {R"({"type": "button_row", "buttons": [{"text": "a", "name": "1x"}]})", "page.blocks[0].buttons[0].name"},
      {R"({"type": "button_row", "buttons": [{"text": "a", "name": "Item2"}, "b"]})",
       "page.blocks[0].buttons[1].name"},
  };
  for (const auto& [block, where] : cases) {
    SCOPED_TRACE(block);
    const std::string msg = ub::refusal_of(Json::array({Json::parse(block)}));
    EXPECT_NE(msg.find(where), std::string::npos) << msg;
  }
}

}  // namespace
