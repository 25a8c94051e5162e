#include "serve/preview_state.h"

#include <gtest/gtest.h>

namespace {

serve::RunOutcome good(int width, const std::string& png) {
  serve::RunOutcome r;
  r.ok = true;
  r.layout = nlohmann::ordered_json::parse(R"({"resolution":{"width":)" + std::to_string(width) + R"(,"height":240}})");
  r.png = png;
  return r;
}

TEST(PreviewState, OneSharedSnapshotPerVersion) {
  serve::PreviewState state({"800x480", "320x240"});
  int changes = 0;
  state.on_change([&] { ++changes; });
  const auto empty = state.snapshot();
  EXPECT_EQ(empty->version, 0);
  EXPECT_EQ(nlohmann::json::parse(*empty->body)["sizes"][1]["png"], nullptr);

  state.update(0, {good(800, "A"), good(320, "B")});  // the sizes of one run: one version
  EXPECT_EQ(changes, 1);
  const auto first = state.snapshot();
  EXPECT_EQ(first, state.snapshot());  // every answer shares it
  EXPECT_EQ(first->version, 1);
  auto st = nlohmann::json::parse(*first->body);
  EXPECT_EQ(st["sizes"][0]["width"], 800);
  EXPECT_EQ(st["sizes"][1]["png"], "/preview/1.png?v=1");
  EXPECT_EQ(*state.png(1), "B");
  EXPECT_EQ(state.png(2), nullptr);

  // A refused run: a new version that keeps the last good picture and its address; the
  // snapshot handed out before stays as it was.
  serve::RunOutcome refused;
  refused.stop = "bad \xff byte";  // not UTF-8, still written out
  state.update(1, refused);
  EXPECT_EQ(changes, 2);
  st = nlohmann::json::parse(*state.snapshot()->body);
  EXPECT_EQ(st["version"], 2);
  EXPECT_EQ(st["sizes"][1]["ok"], false);
  EXPECT_EQ(st["sizes"][1]["png"], "/preview/1.png?v=1");
  EXPECT_EQ(st["sizes"][1]["stop"], "bad \xef\xbf\xbd byte");
  EXPECT_EQ(nlohmann::json::parse(*first->body)["version"], 1);
}

}  // namespace
