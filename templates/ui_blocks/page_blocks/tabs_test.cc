#include "block_test_util.h"

namespace {

using namespace pbtest;

// A false selection is the first tab; true is no number.
TEST(Tabs, FalseSelectsTheFirstTabTrueIsRefused) {
  auto c = bench(800, 480);
  ub::NodeList content;
  build_tabs(c->bd, named({{"type", "tabs"}, {"items", {"a", "b"}}, {"selected", false}}, 5), content, 16, 0);
  EXPECT_EQ(must_find(content, "TabsIndicator5")->pos.left, 0);
  EXPECT_THROW(build_tabs(c->bd, named({{"type", "tabs"}, {"items", {"a", "b"}}, {"selected", true}}, 6), content, 0, 0), ub::InputError);
}

}  // namespace
