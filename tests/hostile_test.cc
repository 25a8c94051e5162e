// Hostile pages as a user or an attacker writes them: each is refused with a clear
// message and leaves nothing behind, or composes with what makes it safe.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "e2e.h"
#include "gen_res/image.h"
#include "page_bench.h"

using namespace e2e;

namespace {

bool empty_dir(const fs::path& p) { return !fs::exists(p) || fs::is_empty(p); }

// A page of 800x480 with the blocks given as JSON text.
std::string page(const std::string& blocks, const std::string& res = R"({"width": 800, "height": 480})") {
  return R"({"resolution": )" + res + R"(, "page": {"title": "t", "footer": {"primary": "p"}, "blocks": [)" + blocks +
         "]}}";
}

std::string repeated(const std::string& item, int n) {
  std::string out;
  for (int i = 0; i < n; ++i) out += (i ? ", " : "") + item;
  return out;
}

struct Case {
  std::string what;
  std::string spec;  // spec.json text
  std::vector<std::string> args;
  std::string err;    // a part of standard error
  std::string place = "";  // the last lines of a stop about blocks; empty: one line
};

}  // namespace

TEST(Hostile, RefusedWithAClearMessageAndNothingWritten) {
  const std::string icon300(300, 'w');
  const std::vector<Case> cases = {
      {"code in a name", page(R"({"type": "setting_row", "label": "a",
          "name": "X(TVButton*){return 0;}\n#include \"/etc/passwd\"\nstatic bool y"})"),
       {}, "page.blocks[0].name: 'X(TVButton*)"},
      {"name in a card", page(R"({"type": "card", "blocks": [{"type": "setting_row"},
          {"type": "toggle_row", "name": "a-b"}]})"),
       {}, "page.blocks[0].blocks[1].name: 'a-b' is not an identifier"},
      {"name starting with a digit", page(R"({"type": "setting_row", "name": "1st"})"), {}, "name: '1st'"},
      {"name of 65 characters", page(R"({"type": "setting_row", "name": ")" + std::string(65, 'n') + R"("})"), {},
       "at most 64 characters"},
      {"page name as a path", page(""), {"--page", "../../escaped"}, "page name '../../escaped'"},
      {"resolution 1e+300", page("", R"({"width": 1e+300, "height": 480})"), {},
       "resolution.width: number out of range: 1e+300"},
      {"resolution too large", page("", R"({"width": 800, "height": 8193})"), {},
       "resolution.height: must lie between 16 and 8192, not 8193"},
      {"1e999", page(R"({"type": "slider_row", "progress": 1e999})"), {}, "unreadable number in "},
      {"progress 1e300", page(R"({"type": "slider_row", "label": "a", "progress": 1e300})"), {},
       "page.blocks[0].progress: 1e+300 must lie between 0 and 100 (slider_row)"},
      {"gallery rows 100000", page(R"({"type": "image_gallery", "rows": 100000})"), {},
       "page.blocks[0].rows: 100000 is more than fits"},
      {"loading lines 1000000", page(R"({"type": "loading", "variant": "skeleton", "lines": 1000000})"), {},
       "page.blocks[0].lines: 1000000 is more than fits"},
      {"wheel columns 100000", page(R"({"type": "wheel_picker", "columns": 100000})"), {},
       "page.blocks[0].columns: 100000 is more than fits"},
      {"list rows 1e18", page(R"({"type": "list_item", "rows": 1e18})"), {}, "page.blocks[0].rows: "},
      {"radio options 100000", page(R"({"type": "radio_row", "options": [)" + repeated("\"o\"", 100000) + "]}"),
       {}, "page.blocks[0].options: 100000"},
      {"chart value 1e300", page(R"({"type": "chart_card", "data": [1, 1e300]})"), {},
       "page.blocks[0].data[1]: 1e+300 must be a finite number"},
      {"icon as a list", page(R"({"type": "banner", "icon": ["a", "/b"]})"), {},
       "page.blocks[0].icon: expected a text, got a list ['a', '/b'] (banner)"},
      {"action as a list", page(R"({"type": "toolbar", "actions": [["a"]]})"), {},
       "page.blocks[0].actions[0]: expected a text or a mapping, got a list ['a'] (toolbar)"},
      {"options as a text", page(R"({"type": "radio_row", "options": "a, b"})"), {},
       "page.blocks[0].options: expected a list, got a text 'a, b' (radio_row)"},
      {"footer as a text", R"({"resolution": {"width": 800, "height": 480}, "page": {"title": "t", "footer": "ok"}})",
       {}, "spec.json: page.footer: expected a mapping, got a text 'ok'"},
      {"icon of 300 characters", page(R"({"type": "empty_state", "icon": ")" + icon300 + R"("})"), {},
       "[X] 图片名过长", "  at page.blocks[0] (empty_state EmptyState1)"},
      {"misspelt type in a card", page(R"({"type": "card", "blocks": [{"type": "togle_row"}]})"), {},
       "[X] 卡内不支持的块类型：togle_row",
       "  at page.blocks[0].blocks[0] (togle_row Block2) — did you mean \"toggle_row\"?"},
      {"forbidden character in a card", page(R"({"type": "card", "blocks": [{"type": "setting_row", "label": "25℃"}]})"),
       {}, "[X] 文本含引擎字库黑名单字符 ℃ U+2103", "    page.blocks[0].blocks[0].label: '25℃'"},
      {"one name twice", page(R"({"type": "setting_row", "name": "a"}, {"type": "card", "blocks": [
          {"type": "setting_row", "name": "a"}]})"),
       {}, "[X] caption 重名 3 个",
       "  at page.blocks[0] (setting_row a)\n  at page.blocks[1].blocks[0] (setting_row a)"},
  };
  for (const auto& c : cases) {
    Project p(c.spec);
    Outcome r = p.run(c.args);
    EXPECT_EQ(r.status, 1) << c.what << ": " << r.err;
    EXPECT_NE(r.err.find(c.err), std::string::npos) << c.what << ": " << r.err;
    // One line, or the message and then exactly the place lines.
    const std::string tail = c.place.empty() ? "" : c.place + "\n";
    if (tail.empty()) {
      EXPECT_EQ(r.err.find('\n') + 1, r.err.size()) << c.what << ": " << r.err;
    }
    EXPECT_TRUE(r.err.ends_with(tail)) << c.what << ": " << r.err;
    EXPECT_EQ(r.err.substr(0, r.err.size() - tail.size()).find("\n  at "), std::string::npos) << c.what;
    EXPECT_TRUE(empty_dir(p.proj())) << c.what;
    EXPECT_FALSE(fs::exists(p.root / "escaped.json")) << c.what;
  }
}

// Refusals made on the whole layout leave the layout of an earlier run as it was.
TEST(Hostile, ARefusedLayoutLeavesTheEarlierOne) {
  const std::pair<std::string, std::string> cases[] = {
      {R"({"type": "setting_row", "name": "a"}, {"type": "setting_row", "name": "a"})", "[X] caption 重名 3 个"},
      {R"({"type": "setting_row", "label": "25℃"})", "[X] 文本含引擎字库黑名单字符"},
  };
  for (const auto& [blocks, err] : cases) {
    Project p(page(R"({"type": "setting_row", "label": "a"})"));
    ASSERT_EQ(p.run({"--json-only"}).status, 0);
    const fs::path layout = p.proj() / "ui" / "main.json";
    const std::string before = ub::read_file(layout.string());
    p.write(page(blocks));
    const Outcome r = p.run({"--json-only"});
    EXPECT_EQ(r.status, 1) << err;
    EXPECT_NE(r.err.find(err), std::string::npos) << r.err;
    EXPECT_EQ(ub::read_file(layout.string()), before) << err;
    EXPECT_EQ(std::distance(fs::directory_iterator(layout.parent_path()), fs::directory_iterator()), 1) << err;
  }
}

TEST(Hostile, UnreadableNumberNamesTheFile) {
  Project p(page(R"({"type": "slider_row", "progress": 1e999})"));
  Outcome r = p.run();
  EXPECT_EQ(r.err.rfind("compose: error: unreadable number in " + p.spec.string() + ": line 1, column 144: ", 0), 0u)
      << r.err;
}

TEST(Hostile, UnknownKeysAreRefusedNotIgnored) {
  Project p(page(R"({"type": "card", "blocks": [{"type": "toggle_row", "lable": "a", "on": false}]},
                    {"type": "divider_label", "colour": "red"})"));
  const Outcome r = p.run();
  EXPECT_EQ(r.status, 1);
  EXPECT_NE(r.err.find("page.blocks[0].blocks[0]: unknown key \"lable\" (did you mean \"label\"?)"), std::string::npos)
      << r.err;
  EXPECT_NE(r.err.find("page.blocks[1]: unknown key \"colour\""), std::string::npos) << r.err;
  EXPECT_TRUE(empty_dir(p.proj()));
}

TEST(Hostile, ChartsOfOneSizeWithDifferentDataGetTheirOwnPictures) {
  const ubtest::Composed c = ubtest::compose_page(Json::parse(page(
      R"({"type": "chart_card", "data": [1, 2, 3]}, {"type": "chart_card", "data": [3, 2, 1]},
         {"type": "chart_card", "data": [1, 2, 3]})")), "main", false);
  std::set<std::string> charts;
  for (const auto& [name, a] : c.composer->pictures().all())
    if (name.rfind("chart_bar_", 0) == 0) charts.insert(name);
  EXPECT_EQ(charts.size(), 2u);  // equal data share one picture
  for (const auto& name : charts) EXPECT_NE(c.layout.text.find("images/" + name), std::string::npos) << name;
  EXPECT_EQ(charts.count(ub::cat("chart_bar_", c.composer->context().m.content_w - 2 * c.composer->context().m.pad_l,
                                 "x", c.composer->context().m.chart_plot_h, "_734fdca3.png")),
            1u);
}

// The gallery's placeholder picture is named after its size, not its icon: the second
// gallery's icon takes the first free variant of the name, and each shows its own.
TEST(Hostile, OneNameNeverHoldsTwoPictures) {
  const ubtest::Composed c = ubtest::compose_page(
      Json::parse(page(R"({"type": "image_gallery", "icon": "wifi"}, {"type": "image_gallery", "icon": "bell"},
                          {"type": "image_gallery", "icon": "wifi"})")), "main", false);
  std::map<std::string, std::string> icon_of;  // picture -> icon token
  for (const auto& [name, a] : c.composer->pictures().all())
    if (name.rfind("ic_photo_", 0) == 0) icon_of[name] = a.g;
  ASSERT_EQ(icon_of.size(), 2u);
  const std::string plain = icon_of.begin()->first, second = std::next(icon_of.begin())->first;
  EXPECT_EQ(icon_of[plain], "wifi");  // the first registration keeps the plain name
  EXPECT_EQ(second, plain.substr(0, plain.size() - 4) + "_2.png");
  EXPECT_EQ(icon_of[second], "bell");
  std::map<std::string, std::string> pic_of;  // caption -> picture
  for (const ub::ControlRef& r : c.layout.controls) {
    const Json pic = r.node->payload.find("backgroundPic").to_json();
    if (r.caption && pic.is_string()) pic_of[*r.caption] = pic.get<std::string>();
  }
  EXPECT_EQ(pic_of["ImageGallery1Thumb1Icon"], "images/" + plain);
  EXPECT_EQ(pic_of["ImageGallery2Thumb6Icon"], "images/" + second);
  EXPECT_EQ(pic_of["ImageGallery3Thumb1Icon"], "images/" + plain);
  for (const std::string& n : c.composer->notes().all()) EXPECT_EQ(n.find("图片名"), std::string::npos) << n;
}

TEST(Hostile, IdentifiersOfAnyScriptCompose) {
  Project p(page(R"({"type": "setting_row", "label": "a", "name": "无线_网络2"})"));
  Outcome r = p.run({"--page", "设置页"});
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_TRUE(fs::exists(p.proj() / "ui/设置页.json"));
  const std::string logic = ub::read_file((p.proj() / "src/logic/设置页Logic.cc").string());
  EXPECT_NE(logic.find("onButtonClick_ButtonRow无线_网络2("), std::string::npos);
}

TEST(Hostile, AScreenTooSmallIsRefusedWithTheSmallestThatWorks) {
  const std::string status = ub::read_file(ubtest::source_dir() + "/examples/status_320x240.json");
  const struct {
    int w, h;
    std::string err;
  } cases[] = {
      {128, 240, "128x240 is too small for this page: TextRowSettingRow2Label gets a box of -4x20; "
                 "the smallest screen of its shape that works is 139x261"},
      {16, 16, "16x16 is too small for this page: TextTitle gets a box of -16x20; "
               "the smallest screen of its shape that works is 123x123"},
  };
  for (const auto& c : cases) {
    Json spec = Json::parse(status);
    spec["resolution"] = {{"width", c.w}, {"height", c.h}};
    Project p(spec.dump());
    const Outcome r = p.run();
    EXPECT_EQ(r.status, 1) << r.err;
    EXPECT_NE(r.err.find(c.err), std::string::npos) << r.err;
    EXPECT_TRUE(empty_dir(p.proj()));
  }
  // The size it names composes.
  Json spec = Json::parse(status);
  spec["resolution"] = {{"width", 139}, {"height", 261}};
  EXPECT_EQ(Project(spec.dump()).run({"--json-only"}).status, 0);
}

TEST(Hostile, AnEmptyCardIsNotedAndItsPictureKeepsItsWidth) {
  Project p(page(R"({"type": "card", "name": "Net"})"));
  const Outcome r = p.run();
  EXPECT_EQ(r.status, 0) << r.err;
  EXPECT_NE(r.out.find("  [NOTE] page.blocks[0] (card Net): no blocks, drawn 768x0"), std::string::npos) << r.out;
  const gen_res::Image img = gen_res::load_png((p.proj() / "resources" / "images" / "card_768x0.png").string());
  EXPECT_EQ(std::pair(img.w, img.h), std::pair(768, 1));
}
