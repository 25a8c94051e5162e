#include <filesystem>
#include <fstream>

#include "assets/shipped_picture.h"
#include "block_test_util.h"
#include "kinds/block_kind.h"
#include "rows/rows.h"

namespace ub {
extern const BlockKind kImage;
}

namespace {

using namespace pbtest;
namespace fs = std::filesystem;

// A project whose resources/photos holds a w x h picture, left half red, right half blue.
std::string project_with(int w, int h, const std::string& name = "logo.png") {
  const std::string root = ubtest::temp_dir("image_kind");
  fs::create_directories(root + "/resources/photos");
  gen_res::Image img(w, h, {0, 0, 255, 255});
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w / 2; ++x) img.at(x, y)[0] = 255, img.at(x, y)[2] = 0;
  gen_res::save_png(img, root + "/resources/photos/" + name);
  return root;
}

struct Built {
  std::unique_ptr<ubtest::PageBench> c;
  ub::NodeList nodes;
  int bottom = 0;
  int planned = 0;
};

Built build(int w, int h, const std::string& root, const Json& blk) {
  Built b;
  b.c = ubtest::bench(w, h);
  b.c->ctx.project_root = root;
  ubtest::Named rec(blk, 4);
  const auto& m = b.c->m;
  b.bottom = ub::kImage.build(b.c->bd, rec, b.nodes, ub::Spot{m.margin, 0, m.content_w});
  b.planned = ub::row_height(b.c->ctx, rec);
  return b;
}

const uint8_t* px(const ub::Asset& a, int x, int y) { return a.pixels->at(x, y); }

TEST(Image, ContainScalesALargePictureDownIntoItsBox) {
  const std::string root = project_with(1600, 400);
  for (auto [w, h] : {std::pair{320, 240}, {800, 480}, {1280, 800}}) {
    SCOPED_TRACE(ub::cat(w, "x", h));
    Built b = build(w, h, root, {{"type", "image"}, {"src", "photos/logo.png"}});
    const auto& m = b.c->m;
    ASSERT_EQ(b.nodes.size(), 1u);
    const auto& nd = *b.nodes[0];
    EXPECT_EQ(nd.caption, "Image4");
    const ub::Asset& a = b.c->pictures.all().at(bg_name(nd));
    // The picture is exactly its box; the box is the content width less the padding.
    EXPECT_EQ(std::pair(a.w, a.h), std::pair(nd.pos.width, nd.pos.height));
    EXPECT_EQ(nd.pos.width, m.content_w - 2 * m.pad_l);
    EXPECT_EQ(nd.pos.height, ub::r4up(400.0 * nd.pos.width / 1600));
    EXPECT_TRUE(bg_name(nd).starts_with(ub::cat("img_logo_", a.w, "x", a.h, "_")));
    EXPECT_EQ(px(a, 2, a.h / 2)[0], 255);
    EXPECT_EQ(px(a, a.w - 3, a.h / 2)[2], 255);
    EXPECT_EQ(b.bottom, b.planned);
    EXPECT_EQ(b.c->notes.all().size(), 1u);
  }
  fs::remove_all(root);
}

TEST(Image, CenterKeepsTheSizeAndCutsWhatIsLarger) {
  const std::string root = project_with(40, 18);
  Built b = build(800, 480, root, {{"type", "image"}, {"src", "photos/logo.png"}, {"fit", "center"}});
  const ub::Asset& a = b.c->pictures.all().at(bg_name(*b.nodes[0]));
  EXPECT_EQ(a.h, 20);
  // Centred on a transparent box: one empty row above and below.
  const int x0 = (a.w - 40) / 2;
  EXPECT_EQ(px(a, x0, 1)[0], 255);
  EXPECT_EQ(px(a, x0 - 1, 1)[3], 0);
  EXPECT_EQ(px(a, x0, 0)[3], 0);
  EXPECT_EQ(px(a, x0 + 39, 18)[2], 255);
  EXPECT_TRUE(b.c->notes.all().empty());
  // A picture taller than the content window is cut to it, with a note.
  const std::string tall = project_with(100, 2000, "tall.png");
  Built t = build(480, 272, tall, {{"type", "image"}, {"src", "photos/tall.png"}, {"fit", "center"}});
  EXPECT_LE(t.nodes[0]->pos.height, t.c->m.viewport);
  EXPECT_NE(t.c->notes.all().at(0).find("居中裁切为 100x"), std::string::npos);
  fs::remove_all(root);
  fs::remove_all(tall);
}

TEST(Image, EveryBadSourceIsALocatedStopBeforeAnythingIsWritten) {
  const std::string root = project_with(10, 10);
  std::ofstream(root + "/resources/photos/notes.png") << "not a picture";
  const std::string outside = ubtest::temp_dir("image_outside");
  gen_res::save_png(gen_res::Image(4, 4), outside + "/x.png");
  fs::create_directory_symlink(outside, root + "/resources/away");
  const std::vector<std::pair<Json, std::string>> cases = {
      {"photos/none.png", "[X] image.src 找不到图片：resources/photos/none.png"},
      {"../photos/logo.png", "[X] image.src 必须是 resources/ 里的相对路径：../photos/logo.png"},
      {root + "/resources/photos/logo.png", "[X] image.src 必须是 resources/ 里的相对路径：" + root + "/resources/photos/logo.png"},
      {"away/x.png", "[X] image.src 必须是 resources/ 里的相对路径：away/x.png"},
      {"photos/notes.png", "[X] 图片不是可读的 PNG：resources/photos/notes.png"},
      {"photos", "[X] image.src 找不到图片：resources/photos"},
  };
  for (const auto& [src, message] : cases) {
    SCOPED_TRACE(src.dump());
    Json spec = ubtest::page_spec(800, 480, Json::array({{{"type", "image"}, {"src", src}}}));
    ub::Composer c(spec, "main", ubtest::installation(), nullptr, root);
    EXPECT_EQ(stop_message([&] { c.document(); }), message + "\n  at page.blocks[0] (image Image1)");
  }
  // Inside a card the planned height reads the picture first: the same stop, located.
  Json card = {{"type", "card"}, {"blocks", {{{"type", "image"}, {"src", "photos/none.png"}}}}};
  ub::Composer in_card(ubtest::page_spec(800, 480, Json::array({card})), "main", ubtest::installation(), nullptr, root);
  EXPECT_EQ(stop_message([&] { in_card.document(); }),
            "[X] image.src 找不到图片：resources/photos/none.png\n  at page.blocks[0].blocks[0] (image Image2)");
  // Without a project nothing can be read.
  EXPECT_EQ(stop_message([&] { build(800, 480, "", {{"type", "image"}, {"src", "photos/logo.png"}}); }),
            "[X] image.src 要从项目的 resources/ 读图，但没有项目目录：photos/logo.png");
  EXPECT_EQ(stop_message([&] { build(800, 480, root, {{"type", "image"}, {"src", "photos/logo.png"}, {"fit", "fill"}}); }),
            "[X] image.fit 只支持 contain / center，得到 'fill'");
  fs::remove_all(root);
  fs::remove_all(outside);
}

}  // namespace
