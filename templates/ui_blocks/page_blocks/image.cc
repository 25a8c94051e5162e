// Image: a picture the author ships in the project under resources/ (`src` relative to
// it), shown in a box of the content width: "contain" scales it down into the box
// keeping its aspect, "center" keeps its size and cuts what is larger than the box. The
// box is as high as the fitted picture, at most the content window. The picture is
// redrawn at the exact size of its box under a name of its own, so the shipped file is
// never written.
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <tuple>

#include "assets/shipped_picture.h"
#include "kinds/block_kind.h"
#include "page_blocks/page_blocks.h"

namespace ub {

namespace {

struct ImageBoxes {
  std::string src, path, shown;
  bool contain = true;
  int pic_w = 0, pic_h = 0;  // the shipped picture
  int box_w = 0, box_h = 0;  // its box
  int height = 0;            // the whole block
};

ImageBoxes image_boxes(const PageContext& page, const BlockRecord& blk, int w) {
  const Metrics& m = page.m;
  ImageBoxes b;
  const std::string fit = text(blk, "fit");
  if (fit != "contain" && fit != "center")
    stop(cat("[X] image.fit 只支持 contain / center，得到 ", literal_form(value(blk, "fit"))));
  b.contain = fit == "contain";
  b.src = text(blk, "src");
  b.path = shipped_path(page.project_root, b.src, "image.src");
  b.shown = "resources/" + b.src;
  std::tie(b.pic_w, b.pic_h) = shipped_size(b.path, b.shown);
  b.box_w = w - 2 * m.pad_l;
  const int most_h = std::max(m.viewport - 2 * m.spacer, 4);
  b.box_h = std::min(r4up(fitted_size(b.pic_w, b.pic_h, b.box_w, most_h, b.contain).second), std::max(r4(most_h), 4));
  b.height = m.spacer + b.box_h + m.spacer;
  return b;
}

int image_height(const PageContext& page, const BlockRecord& blk) {
  return image_boxes(page, blk, page.m.content_w).height;
}

// The shipped file's name as a picture name's part: letters, digits, "-" and "_".
std::string name_part(const std::string& src) {
  std::string stem = std::filesystem::path(src).stem().string(), out;
  for (unsigned char ch : stem) out += std::isalnum(ch) || ch == '-' || ch == '_' ? (char)ch : '_';
  return out.substr(0, 40);
}

}  // namespace

int build_image(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y, int w) {
  const Metrics& m = bd.page.m;
  const ImageBoxes b = image_boxes(bd.page, blk, w);
  const auto [fw, fh] = fitted_size(b.pic_w, b.pic_h, b.box_w, b.box_h, b.contain);
  if (fw < b.pic_w || fh < b.pic_h)
    bd.notes.add(cat("image ", blk.name, "：", b.shown, " ", b.pic_w, "x", b.pic_h, b.contain ? " 缩小为 " : " 居中裁切为 ", fw,
                     "x", fh, "（盒 ", b.box_w, "x", b.box_h, "）"));
  gen_res::Image pixels = fit_into_box(read_shipped(b.path, b.shown), b.box_w, b.box_h, b.contain);
  bd.data.shipped.push_back(b.path);  // an input of the run, for depfiles and builds
  std::string digest = pixels_digest(pixels);
  const std::string name = cat("img_", name_part(b.src), "_", b.box_w, "x", b.box_h, "_", digest, ".png");
  parent.push_back(bd.controls.deco(cat("Image", caption_id(blk)),
                                    bd.controls.box(x + m.pad_l, y + m.spacer, b.box_w, b.box_h), bd.page.col("fg1"),
                                    bd.pictures.shipped(name, std::move(pixels), std::move(digest))));
  return y + b.height;
}

extern const BlockKind kImage{.type = "image",
                              .prefix = "Image",
                              .places = kOnPage | kInCard | kInForm,
                              .group_gap = true,
                              .planned_height = image_height,
                              .build = at_xyw<build_image>};

}  // namespace ub
