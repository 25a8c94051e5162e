#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "page/flow.h"
#include "page_bench.h"
#include "page_blocks/page_blocks.h"
#include "rows/rows.h"

namespace fs = std::filesystem;
using namespace ub;

namespace {

Json parse(const char* s) { return Json::parse(s); }

std::string stop_of(Json spec, const Installation& inst = ubtest::installation()) {
  try {
    ubtest::composer(spec, "main", inst)->run();
  } catch (const StopError& e) {
    return e.what();
  }
  return "(no stop)";
}

bool has_note(const Notes& notes, const std::string& part) {
  for (const auto& n : notes.all())
    if (n.find(part) != std::string::npos) return true;
  return false;
}

}  // namespace

TEST(Flow, ScrollDecisionAtTheViewportBoundary) {
  ubtest::PageBench c(ubtest::page_spec(800, 480), "my_page2x");
  const int vp = c.m.viewport;
  auto content = [&] {
    NodeList l;
    l.push_back(make_node("window", "Box", Pos{16, 0, 100, 10}, Json::object(),
                          NodeList{make_node("textview", "Inner", Pos{0, 4, 10, 4})}));
    return l;
  };
  // Equal height: no scroll layer; only the top level moves under the title band.
  NodeList flat = content();
  NodeList body = place_content(c.bd, flat, vp);
  ASSERT_EQ(body.size(), 1u);
  EXPECT_EQ(body[0]->pos.top, c.m.bar_top);
  EXPECT_EQ(body[0]->children[0]->pos.top, 4);
  // One pixel more: scroll window over a window holding the content, captions in title case.
  NodeList tall = content();
  body = place_content(c.bd, tall, vp + 1);
  ASSERT_EQ(body.size(), 1u);
  const Node& view = *body[0];
  EXPECT_EQ(std::tie(view.type, view.caption, view.pos.top, view.pos.height),
            std::tuple("scrollwindow", "ScrollMy_Page2X", c.m.bar_top, vp));
  EXPECT_EQ(view.payload.to_json()["dragMaxDis"], c.m.drag_max);
  ASSERT_EQ(view.children.size(), 1u);
  EXPECT_EQ(view.children[0]->caption, "WindowMy_Page2X");
  EXPECT_EQ(view.children[0]->pos.height, vp + 1);
  EXPECT_EQ(view.children[0]->children[0]->pos.top, 0);
  EXPECT_TRUE(has_note(c.notes, "（行程 1 px，dragMaxDis="));
}

TEST(Flow, ToolbarRaisesTheBandAndNavigationShrinksTheViewportOnce) {
  Json spec = ubtest::page_spec(800, 480, parse(R"([
    {"type": "toolbar"},
    {"type": "bottom_nav", "items": ["a", "b", "c"]},
    {"type": "bottom_nav", "items": ["d", "e", "f"]}
  ])"));
  spec["page"]["subtitle"] = "sub";
  auto c = ubtest::composer(spec);
  const Metrics plain = build_metrics(800, 480, c->context().tok);
  const Metrics& m = c->context().m;
  // The bands are settled with the page context; the run leaves them as they are.
  const std::pair bands{m.bar_top, m.viewport};
  c->run();
  EXPECT_EQ(std::pair(m.bar_top, m.viewport), bands);
  EXPECT_EQ(m.bar_top, std::max(plain.tb_h, plain.bar_top));
  EXPECT_EQ(m.viewport, std::max(std::max(plain.content_bottom - m.bar_top, 40) - plain.nav_h, 40));
  EXPECT_FALSE(c->page()["blocks"][0].contains("title"));  // nothing is written into the page
  const Json doc = c->document();
  EXPECT_EQ(doc["window__1"]["textview__2"]["caption"], "Toolbar1Title");
  EXPECT_EQ(doc["window__1"]["textview__2"]["text"], "设置");  // the toolbar takes page.title
  EXPECT_TRUE(has_note(c->notes(), "page.subtitle 忽略"));
  std::string captions;
  for (const auto& n : c->root()) captions += n->caption + " ";
  EXPECT_EQ(captions, "Toolbar1 BottomNav2 BottomNav3 FooterBg4 ButtonPrimary4 ");
}

TEST(Flow, BandConflictsAndMissingBands) {
  EXPECT_EQ(stop_of(ubtest::page_spec(800, 480, parse(R"([{"type": "toolbar"}, {"type": "toolbar"}])"))),
            "[X] toolbar 只能出现一次（一页一条顶部工具条）\n  at page.blocks[1] (toolbar Toolbar2)");
  EXPECT_EQ(stop_of(ubtest::page_spec(800, 480, parse(R"([{"type": "page_title"}, {"type": "page_title"}])"))),
            "[X] page_title 只能出现一次\n  at page.blocks[1] (page_title Title2)");
  EXPECT_EQ(stop_of(ubtest::page_spec(800, 480, parse(R"([{"type": "toolbar"}, {"type": "page_title"}])"))),
            "[X] 同页既有 toolbar 又有 page_title（两者争同一条固定带）——二选一：要返回/动作就留 toolbar，否则留 "
            "page_title");
  Json no_title = ubtest::page_spec(800, 480);
  no_title["page"].erase("title");
  EXPECT_EQ(stop_of(no_title),
            "[X] 缺标题：给 page.title（+ page.subtitle）、一个 page_title 块，或一个 toolbar 块——顶部固定带高靠它定");
  Json no_footer = ubtest::page_spec(800, 480);
  no_footer["page"].erase("footer");
  EXPECT_EQ(stop_of(no_footer), "[X] 缺 bottom_actions（底部固定带必须有，否则视口高度没法定）");
  EXPECT_EQ(stop_of(Json{{"resolution", {{"width", 320}, {"height", 240}}}}).rfind("[X] 缺标题", 0), 0u);
}

TEST(Flow, BlocksWinOverPageKeys) {
  Json spec = ubtest::page_spec(800, 480, parse(R"([
    {"type": "page_title", "title": "块标题"},
    {"type": "bottom_actions", "primary": "好"}
  ])"));
  Json doc = ubtest::composer(spec)->document();
  EXPECT_EQ(doc["textview__1"]["text"], "块标题");
  EXPECT_EQ(doc["button__1"]["caption"], "ButtonPrimary2");
  EXPECT_EQ(doc["button__1"]["text"], "好");
}

TEST(Flow, UnknownTypeWinsOverMissingTitle) {
  Json spec = ubtest::page_spec(800, 480, parse(R"([{"type": "setting_row", "label": "a"}, {"type": "carousel"}])"));
  spec["page"].erase("title");
  EXPECT_EQ(stop_of(spec).rfind("[X] 未知块类型：carousel（可用：", 0), 0u);
  spec["page"]["blocks"][1].erase("type");
  EXPECT_EQ(stop_of(spec).rfind("[X] 未知块类型：None（可用：", 0), 0u);
}

TEST(Flow, LibraryTypeWithoutBuilderStops) {
  const std::string dir = ubtest::temp_dir("lib");
  const std::string src = ubtest::source_dir() + "/templates/ui_blocks/blocks";
  for (const auto& e : fs::directory_iterator(src)) fs::copy_file(e.path(), dir + "/" + e.path().filename().string());
  std::ofstream(dir + "/carousel.json") << R"({"type": "carousel"})";
  const std::string msg =
      stop_of(ubtest::page_spec(800, 480, parse(R"([{"type": "carousel"}])")), ubtest::installation_of(dir));
  fs::remove_all(dir);
  EXPECT_EQ(msg, "[X] 块 carousel 没有 builder\n  at page.blocks[0] (carousel Block1)");
}

TEST(Flow, GapsOnlyBeforeGroupsAfterContent) {
  // No gap at y 0 or before rows and empty states; a section header after content gets one.
  Json spec = ubtest::page_spec(800, 480, parse(R"([
    {"type": "section_header", "text": "A"},
    {"type": "setting_row", "label": "r1"},
    {"type": "setting_row", "label": "r2"},
    {"type": "empty_state", "text": "空"},
    {"type": "section_header", "text": "B"}
  ])"));
  ubtest::PageBench probe(spec);
  probe.scan();
  NodeList scratch;
  int y = build_section(probe.bd, probe.block(0), scratch, probe.m.margin, 0);
  y += 2 * probe.m.row_h;
  y = build_empty(probe.bd, probe.block(3), scratch, probe.m.margin, y);
  y = build_section(probe.bd, probe.block(4), scratch, probe.m.margin, y + probe.m.group_gap);

  auto c = ubtest::composer(spec);
  c->run();
  EXPECT_EQ(c->content_h(), y);
}
