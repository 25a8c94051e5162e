// Hostile pages as a user or an attacker writes them: each is refused with a clear
// message and leaves nothing behind, or composes with what makes it safe.
#include <gtest/gtest.h>

#include <set>

#include "e2e.h"

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
  std::string err;  // a part of standard error
};

}  // namespace

TEST(Hostile, RefusedWithAClearMessageAndNothingWritten) {
  const std::string icon300(300, 'w');
  const std::vector<Case> cases = {
      {"code in a name", page(R"({"type": "setting_row", "label": "a",
          "name": "X(TVButton*){return 0;}\n#include \"/etc/passwd\"\nstatic bool y"})"),
       {}, "page.blocks[0] (setting_row): name 'X(TVButton*)"},
      {"name in a card", page(R"({"type": "card", "blocks": [{"type": "setting_row"},
          {"type": "toggle_row", "name": "a-b"}]})"),
       {}, "page.blocks[0].blocks[1] (toggle_row): name 'a-b' is not an identifier"},
      {"name starting with a digit", page(R"({"type": "setting_row", "name": "1st"})"), {}, "name '1st'"},
      {"name of 65 characters", page(R"({"type": "setting_row", "name": ")" + std::string(65, 'n') + R"("})"), {},
       "at most 64 characters"},
      {"page name as a path", page(""), {"--page", "../../escaped"}, "page name '../../escaped'"},
      {"resolution 1e+300", page("", R"({"width": 1e+300, "height": 480})"), {},
       "resolution.width: number out of range: 1e+300"},
      {"resolution too large", page("", R"({"width": 800, "height": 8193})"), {},
       "resolution.height must lie between 16 and 8192, not 8193"},
      {"1e999", page(R"({"type": "slider_row", "progress": 1e999})"), {}, "unreadable number in "},
      {"progress 1e300", page(R"({"type": "slider_row", "label": "a", "progress": 1e300})"), {},
       "page.blocks[0] (slider_row): progress 1e+300 must lie between 0 and 100"},
      {"gallery rows 100000", page(R"({"type": "image_gallery", "rows": 100000})"), {},
       "page.blocks[0] (image_gallery): rows 100000 is more than fits"},
      {"loading lines 1000000", page(R"({"type": "loading", "variant": "skeleton", "lines": 1000000})"), {},
       "page.blocks[0] (loading): lines 1000000 is more than fits"},
      {"wheel columns 100000", page(R"({"type": "wheel_picker", "columns": 100000})"), {},
       "page.blocks[0] (wheel_picker): columns 100000 is more than fits"},
      {"list rows 1e18", page(R"({"type": "list_item", "rows": 1e18})"), {}, "(list_item): rows"},
      {"radio options 100000", page(R"({"type": "radio_row", "options": [)" + repeated("\"o\"", 100000) + "]}"),
       {}, "(radio_row): options 100000"},
      {"chart value 1e300", page(R"({"type": "chart_card", "data": [1, 1e300]})"), {},
       "(chart_card): data[1] 1e+300 must be a finite number"},
      {"icon as a list", page(R"({"type": "banner", "icon": ["a", "/b"]})"), {},
       "page.blocks[0] (banner): icon must be a text, not list"},
      {"action as a list", page(R"({"type": "toolbar", "actions": [["a"]]})"), {}, "actions[0] must be an icon name"},
      {"icon of 300 characters", page(R"({"type": "empty_state", "icon": ")" + icon300 + R"("})"), {},
       "[X] 图片名过长"},
  };
  for (const auto& c : cases) {
    Project p(c.spec);
    Outcome r = p.run(c.args);
    EXPECT_EQ(r.status, 1) << c.what << ": " << r.err;
    EXPECT_NE(r.err.find(c.err), std::string::npos) << c.what << ": " << r.err;
    EXPECT_EQ(r.err.find('\n'), r.err.size() - 1) << c.what << ": one line, " << r.err;
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
  EXPECT_EQ(r.err.rfind("compose: error: unreadable number in " + p.spec.string() + ": ", 0), 0u) << r.err;
}

TEST(Hostile, ChartsOfOneSizeWithDifferentDataGetTheirOwnPictures) {
  Project p(page(R"({"type": "chart_card", "data": [1, 2, 3]}, {"type": "chart_card", "data": [3, 2, 1]},
                    {"type": "chart_card", "data": [1, 2, 3]})"));
  Outcome r = p.run({"--no-logic"});
  ASSERT_EQ(r.status, 0) << r.err;
  std::set<std::string> charts;
  for (const auto& e : fs::directory_iterator(p.proj() / "resources/images"))
    if (e.path().filename().string().rfind("chart_bar_", 0) == 0) charts.insert(e.path().filename().string());
  EXPECT_EQ(charts.size(), 2u);  // equal data share one picture
  const std::string layout = ub::read_file((p.proj() / "ui/main.json").string());
  for (const auto& name : charts) EXPECT_NE(layout.find("images/" + name), std::string::npos) << name;
  EXPECT_EQ(r.out.find("[NOTE] 图片名"), std::string::npos) << r.out;
}

TEST(Hostile, OneNameForTwoPicturesIsNoted) {
  // The gallery's placeholder picture is named after its size, not its icon.
  Project p(page(R"({"type": "image_gallery", "icon": "wifi"}, {"type": "image_gallery", "icon": "bell"})"));
  Outcome r = p.run({"--json-only"});
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_NE(r.out.find("  [NOTE] 图片名 ic_photo_"), std::string::npos) << r.out;
}

TEST(Hostile, IdentifiersOfAnyScriptCompose) {
  Project p(page(R"({"type": "setting_row", "label": "a", "name": "无线_网络2"})"));
  Outcome r = p.run({"--page", "设置页"});
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_TRUE(fs::exists(p.proj() / "ui/设置页.json"));
  const std::string logic = ub::read_file((p.proj() / "src/logic/设置页Logic.cc").string());
  EXPECT_NE(logic.find("onButtonClick_ButtonRow无线_网络2("), std::string::npos);
}
