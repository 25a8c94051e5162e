// The shipped design tokens keep every built-in block inside its container at every
// supported screen size: each block type is composed alone, and inside a card or a
// form section where those take it; the texts of blocks that are no rows fit.
#include <gtest/gtest.h>

#include <filesystem>

#include "kinds/kinds_testing.h"
#include "kinds/registry.h"

using namespace ub;

namespace {

const char* const kSamples = R"([
  {"type": "page_title", "title": "设置中心", "subtitle": "本机"},
  {"type": "section_header", "text": "常用"},
  {"type": "setting_row", "label": "音量", "value": "中等音量", "icon": "wifi"},
  {"type": "setting_row", "label": "亮度"},
  {"type": "icon_row", "label": "亮度", "value": "自动", "icon": "bluetooth"},
  {"type": "toggle_row", "label": "无线网络", "value": "已连接", "icon": "settings", "on": true},
  {"type": "toggle_row", "label": "蓝牙", "on": false},
  {"type": "device_card", "label": "客厅空调", "value": "在线", "icon": "home"},
  {"type": "device_card", "label": "卧室灯", "value": "离线", "online": false},
  {"type": "time_row", "label": "定时", "value": "07:30", "icon": "user"},
  {"type": "slider_row", "label": "音量", "value": "40", "progress": 40},
  {"type": "progress_row", "label": "下载", "progress": 70},
  {"type": "input_row", "label": "名称", "hintText": "请输入"},
  {"type": "checkbox_row", "label": "自动更新", "checked": true},
  {"type": "radio_row", "label": "模式", "options": ["标准", "节能", "强劲"], "selected": 1},
  {"type": "list_item", "rows": 3, "label": "列表", "items": [{"icon": "wifi", "title": "音量", "value": "详情"},
    {"title": "亮度", "value": "详情"}, {"icon": "home", "title": "蓝牙"}, {"title": "显示"}]},
  {"type": "wheel_picker", "columns": 3, "rows": 5, "label": "时间"},
  {"type": "tabs", "items": ["全部", "在线", "离线", "告警"], "selected": 1},
  {"type": "banner", "state": "warn", "text": "电量低，请及时充电", "close": true},
  {"type": "status_pill", "state": "ok", "text": "运行中"},
  {"type": "divider_label", "text": "更多"},
  {"type": "empty_state", "icon": "search", "text": "暂无数据", "sub": "下拉刷新"},
  {"type": "grid_icons", "items": [{"icon": "wifi", "text": "音量"}, {"icon": "bluetooth", "text": "亮度"},
    {"icon": "settings", "text": "网络"}, {"icon": "home", "text": "蓝牙"}, {"icon": "user", "text": "显示"}],
   "tappable": true},
  {"type": "image_gallery", "cols": 3, "rows": 2, "title": "相册", "tappable": true},
  {"type": "keypad", "display": "123456"},
  {"type": "chart_card", "kind": "line", "data": [3, 8, 5, 12, 9, 15, 11],
   "labels": ["一", "二", "三", "四", "五", "六", "日"], "title": "温度", "note": "近 7 天"},
  {"type": "chart_card", "kind": "bar", "data": [5, 9, 2, 7, 4], "title": "能耗"},
  {"type": "chart_card", "kind": "bar", "data": [1180, 1242, 980], "limit": 1200, "labels": ["一", "二", "三"]},
  {"type": "chart_card", "kind": "line", "data": [3, 8, 5], "limit": 10},
  {"type": "button_row", "buttons": [{"text": "开始", "style": "primary", "name": "Start"}, "暂停", "停止", "更多"]},
  {"type": "button_row", "buttons": ["确定"]},
  {"type": "pill_row", "pills": [{"text": "运行中", "state": "ok"}, {"text": "滤网待换", "state": "warn"},
    {"text": "离线", "state": "off"}, {"text": "告警", "state": "danger"}, {"text": "节能", "state": "info"},
    {"text": "已同步", "state": "success"}]},
  {"type": "dialog", "title": "连接网络", "body": "请输入密码", "visible": true,
   "input": {"kind": "password", "placeholder": "密码", "name": "Pwd"}},
  {"type": "loading", "variant": "spinner"},
  {"type": "loading", "variant": "skeleton", "text": "加载中", "lines": 4},
  {"type": "dialog", "title": "确认", "body": "确定要执行吗", "visible": true},
  {"type": "toast", "text": "已保存"},
  {"type": "toolbar", "title": "设备", "actions": ["search", "more"]},
  {"type": "bottom_nav", "items": [{"text": "首页", "icon": "home"}, {"text": "设备", "icon": "bluetooth"},
    {"text": "我的", "icon": "user"}], "selected": 1},
  {"type": "bottom_actions", "primary": "保存", "secondary": "取消", "status": "就绪"},
  {"type": "big_value", "value": 22.5, "unit": "°C", "caption": "室内温度"},
  {"type": "big_value", "value": "1:45", "caption": "剩余时间"},
  {"type": "gauge", "value": 72, "unit": "%", "limit": 90, "caption": "湿度"},
  {"type": "gauge", "value": 1250, "min": 0, "max": 2000, "unit": "W"},
  {"type": "pin_display", "length": 8, "filled": 3, "caption": "请输入密码"},
  {"type": "image", "src": "photos/wide.png"},
  {"type": "image", "src": "photos/tall.png", "fit": "center"}
])";

// A project shipping the pictures the samples name.
std::string sample_project() {
  const std::string root = ubtest::temp_dir("tokens_fit");
  std::filesystem::create_directories(root + "/resources/photos");
  gen_res::save_png(gen_res::Image(1600, 600, {40, 90, 200, 255}), root + "/resources/photos/wide.png");
  gen_res::save_png(gen_res::Image(300, 900, {200, 90, 40, 255}), root + "/resources/photos/tall.png");
  return root;
}

}  // namespace

TEST(ShippedTokens, EveryBlockFitsAtEverySupportedSize) {
  Json samples = Json::parse(kSamples);
  const std::string root = sample_project();
  for (auto [w, h] : {std::pair{320, 240}, {480, 272}, {800, 480}, {1024, 600}, {1280, 800}}) {
    for (const Json& blk : samples) {
      const BlockKind& kind = *block_kinds().of(blk);
      SCOPED_TRACE(cat(w, "x", h, " ", blk.dump()));
      EXPECT_EQ(refusal_of(Json::array({blk}), w, h, root), "");
      // Texts of the blocks that are no rows fit their boxes (a long row label is the
      // author's to shorten, with value_short).
      if (kind.family == RowFamily::None) {
        EXPECT_EQ(unfit_texts(Json::array({blk}), w, h, root), std::vector<std::string>{});
      }
      if (kind.places & kInCard) {
        Json card = {{"type", "card"}, {"title", "分组"}, {"blocks", Json::array({blk, blk})}};
        EXPECT_EQ(refusal_of(Json::array({card}), w, h, root), "") << "in a card";
      }
      if (kind.family == RowFamily::Field || (kind.family == RowFamily::None && (kind.places & kInForm))) {
        Json form = {{"type", "form_section"}, {"title", "表单"}, {"surface", true}, {"blocks", Json::array({blk})}};
        EXPECT_EQ(refusal_of(Json::array({form}), w, h, root), "") << "in a form section";
      }
    }
  }
  std::filesystem::remove_all(root);
}
