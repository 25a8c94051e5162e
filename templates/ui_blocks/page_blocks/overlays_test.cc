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
