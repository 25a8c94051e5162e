#include "block_test_util.h"
#include "kinds/kinds_testing.h"

namespace {

using namespace pbtest;

// Pills sit side by side with the spacer between them and take a new line when the next
// would pass the content's right edge; each looks as a status_pill of its text does.
TEST(PillRow, PillsWrapAtTheContentWidth) {
  auto c = bench(480, 272);
  const auto& m = c->m;
  Json pills = Json::array();
  for (int i = 0; i < 9; ++i) pills.push_back({{"text", ub::cat("状态", i)}, {"state", i % 2 ? "warn" : "ok"}});
  ub::NodeList content;
  const int bottom = build_pill_row(c->bd, named({{"type", "pill_row"}, {"pills", pills}}, 2), content, m.margin, 0);
  const auto& kids = content[0]->children;
  ASSERT_EQ(kids.size(), 18u);
  int lines = 1;
  for (size_t i = 0; i < kids.size(); i += 2) {
    const ub::Node& bg = *kids[i];
    EXPECT_LE(bg.pos.left + bg.pos.width, m.content_w);
    if (i > 0) {
      const ub::Node& before = *kids[i - 2];
      if (bg.pos.top == before.pos.top) {
        EXPECT_EQ(bg.pos.left, before.pos.left + before.pos.width + m.spacer);
      } else {
        // It did not fit beside the one before.
        EXPECT_GT(before.pos.left + before.pos.width + m.spacer + bg.pos.width, m.content_w);
        EXPECT_EQ(bg.pos.left, 0);
        EXPECT_EQ(bg.pos.top, before.pos.top + m.pill_h + m.spacer);
        ++lines;
      }
    }
  }
  EXPECT_GE(lines, 2);
  EXPECT_EQ(bottom, lines * m.pill_h + (lines - 1) * m.spacer);
  EXPECT_EQ(kids[1]->caption, "PillRow2Item1Text");
  EXPECT_EQ(color0(*kids[3]), c->ctx.col("warn"));

  // The same capsule and picture as a status pill of the same text and state.
  ub::NodeList single;
  build_pill(c->bd, named({{"type", "status_pill"}, {"state", "warn"}, {"text", "状态1"}}, 3), single, m.margin, 0);
  EXPECT_EQ(bg_name(*single[0]->children[0]), bg_name(*kids[2]));
  EXPECT_EQ(single[0]->pos.width, kids[2]->pos.width);
}

TEST(PillRow, EmptyOrUnknownStateIsRefused) {
  EXPECT_NE(ub::refusal_of(Json::parse(R"([{"type": "pill_row", "pills": []}])")).find("page.blocks[0].pills"),
            std::string::npos);
  EXPECT_NE(ub::refusal_of(Json::parse(R"([{"type": "pill_row", "pills": [{"text": "a", "state": "odd"}]}])"))
                .find("[X] 未知语义状态：odd"),
            std::string::npos);
}

}  // namespace
