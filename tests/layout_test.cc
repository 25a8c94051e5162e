// Whole layout files compared with reviewed expectations in tests/expected/ (see
// ubtest::expect_golden for the update switch). The large bench page and the showcase
// pages are pinned by their hashes instead of files nobody could review. The pages are
// composed in memory, as a run composes them.
#include <gtest/gtest.h>

#include <set>

#include "logic/logic_head.h"
#include "page_bench.h"
#include "spec/spec_text.h"

namespace {

std::string expected_path(const std::string& name) { return ubtest::source_dir() + "/tests/expected/" + name; }

void expect_text(const std::string& produced, const std::string& expected_name) {
  ubtest::expect_golden(produced, expected_path(expected_name));
}

Json example(const std::string& name) {
  const std::string path = ubtest::source_dir() + "/examples/" + name + ".json";
  return ub::parse_spec_text(ub::read_file(path), path);
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
    expect_text(ubtest::compose_page(spec, "main", false).layout.text, ub::cat("title_only_", w, "x", h, ".json"));
  }
}

TEST(Layout, ExamplePages) {
  for (auto [name, page] : {std::pair{"settings_800x480", "settings"}, {"status_320x240", "main"},
                            {"controls_480x272", "main"}, {"dashboard_1024x600", "main"}}) {
    SCOPED_TRACE(name);
    const ubtest::Composed c = ubtest::compose_page(example(name), page, false);
    expect_text(c.layout.text, std::string(name) + ".json");
    expect_text(c.logic, std::string(name) + "Logic.cc.expected");
  }
}
TEST(Layout, BenchPage) {
  const ubtest::Composed c = ubtest::compose_page(example("bench_page_1024x600"), "main", false);
  const std::string& text = c.layout.text;
  const std::string& logic = c.logic;
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
    const ubtest::Composed c = ubtest::compose_page(example("showcase_" + size));
    std::string pictures;  // in name order, as the files of resources/images list
    for (const ub::Picture& p : c.pictures) pictures += p.name + "\n" + p.png;
    const std::string pin = expected_path("pins/showcase_" + size);
    ubtest::expect_pinned(c.layout.text, pin + ".layout");
    ubtest::expect_pinned(c.logic, pin + ".logic");
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
  expect_text(ubtest::compose_page(spec, "main", false).layout.text, "small_page_480x272.json");
}
