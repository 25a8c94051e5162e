#include "kinds/registry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "page_bench.h"
#include "spec/library.h"
#include "test_support.h"

using namespace ub;

namespace {

std::vector<std::string> kind_names() {
  std::vector<std::string> names;
  for (const BlockKind* k : block_kinds().all()) names.push_back(k->type);
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace

TEST(Kinds, EveryLibraryTypeHasExactlyOneKindAndEveryKindALibraryType) {
  std::vector<std::string> library;
  for (const auto& [type, def] : ubtest::installation().blocks) library.push_back(type);
  const std::vector<std::string> kinds = kind_names();
  EXPECT_EQ(std::adjacent_find(kinds.begin(), kinds.end()), kinds.end()) << "a type with two kinds";
  EXPECT_EQ(kinds, library);
  std::set<std::string> prefixes;
  for (const BlockKind* k : block_kinds().all()) {
    SCOPED_TRACE(k->type);
    EXPECT_EQ(block_kinds().find(std::string(k->type)), k);
    EXPECT_NE(k->build, nullptr);
    // Unnamed blocks of two kinds must never share captions.
    EXPECT_TRUE(prefixes.insert(k->prefix).second) << "prefix " << k->prefix << " taken twice";
  }
  EXPECT_EQ(block_kinds().find(Json(7)), nullptr);
  EXPECT_EQ(block_kinds().find(std::string("carousel")), nullptr);
}

TEST(Kinds, PlacesAgreeWithTheFlow) {
  for (const BlockKind* k : block_kinds().all()) {
    SCOPED_TRACE(k->type);
    EXPECT_TRUE(k->places & kOnPage);
    // Bands and overlays stand on the page only; rows stand in every container.
    if (k->flow != Flow::Content) { EXPECT_EQ(k->places, unsigned{kOnPage}); }
    if (k->family != RowFamily::None) { EXPECT_EQ(k->places, unsigned{kOnPage | kInCard | kInForm}); }
    if (k->holds_blocks) { EXPECT_EQ(k->places, unsigned{kOnPage}) << "containers do not nest"; }
  }
  // Each flow role the page needs has its kind.
  for (Flow f : {Flow::Title, Flow::TopBand, Flow::NavBand, Flow::Footer, Flow::Dialog, Flow::Toast})
    EXPECT_EQ(block_kinds().with_flow(f).flow, f);
}

TEST(Kinds, UnknownTypeMessageListsEveryType) {
  std::string msg = "(no stop)";
  try {
    ubtest::composer(ubtest::page_spec(800, 480, Json::parse(R"([{"type": "carousel"}])")))->run();
  } catch (const StopError& e) {
    msg = e.what();
  }
  EXPECT_EQ(msg,
            "[X] 未知块类型：carousel（可用：" + join(kind_names(), ", ") + "）\n  at page.blocks[0] (carousel Block1)");
}
