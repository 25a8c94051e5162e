#include "block_test_util.h"

namespace {

using namespace pbtest;

// On a 240-pixel-wide screen even 80% is too little: the panel is 200 wide.
TEST(Dialog, PanelIsAtLeast200Wide) {
  auto c = bench(240, 320);
  ub::NodeList root;
  build_dialog(c->bd, named({{"type", "dialog"}, {"visible", 1}}, 1), root);
  EXPECT_EQ(root[0]->children[1]->pos.width, 200);
  EXPECT_EQ(root[0]->payload.to_json()["visible"], true);
}

// A long text stops at 70% of the content width and is noted.
TEST(Toast, LongTextIsCutAtSeventyPercent) {
  auto c = bench(800, 480);
  ub::NodeList root;
  build_toast(c->bd, named({{"type", "toast"}, {"text", std::string(300, 'x')}}, 4), root);
  EXPECT_EQ(root[0]->children[0]->pos.width, ub::r4(c->m.content_w * 0.7));
  EXPECT_NE(c->notes.all().back().find("ToastText4(toast)"), std::string::npos);
}

}  // namespace

namespace {

// An input field between the body and the buttons: the panel grows by the field and a
// spacer, the field is an edit box with its callback, a password is masked.
TEST(Dialog, InputFieldGrowsThePanel) {
  auto c = bench(800, 480);
  const auto& m = c->m;
  ub::NodeList plain, with;
  build_dialog(c->bd, named({{"type", "dialog"}, {"title", "连接"}}, 1), plain);
  build_dialog(c->bd,
               named({{"type", "dialog"}, {"title", "连接"},
                      {"input", {{"kind", "password"}, {"placeholder", "密码"}, {"name", "Pwd"}}}},
                     2),
               with);
  const ub::Node& p0 = *plain[0]->children[1];
  const ub::Node& p1 = *with[0]->children[1];
  EXPECT_EQ(p1.pos.height, p0.pos.height + m.spacer + m.edit_h);
  const auto edit = must_find(with, "DialogInputPwd");
  EXPECT_EQ(edit->type, "edittext");
  const Json fields = edit->payload.to_json();
  EXPECT_EQ(fields["isPassword"], true);
  EXPECT_EQ(fields["hintText"], "密码");
  // Above the buttons, inside the panel's padding.
  const auto button = must_find(with, "DialogButtonPrimary2");
  EXPECT_EQ(edit->pos.top + edit->pos.height + m.spacer2, button->pos.top);
  EXPECT_EQ(edit->pos.left, m.spacer2);
  EXPECT_EQ(edit->pos.width, p1.pos.width - 2 * m.spacer2);
  EXPECT_EQ(find(plain, "DialogInput1"), nullptr);

  const ubtest::Composed page = ubtest::compose_page(
      ubtest::page_spec(480, 272, Json::parse(R"([{"type": "dialog", "input": {"placeholder": "名称"}}])")), "main",
      false);
  EXPECT_NE(page.logic.find("onEditTextChanged_DialogInput1"), std::string::npos);
}

TEST(Dialog, BadInputIsRefusedAtItsPlace) {
  for (const char* input : {R"("text")", R"({"kind": "pin"})", R"({"name": "a b"})"}) {
    SCOPED_TRACE(input);
    Json blk = {{"type", "dialog"}, {"input", Json::parse(input)}};
    ub::NodeList root;
    std::string msg;
    try {
      ubtest::composer(ubtest::page_spec(480, 272, Json::array({blk})))->layout();
    } catch (const std::runtime_error& e) {
      msg = e.what();
    }
    EXPECT_NE(msg.find("page.blocks[0].input"), std::string::npos) << msg;
  }
}

}  // namespace
