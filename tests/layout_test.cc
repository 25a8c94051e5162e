// Whole layout files compared with reviewed expectations in tests/expected/ (see
// ubtest::expect_golden for the update switch). The large bench page and the showcase
// pages are pinned by their hashes instead of files nobody could review.
#include <gtest/gtest.h>

#include <set>

#include "e2e.h"
#include "logic/logic_head.h"

using namespace e2e;

namespace {

void expect_file(const fs::path& produced, const std::string& expected_name) {
  ubtest::expect_golden(ub::read_file(produced.string()), expected_path(expected_name));
}

// Every control record below a node, with its key path.
void records(const Json& node, const std::string& path, std::vector<std::pair<std::string, const Json*>>& out) {
  for (auto it = node.begin(); it != node.end(); ++it)
    if (it.key().find("__") != std::string::npos && it.value().is_object()) {
      out.push_back({path + "/" + it.key(), &it.value()});
      records(it.value(), path + "/" + it.key(), out);
    }
}

}  // namespace

TEST(Layout, TitleSubtitleFooterAtCommonSizes) {
  for (auto [w, h] : {std::pair{320, 240}, {480, 272}, {800, 480}, {1024, 600}}) {
    Json spec = ubtest::page_spec(w, h);
    spec["page"]["subtitle"] = "副标题";
    Project p(spec);
    Outcome r = p.run({"--json-only"});
    ASSERT_EQ(r.status, 0) << r.err;
    expect_file(p.proj() / "ui/main.json", ub::cat("title_only_", w, "x", h, ".json"));
  }
}

TEST(Layout, ExamplePages) {
  for (auto [example, page] : {std::pair{"settings_800x480", "settings"}, {"status_320x240", "main"},
                               {"controls_480x272", "main"}, {"dashboard_1024x600", "main"}}) {
    SCOPED_TRACE(example);
    Project p(ub::read_file(ubtest::source_dir() + "/examples/" + example + ".json"));
    Outcome r = p.run({"--page", page, "--ui-layout", "flat"});
    ASSERT_EQ(r.status, 0) << r.err;
    expect_file(p.proj() / "ui" / (std::string(page) + ".json"), std::string(example) + ".json");
    expect_file(p.proj() / "src/logic" / (std::string(page) + "Logic.cc"), std::string(example) + "Logic.cc.expected");
  }
}
TEST(Layout, BenchPage) {
  Project p(ub::read_file(ubtest::source_dir() + "/examples/bench_page_1024x600.json"));
  Outcome r = p.run({"--ui-layout", "flat"});
  ASSERT_EQ(r.status, 0) << r.err;
  const std::string text = ub::read_file((p.proj() / "ui/main.json").string());
  const std::string logic = ub::read_file((p.proj() / "src/logic/mainLogic.cc").string());
  const Json doc = Json::parse(text);
  std::vector<std::pair<std::string, const Json*>> all;
  records(doc, "", all);
  // Ids never repeat, captions only where the layout format allows (list subitems are
  // array members), and every button has its callback in the logic skeleton.
  std::set<long long> ids;
  std::set<std::string> captions;
  for (const auto& [path, rec] : all) {
    const std::string caption = rec->at("caption").get<std::string>();
    EXPECT_TRUE(ids.insert(rec->at("id").get<long long>()).second) << path;
    EXPECT_TRUE(captions.insert(caption).second) << path;
    if (path.compare(path.rfind('/') + 1, 8, "button__") == 0) {
      EXPECT_NE(logic.find("onButtonClick_" + caption + "("), std::string::npos) << path;
    }
  }
  EXPECT_GT(all.size(), 500u);
  EXPECT_EQ(logic.rfind(ub::LOGIC_HEAD, 0), 0u);
  // The exact bytes, pinned: a change here needs an intended reason.
  ubtest::expect_pinned(text, expected_path("pins/bench_page_1024x600.layout"));
  ubtest::expect_pinned(logic, expected_path("pins/bench_page_1024x600.logic"));
}

// The showcase pages hold every block type. Layout, logic skeleton and pictures are
// pinned at every supported size: a change here needs an intended reason.
TEST(Layout, ShowcasePagesPinned) {
  for (const std::string size : {"320x240", "480x272", "800x480", "1024x600"}) {
    SCOPED_TRACE(size);
    Project p(ub::read_file(ubtest::source_dir() + "/examples/showcase_" + size + ".json"));
    ASSERT_EQ(p.run({"--ui-layout", "flat"}).status, 0);
    std::set<fs::path> names;
    for (const auto& e : fs::directory_iterator(p.proj() / "resources/images")) names.insert(e.path());
    std::string pictures;
    for (const auto& n : names) pictures += n.filename().string() + "\n" + ub::read_file(n.string());
    const std::string pin = expected_path("pins/showcase_" + size);
    ubtest::expect_pinned(ub::read_file((p.proj() / "ui/main.json").string()), pin + ".layout");
    ubtest::expect_pinned(ub::read_file((p.proj() / "src/logic/mainLogic.cc").string()), pin + ".logic");
    ubtest::expect_pinned(pictures, pin + ".pictures");
  }
}

TEST(Layout, SmallPageReviewedByEye) {
  // One of each plain row in a card, a slider and a footer: small enough to read whole.
  Json spec = ubtest::page_spec(480, 272, Json::parse(R"([
    {"type": "card", "title": "网络", "blocks": [
      {"type": "setting_row", "label": "无线网络", "value": "Home"},
      {"type": "toggle_row", "label": "蓝牙", "on": true}]},
    {"type": "slider_row", "label": "亮度", "progress": 60}])"));
  Project p(spec);
  ASSERT_EQ(p.run({"--json-only"}).status, 0);
  expect_file(p.proj() / "ui/main.json", "small_page_480x272.json");
}
