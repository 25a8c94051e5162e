#include <gtest/gtest.h>

#include "checks/geometry.h"

using namespace ub;

namespace {

NodePtr nd(const std::string& type, const std::string& cap, Pos p, NodeList kids = {}) {
  return make_node(type, cap, p, Json::object(), std::move(kids));
}

std::string stop_of(const std::function<void()>& f) {
  try {
    f();
  } catch (const StopError& e) {
    return e.what();
  }
  return "";
}

struct Geometry : ::testing::Test {
  const Json tokens = Json::object();
  const std::map<std::string, Json> library{};
  const iconlib::Index icons{};
  PageContext page{tokens, library, icons};
  Metrics& m = page.m;
  Notes notes;
  int content_h = 0;
  // Fixed bands: bar_top 68, viewport 356, content_bottom 424.
  void SetUp() override {
    page.page_name = "main";
    m.bar_top = 68;
    m.content_bottom = 424;
    m.viewport = 356;
  }
  void overlap(const NodeList& content, const NodeList& band) {
    assert_no_bar_overlap(m, content_h, {}, notes, content, band);
  }
};

}  // namespace

TEST_F(Geometry, TextFitNotesOnlyTooSmallBoxes) {
  check_text_fit(notes, page, "Lbl", "Wi-Fi", 18, 200, 24, "label");
  EXPECT_TRUE(notes.all().empty());
  // 设置中心: 4 * 20 * 1.1 = 88 + 16 (no alignment allowance), height 25.
  check_text_fit(notes, page, "Lbl", "设置中心", 20, 104, 25, "label");
  EXPECT_TRUE(notes.all().empty());
  check_text_fit(notes, page, "Lbl", "设置中心", 20, 103, 25, "value");
  check_text_fit(notes, page, "Lbl", "设置中心", 20, 104, 24, "value");
  ASSERT_EQ(notes.all().size(), 2u);
  EXPECT_EQ(notes.all()[0], "Lbl(value) 文本「设置中心」需 ≥104x25，盒 103x25 → 文案过长，请用 value_short 或缩短文案（main）");
  check_text_fit(notes, page, "Empty", "", 20, 0, 0, "value");  // the empty text needs 0x0
  EXPECT_EQ(notes.all().size(), 2u);
}

TEST_F(Geometry, ChildrenFitTheirContainer) {
  Node win;
  win.children = {nd("textview", "Full", {0, 0, 100, 50}), nd("textview", "Edge", {60, 10, 40, 40})};
  EXPECT_EQ(stop_of([&] { assert_children_fit(win, 100, 50, "Card1"); }), "");
  win.children.push_back(nd("textview", "Left", {-1, 0, 10, 10}));
  win.children.push_back(nd("button", "Wide", {10, 20, 100, 30}));
  win.children.push_back(nd("textview", "Deep", {0, 0, 10, 10}, {nd("textview", "Far", {500, 500, 10, 10})}));
  EXPECT_EQ(stop_of([&] { assert_children_fit(win, 100, 50, "Card1"); }),
            "[X] Card1 子节点越界（子节点坐标应为相对父容器）：Left(textview) -1,0 10x10 超出容器 100x50；"
            "Wide(button) 10,20 100x30 超出容器 100x50");
}

TEST(CollectRects, AbsoluteClippedRectangles) {
  auto below = nd("textview", "Below", {0, 200, 50, 20});
  auto inner_sw = nd("scrollwindow", "Inner", {20, 10, 100, 100}, {nd("textview", "Wide", {0, 0, 300, 40})});
  auto zero = nd("window", "Zero", {5, 5, 0, 10}, {nd("textview", "Kid", {1, 1, 2, 2})});
  auto sw = nd("scrollwindow", "Scroll", {0, 50, 200, 100}, {below, inner_sw, nd("textview", "Part", {150, 80, 100, 50})});
  auto rs = collect_rects({sw, zero});
  std::vector<std::string> caps;
  for (const auto& r : rs) caps.push_back(r.caption);
  EXPECT_EQ(caps, (std::vector<std::string>{"Scroll", "Inner", "Wide", "Part", "Kid"}));
  // Nested scroll windows clip to the intersection of both: (20..120, 60..160) ∩ (0..200, 50..150).
  EXPECT_EQ((std::array<int, 4>{rs[2].l, rs[2].t, rs[2].r, rs[2].b}), (std::array<int, 4>{20, 60, 120, 100}));
  EXPECT_EQ((std::array<int, 4>{rs[3].l, rs[3].t, rs[3].r, rs[3].b}), (std::array<int, 4>{150, 130, 200, 150}));
  EXPECT_EQ(rs[2].path, (std::vector<std::string>{"Scroll", "Inner", "Wide"}));
  EXPECT_FALSE(rs[0].leaf);
  EXPECT_TRUE(rs[3].leaf);
  // A zero-width window is absent, its child is offset by it.
  EXPECT_EQ(rs[4].l, 6);
  EXPECT_EQ(rs[4].path, (std::vector<std::string>{"Zero", "Kid"}));
  // A plain window does not clip.
  auto win = nd("window", "W", {0, 0, 10, 10}, {nd("textview", "Out", {0, 20, 10, 10})});
  EXPECT_EQ(collect_rects({win}).size(), 2u);
}

TEST_F(Geometry, ViewportMustEndAboveTheBand) {
  m.viewport += 1;
  EXPECT_EQ(stop_of([&] { overlap({}, {}); }),
            "[X] 内容视口伸进底部固定条：标题带 68 + 视口 357 = 425 > 内容区下沿 424（视口必须 = 屏高 − 标题带 − 底部条高）");
}

TEST_F(Geometry, DeclaredHeightMustHoldTheDeepestLeaf) {
  NodeList content = {nd("window", "Card1", {16, 68, 768, 90}, {nd("textview", "Row", {0, 40, 100, 60})})};
  content_h = 99;
  EXPECT_EQ(stop_of([&] { overlap(content, {}); }),
            "[X] 内容实际底 168 > 声明内容高上沿 167（Row 16,108..116,168）：块自己报的高度装不下子节点 → 滑动到底也看不到最后一段");
  content_h = 100;
  EXPECT_EQ(stop_of([&] { overlap(content, {}); }), "");
}

TEST_F(Geometry, BandIntersectionsAreListedSortedAndUnique) {
  content_h = 400;
  NodeList band = {nd("window", "Footer", {0, 424, 800, 56})};
  // Sharing the band's top edge does not count as touching.
  NodeList touching = {nd("textview", "Edge", {0, 400, 100, 24})};
  EXPECT_EQ(stop_of([&] { overlap(touching, band); }), "");
  NodeList content = {nd("textview", "B", {0, 420, 10, 10}), nd("textview", "A", {20, 410, 10, 20}),
                      nd("textview", "B", {0, 420, 10, 10})};
  EXPECT_EQ(stop_of([&] { overlap(content, band); }),
            "[X] 底部固定带与内容节点相交 3 对（缺陷 A：底栏/底导盖住内容）——视口必须扣掉底部条高（m['content_bottom'] = H − bar_bot）：\n"
            "    A(textview) 20,410..30,430 ∩ Footer(window) 0,424..800,480 = 10x6 px\n"
            "    B(textview) 0,420..10,430 ∩ Footer(window) 0,424..800,480 = 10x6 px");
}

TEST_F(Geometry, SummaryNoteNamesDeepestNodeAndLeaf) {
  content_h = 1000;
  overlap({}, {});
  EXPECT_TRUE(notes.all().empty());

  // The scroll window clips its rows; the deepest node is the window itself.
  NodeList content = {nd("scrollwindow", "ScrollMain", {0, 68, 800, 356},
                         {nd("window", "WindowMain", {0, 0, 800, 1000}, {nd("textview", "Row9", {16, 300, 768, 56})})})};
  overlap(content, {nd("window", "Footer", {0, 424, 800, 56})});
  ASSERT_EQ(notes.all().size(), 1u);
  EXPECT_EQ(notes.all()[0],
            "固定带自检：内容有效底 424 ≤ 底栏上沿 424（最靠下内容节点 ScrollMain 0,68..800,424"
            "；最靠下行/卡底 Row9 16,368..784,424（超出视口部分被引擎裁掉））｜ 相交 0 对");

  notes = Notes();
  overlap({nd("textview", "Only", {16, 68, 100, 40})}, {});
  EXPECT_EQ(notes.all()[0], "固定带自检：内容有效底 108 ≤ 底栏上沿 424（最靠下内容节点 Only 16,68..116,108）｜ 相交 0 对");
}
