// Whole pages through document(): a showcase of every block type at the supported
// sizes, and every stop of the page-level blocks reached from a spec.
#include "block_test_util.h"
#include "spec/library.h"

#include <set>

namespace {

using namespace pbtest;

// The showcase page of examples/, which holds every block type; without its toolbar
// the page gets a page_title block in its place.
Json showcase_spec(int w, int h, bool toolbar) {
  Json spec = ub::load_json(ubtest::source_dir() + ub::cat("/examples/showcase_", w, "x", h, ".json"));
  Json& first = spec["page"]["blocks"][0];
  EXPECT_EQ(first["type"], "toolbar");
  if (!toolbar) first = {{"type", "page_title"}, {"title", "展示"}, {"subtitle", "全部块"}};
  return spec;
}

class Showcase : public ::testing::TestWithParam<std::pair<int, int>> {};

TEST_P(Showcase, EveryBlockTypeComposesAndPassesTheSelfChecks) {
  const auto [w, h] = GetParam();
  for (bool toolbar : {true, false}) {
    SCOPED_TRACE(toolbar ? "toolbar" : "page_title");
    auto c = ubtest::composer(showcase_spec(w, h, toolbar));
    Json doc;
    ASSERT_NO_THROW(doc = c->document());
    for (const auto& note : c->notes().all()) EXPECT_EQ(note.find("文案过长"), std::string::npos) << note;

    EXPECT_EQ(captions(c->root()).front(), toolbar ? "Toolbar1" : "TextTitle");
  }
}

TEST(Showcase, HoldsEveryTypeOfTheBlockLibrary) {
  const Json spec = showcase_spec(480, 272, true);
  // The appliance blocks have a showcase page of their own.
  const Json appliance = ub::load_json(ubtest::source_dir() + "/examples/showcase_appliance_800x480.json");
  std::set<std::string> seen = {"page_title"};  // the variant without the toolbar
  std::function<void(const Json&)> walk = [&](const Json& blocks) {
    for (const Json& b : blocks) {
      seen.insert(b["type"].get<std::string>());
      if (b.contains("blocks")) walk(b["blocks"]);
    }
  };
  walk(spec["page"]["blocks"]);
  walk(appliance["page"]["blocks"]);
  ub::Composer c(spec, "main", ubtest::installation());
  // An image needs a picture shipped with its project: the token test composes it at every size.
  std::set<std::string> library;
  for (const auto& [type, def] : c.context().blocks)
    if (type != "image") library.insert(type);
  EXPECT_EQ(seen, library);
}

INSTANTIATE_TEST_SUITE_P(Sizes, Showcase,
                         ::testing::Values(std::make_pair(320, 240), std::make_pair(480, 272),
                                           std::make_pair(800, 480), std::make_pair(1024, 600)));

TEST(PageBlockStops, EveryStopIsReachedFromASpec) {
  const std::vector<std::pair<Json, std::string>> cases = {
      {{{"type", "toolbar"}, {"actions", {"a", "b", "c", "d"}}}, "[X] toolbar.actions 最多 3 个（标题带放不下），得到 4"},
      {{{"type", "bottom_nav"}, {"items", {"a"}}}, "[X] bottom_nav.items 应为 3~5 项（允许 2~6），得到 1"},
      {{{"type", "tabs"}, {"items", {"a"}}}, "[X] tabs.items 至少 2 个（分段控件），得到 1"},
      {{{"type", "banner"}, {"state", "ok2"}},
       "[X] 未知语义状态：ok2（可用：danger、info、off、ok、success、warn）"},
      {{{"type", "status_pill"}, {"state", "info2"}},
       "[X] 未知语义状态：info2（可用：danger、info、off、ok、success、warn）"},
      {{{"type", "grid_icons"}}, "[X] grid_icons.items 不能为空"},
      {{{"type", "grid_icons"}, {"items", {"a"}}, {"cols", 7}}, "[X] grid_icons.cols 应在 1~6，得到 7"},
      {{{"type", "image_gallery"}, {"cols", "6"}}, "[X] image_gallery.cols 应在 1~5，得到 6"},
      {{{"type", "keypad"}, {"items", Json::array()}}, "[X] keypad.items 个数必须是 3 的倍数且在 6~15，得到 0"},
      {{{"type", "chart_card"}, {"kind", "pie"}}, "[X] chart_card.kind 只支持 line / bar，得到 'pie'"},
      {{{"type", "chart_card"}, {"data", {1, "x1"}}}, "[X] chart_card.data 必须全是数字，得到 'x1'"},
      {{{"type", "chart_card"}, {"data", {1}}}, "[X] chart_card.data 至少 2 个数据点，得到 1 个"},
      {{{"type", "chart_card"}, {"data", {1, 2}}, {"labels", {"a", "b", "c"}}},
       "[X] chart_card.labels 个数（3）必须与 data（2）一致，或整省"},
      {{{"type", "loading"}, {"variant", "dots"}}, "[X] loading.variant 只支持 spinner / skeleton，得到 'dots'"},
  };
  for (const auto& [block, message] : cases) {
    SCOPED_TRACE(message);
    auto c = ubtest::composer(ubtest::page_spec(480, 272, Json::array({block})));
    // The block's place follows on a second line: path, type and caption base.
    const std::string type = block["type"];
    const std::string msg = stop_message([&] { c->document(); });
    EXPECT_EQ(msg.substr(0, msg.find('\n')), message);
    EXPECT_TRUE(msg.ends_with("\n  at page.blocks[0] (" + type + " " + c->records().blocks[0].name + ")"))
        << msg;
  }
}

}  // namespace
