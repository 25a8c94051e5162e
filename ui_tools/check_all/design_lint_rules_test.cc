#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "base/values.h"
#include "check_all/check_all.h"
#include "gen_res/image.h"

namespace fs = std::filesystem;

namespace {

Json at(int l, int t, int w, int h) { return {{"left", l}, {"top", t}, {"width", w}, {"height", h}}; }

// A page with one too-small button, one pale text and one tiny icon: three warnings,
// and still a passing run.
TEST(DesignLintRules, WarnWithCaptionAndSizeButNeverFail) {
  std::string root = (fs::temp_directory_path() / "ub_lint_rules_XXXXXX").string();
  ASSERT_TRUE(mkdtemp(root.data()));
  for (const char* d : {"/ui", "/resources/images", "/src/logic"}) fs::create_directories(root + d);
  Json doc = {{"id", 0}, {"position", at(0, 0, 320, 240)}, {"resolution", {{"width", 320}, {"height", 240}}},
              {"backgroundColor", 0xFFFFFF}};
  doc["button__1"] = {{"id", 20001}, {"caption", "Ok"}, {"position", at(8, 8, 64, 16)}, {"touchable", true}};
  doc["textview__1"] = {{"id", 50001},        {"caption", "Pale"}, {"position", at(8, 40, 200, 24)},
                        {"alignment", 36},    {"fontSize", 14},    {"colorTab", {{"color0", 0xBBBBBB}}},
                        {"text", "Hi"},       {"touchable", false}};
  doc["textview__2"] = {{"id", 50002},   {"caption", "Icon"},   {"position", at(8, 80, 48, 48)},
                        {"text", ""},    {"touchable", false},  {"backgroundPic", "images/ic_48.png"}};
  std::ofstream(root + "/ui/main.json") << doc.dump(2);
  std::ofstream(root + "/src/logic/mainLogic.cc") << "static bool onButtonClick_Ok(TVButton *p) { return false; }\n";
  gen_res::Image icon(48, 48);
  for (int y = 16; y < 32; ++y)
    for (int x = 16; x < 32; ++x) icon.at(x, y)[3] = 255;
  gen_res::save_png(icon, root + "/resources/images/ic_48.png");

  ::testing::internal::CaptureStdout();
  const int status = tools::check_all_main({root}, lint::Settings{32});
  const std::string out = ::testing::internal::GetCapturedStdout();
  EXPECT_EQ(status, 0) << out;
  EXPECT_NE(out.find("[!] #2 ui/main.json button__1「Ok」 64x16 < touch_min 32 px\n"), std::string::npos) << out;
  EXPECT_NE(out.find("[!] #3 ui/main.json textview__1「Pale」 200x24 文字「Hi」对比度 1.9:1 < 4.5:1（#BBBBBB 在 #FFFFFF 上）\n"),
            std::string::npos)
      << out;
  EXPECT_NE(out.find("[!] #4 ui/main.json textview__2「Icon」 48x48 字形只有 16 px（33% < 55%）\n"), std::string::npos)
      << out;
  EXPECT_NE(out.find("[OK] check_all 全部通过：17 条规则，[!] 3 处"), std::string::npos) << out;

  // Without touch_min (no tokens) the touch rule says so and warns about nothing.
  ::testing::internal::CaptureStdout();
  EXPECT_EQ(tools::check_all_main({root}), 0);
  const std::string plain = ::testing::internal::GetCapturedStdout();
  EXPECT_EQ(plain.find("[!] #2"), std::string::npos) << plain;
  EXPECT_NE(plain.find("[OK] #2 没有 touch_min"), std::string::npos) << plain;
  fs::remove_all(root);
}

}  // namespace
