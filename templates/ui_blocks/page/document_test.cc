#include <gtest/gtest.h>

#include "page/page_layout.h"
#include "page_bench.h"
#include "spec/library.h"

using namespace ub;

namespace {

struct Document : ::testing::Test {
  ubtest::PageBench c{ubtest::page_spec(800, 480)};
  NodePtr label(const std::string& cap, const std::string& txt) {
    return c.controls.text(cap, {16, 0, 300, 24}, 18, c.ctx.col("fg1"), txt);
  }
  std::string stop_of(const NodeList& nodes) {
    try {
      page_layout(nodes, LayoutRoot{800, 480, 0}, ubtest::required_keys(), "main", {}, c.rows);
    } catch (const StopError& e) {
      return e.what();
    }
    return "";
  }
};

}  // namespace

TEST_F(Document, DuplicateCaptionsStop) {
  EXPECT_EQ(stop_of({label("Twice", "a"), label("Twice", "b")}),
            "[X] caption 重名 1 个（页面 main）：重名 ⇒ onButtonClick_<caption> 重定义 ⇒ C++ 编译必失败\n"
            "    - Twice 出现 2 次：textview__1, textview__2");
}

TEST_F(Document, ForbiddenCharactersListEightTexts) {
  NodeList nodes;
  for (int i = 1; i <= 9; ++i) nodes.push_back(label(cat("Bad", i), cat("第", i, "项…")));
  std::string msg = stop_of(nodes);
  EXPECT_EQ(msg.substr(0, msg.find("\n")),
            "[X] 文本含引擎字库黑名单字符 –、…、‹、℃、→、⌫、①、■、▶、▷、◆、●、★、＋、－"
            "（check_all 会 FAIL）——请改用 ASCII 等价写法（如 … → ...；℃ → 摄氏度）：");
  EXPECT_NE(msg.find("\n    Bad1: 第1项…\n    Bad2: 第2项…"), std::string::npos);
  EXPECT_NE(msg.find("Bad8: 第8项…"), std::string::npos);
  EXPECT_EQ(msg.find("Bad9"), std::string::npos);
}

TEST_F(Document, BuildingTheDocumentIsRepeatable) {
  // A page with text positions, pictures, inputs and list templates in its payloads.
  const Json spec = ub::load_json(ubtest::source_dir() + "/examples/settings_800x480.json");
  Composer page(spec, "main", ubtest::installation());
  const Json doc = page.document();
  EXPECT_EQ(page.document(), doc);
  EXPECT_EQ(Composer(spec, "main", ubtest::installation()).document(), doc);
}
