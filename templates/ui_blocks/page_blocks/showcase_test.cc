// Whole pages through document(): a showcase of every block type at the supported
// sizes, and every stop of the page-level blocks reached from a spec.
#include "block_test_util.h"

namespace {

using namespace pbtest;

Json showcase_blocks(bool toolbar) {
  Json b = Json::array();
  if (toolbar) b.push_back({{"type", "toolbar"}, {"title", "展示"}, {"actions", {"search"}}});
  else b.push_back({{"type", "page_title"}, {"title", "展示"}, {"subtitle", "全部块"}});
  b.push_back({{"type", "banner"}, {"state", "warn"}, {"text", "电量低"}});
  b.push_back({{"type", "tabs"}, {"items", {"概览", "详情", "日志"}}, {"selected", 1}});
  b.push_back({{"type", "status_pill"}, {"state", "ok"}, {"text", "在线"}});
  b.push_back({{"type", "card"}, {"title", "常用"},
               {"blocks", {{{"type", "setting_row"}, {"label", "亮度"}, {"value", "60%"}},
                           {{"type", "toggle_row"}, {"label", "自动"}, {"on", true}},
                           {{"type", "device_card"}, {"label", "客厅灯"}, {"online", true}},
                           {{"type", "time_row"}, {"label", "闹钟"}, {"value", "07:30"}},
                           {{"type", "icon_row"}, {"label", "关于"}}}}});
  b.push_back({{"type", "section_header"}, {"text", "表单"}});
  b.push_back({{"type", "form_section"}, {"title", "参数"},
               {"blocks", {{{"type", "slider_row"}, {"label", "音量"}, {"progress", 40}},
                           {{"type", "progress_row"}, {"label", "下载"}, {"progress", 70}},
                           {{"type", "input_row"}, {"label", "名称"}, {"hintText", "输入"}},
                           {{"type", "checkbox_row"}, {"label", "记住"}, {"checked", true}},
                           {{"type", "radio_row"}, {"label", "模式"}, {"options", {"快", "慢"}}}}}});
  b.push_back({{"type", "divider_label"}, {"text", "或"}});
  b.push_back({{"type", "list_item"}, {"label", "列表"}, {"items", {{{"title", "一"}}, {{"title", "二"}}}}});
  b.push_back({{"type", "wheel_picker"}, {"label", "时间"}, {"columns", 2}});
  b.push_back({{"type", "grid_icons"}, {"items", {"灯", "门", "窗", "锁"}}, {"tappable", true}});
  b.push_back({{"type", "image_gallery"}, {"title", "相册"}, {"tappable", true}});
  b.push_back({{"type", "keypad"}, {"display", "123"}});
  b.push_back({{"type", "chart_card"}, {"kind", "line"}, {"data", {1, 3, 2}}, {"labels", {"一", "二", "三"}},
               {"title", "温度"}, {"note", "单位 度"}});
  b.push_back({{"type", "chart_card"}, {"data", {4, 1}}});
  b.push_back({{"type", "loading"}});
  b.push_back({{"type", "loading"}, {"variant", "skeleton"}, {"lines", 2}});
  b.push_back({{"type", "empty_state"}, {"text", "暂无数据"}, {"sub", "稍后再试"}});
  b.push_back({{"type", "bottom_nav"}, {"items", {"首页", "设备", "我的"}}});
  b.push_back({{"type", "dialog"}, {"title", "提示"}, {"body", "确认删除？"}});
  b.push_back({{"type", "toast"}, {"text", "已保存"}});
  b.push_back({{"type", "bottom_actions"}, {"primary", "保存"}, {"secondary", "取消"}});
  return b;
}

class Showcase : public ::testing::TestWithParam<std::pair<int, int>> {};

TEST_P(Showcase, EveryBlockTypeComposesAndPassesTheSelfChecks) {
  const auto [w, h] = GetParam();
  for (bool toolbar : {true, false}) {
    SCOPED_TRACE(toolbar ? "toolbar" : "page_title");
    auto c = composer(w, h, showcase_blocks(toolbar));
    Json doc;
    ASSERT_NO_THROW(doc = c->document());
    for (const auto& note : c->notes) EXPECT_EQ(note.find("文案过长"), std::string::npos) << note;

    // Root order: top band, content, navigation, bar, dialog, toast last.
    const auto caps = captions(c->root);
    ASSERT_GE(caps.size(), 4u);
    EXPECT_EQ(caps.back(), "ToastWindow22");
    EXPECT_EQ(caps[caps.size() - 2], "DialogWindow21");
    EXPECT_EQ(caps.front(), toolbar ? "Toolbar1" : "TextTitle");
    EXPECT_NE(find(c->root, "BottomNav20"), nullptr);
  }
}

INSTANTIATE_TEST_SUITE_P(Sizes, Showcase,
                         ::testing::Values(std::make_pair(320, 240), std::make_pair(480, 272),
                                           std::make_pair(800, 480), std::make_pair(1024, 600)));

struct StopCase {
  Json block;
  std::string message;
};

TEST(PageBlockStops, EveryStopIsReachedFromASpec) {
  const std::vector<StopCase> cases = {
      {{{"type", "toolbar"}, {"actions", {"a", "b", "c", "d"}}}, "[X] toolbar.actions 最多 3 个（标题带放不下），得到 4"},
      {{{"type", "bottom_nav"}, {"items", {"a"}}}, "[X] bottom_nav.items 应为 3~5 项（允许 2~6），得到 1"},
      {{{"type", "bottom_nav"}, {"items", {"a", "b"}}, {"selected", "2"}}, "[X] bottom_nav.selected=2 越界（可选 0~1）"},
      {{{"type", "tabs"}, {"items", {"a"}}}, "[X] tabs.items 至少 2 个（分段控件），得到 1"},
      {{{"type", "tabs"}, {"items", {"a", "b"}}, {"selected", -1}}, "[X] tabs.selected=-1 越界（可选 0~1）"},
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
  for (const auto& k : cases) {
    SCOPED_TRACE(k.message);
    auto c = composer(480, 272, Json::array({k.block}));
    EXPECT_EQ(stop_message([&] { c->document(); }), k.message);
  }
}

}  // namespace
