#include "driver/build_options.h"

#include <gtest/gtest.h>

#include "driver/cli.h"

using namespace ub;

namespace {
std::string usage_error(const std::vector<std::string>& a) {
  try {
    parse_build_args(a);
  } catch (const UsageError& e) {
    return e.what();
  }
  return "(no error)";
}
}  // namespace

TEST(BuildOptions, DefaultsAndEveryOption) {
  BuildOptions o = parse_build_args({}).opts;
  EXPECT_EQ(std::tie(o.project, o.jobs, o.prune, o.force, o.render, o.check, o.verbose),
            std::tuple(".", 0, false, false, false, true, false));
  o = parse_build_args({"proj", "-j", "3", "--prune", "--force", "--render", "--font=f.ttf", "--no-check", "-v"}).opts;
  EXPECT_EQ(std::tie(o.project, o.jobs, o.prune, o.force, o.render, o.check, o.verbose),
            std::tuple("proj", 3, true, true, true, false, true));
  EXPECT_EQ(o.font, "f.ttf");
  EXPECT_EQ(parse_build_args({"-j8"}).opts.jobs, 8);
  EXPECT_EQ(parse_build_args({"--jobs=2"}).opts.jobs, 2);
  EXPECT_TRUE(parse_build_args({"--bogus", "-h"}).help);
}

TEST(BuildOptions, UsageErrors) {
  EXPECT_EQ(usage_error({"-j", "0"}), "argument -j/--jobs: expected a whole number of 1 or more, got '0'");
  EXPECT_EQ(usage_error({"-jx"}), "argument -j/--jobs: expected a whole number of 1 or more, got 'x'");
  EXPECT_EQ(usage_error({"-j"}), "argument -j: expected one argument");
  EXPECT_EQ(usage_error({"a", "b"}), "unrecognized arguments: b");
  EXPECT_EQ(usage_error({"--prune=yes"}), "argument --prune: ignored explicit argument 'yes'");
  EXPECT_EQ(usage_error({"--pru"}), "unrecognized arguments: --pru");
}
