#include "driver/depfile.h"

#include <gtest/gtest.h>

#include "base/values.h"

using namespace ub;

TEST(Depfile, PathsAreEscapedAsMakeAndNinjaReadThem) {
  EXPECT_EQ(depfile_path("/a/b.json"), "/a/b.json");
  EXPECT_EQ(depfile_path("/my pages/#1 $x.json"), "/my\\ pages/\\#1\\ $$x.json");
  // Backslashes before an escaped character are doubled; others stay.
  EXPECT_EQ(depfile_path("a\\ b\\c"), "a\\\\\\ b\\c");
  EXPECT_THROW(depfile_path("a\nb"), InputError);
}

TEST(Depfile, TargetsThenEachDependencyOnce) {
  EXPECT_EQ(depfile_text({"/p/ui/a.json", "/p/ui/b c.json"}, {"/s.json", "/lib/x.json", "/s.json"}),
            "/p/ui/a.json /p/ui/b\\ c.json: \\\n  /s.json \\\n  /lib/x.json\n");
  EXPECT_EQ(depfile_text({"/t"}, {}), "/t:\n");
}
