#include "serve/serve_options.h"

#include <gtest/gtest.h>

#include "driver/cli.h"
#include "serve/recompose.h"

namespace {

using serve::parse_serve_args;

TEST(ServeOptions, DefaultsAndEveryOption) {
  auto o = parse_serve_args({"spec.json", "--project", "P"});
  EXPECT_EQ(std::tuple(o.spec, o.project, o.page, o.port, o.sizes.size()), std::tuple("spec.json", "P", "main", 8765, 0u));
  EXPECT_FALSE(o.no_logic);
  o = parse_serve_args({"--port=0", "s.json", "--project=P", "--page", "home", "--no-logic"});
  EXPECT_EQ(std::tuple(o.port, o.page, o.no_logic), std::tuple(0, "home", true));
}

TEST(ServeOptions, ThemeIsPassedOnToEveryRun) {
  auto o = parse_serve_args({"s.json", "--project", "P", "--tokens", "theme/dark.json"});
  EXPECT_EQ(o.tokens, "theme/dark.json");
  EXPECT_EQ(serve::plan_runs("compose", o)[0].argv,
            (std::vector<std::string>{"compose", "s.json", "--project", "P", "--page", "main", "--tokens", "theme/dark.json"}));
  EXPECT_THROW(parse_serve_args({"s.json", "--project", "P", "--tokens"}), ub::UsageError);
}

TEST(ServeOptions, SizesAsOneListOrSeveralWords) {
  auto o = parse_serve_args({"s.json", "--sizes", "800x480,480x272", "320x240", "--project", "P"});
  ASSERT_EQ(o.sizes.size(), 3u);
  EXPECT_EQ(o.sizes[0].w, 800);
  EXPECT_EQ(o.sizes[1].h, 272);
  EXPECT_EQ(o.sizes[2].w, 320);
  // A spec file after --sizes is not taken for a size.
  o = parse_serve_args({"--project", "P", "--sizes", "800x480", "x.json"});
  EXPECT_EQ(o.spec, "x.json");
  EXPECT_EQ(o.sizes.size(), 1u);
}

TEST(ServeOptions, BadCommandLinesAreUsageErrors) {
  const std::vector<std::vector<std::string>> bad = {
      {},
      {"s.json"},
      {"--project", "P"},
      {"s.json", "--project"},
      {"s.json", "--project", "P", "--port", "65536"},
      {"s.json", "--project", "P", "--port", "8x"},
      {"s.json", "--project", "P", "--sizes", "800"},
      {"s.json", "--project", "P", "--sizes", "0x480"},
      {"s.json", "--project", "P", "--page", "../x"},
      {"s.json", "--project", "P", "--render"},
      {"s.json", "--project", "P", "--no-logic=1"},
      {"s.json", "t.json", "--project", "P"},
  };
  for (const auto& args : bad) EXPECT_THROW(parse_serve_args(args), ub::UsageError) << ::testing::PrintToString(args);
}

}  // namespace
