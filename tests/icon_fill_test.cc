// Icons on large screens fill their box as they do at 800x480: the glyph grows with the
// box instead of staying a 24 px picture in the middle of a larger one.
#include <gtest/gtest.h>

#include <sstream>

#include "assets/registry.h"
#include "compose.h"
#include "design_lint/design_lint.h"
#include "gen_res/png_writer.h"
#include "json2img/layout_reader.h"
#include "test_support.h"

namespace {

TEST(IconFill, GridAndToolbarGlyphsFillTheirBoxAtEverySize) {
  const Json blocks = Json::parse(R"([
    {"type": "toolbar", "title": "T", "back": true},
    {"type": "grid_icons", "cols": 4, "tappable": true,
     "items": [{"icon": "bulb", "text": "A"}, {"icon": "ac", "text": "B"},
               {"icon": "fan", "text": "C"}, {"icon": "lock", "text": "D"}]}])");
  for (auto [w, h] : std::vector<std::pair<int, int>>{{800, 480}, {1024, 600}, {1280, 800}}) {
    SCOPED_TRACE(std::to_string(w) + "x" + std::to_string(h));
    ub::Composer cmp(ubtest::page_spec(w, h, blocks), "main", ubtest::installation());
    const ub::LayoutText text = cmp.layout();
    std::ostringstream log;
    const std::vector<ub::Picture> pics = ub::render_registry(cmp.pictures().all(), ubtest::installation().icons, log);
    lint::PictureCache cache("/nonexistent");
    for (const ub::Picture& p : pics) cache.add_png(p.name, &p.png);
    const layout::Layout lay = layout::read_layout_text(text.text);
    int icons = 0;
    for (const layout::Control& c : lay.controls) {
      if (c.caption.find("Icon") == std::string::npos || c.caption.find("IconBg") != std::string::npos) continue;
      ++icons;
    }
    EXPECT_GE(icons, 4);
    EXPECT_TRUE(lint::glyph_findings(lay, cache.source()).empty());
    // The grid glyph spans at least 70% of its box: 20 of 24 px at 800x480.
    for (const ub::Picture& p : pics) {
      if (p.name.rfind("ic_bulb_", 0) != 0) continue;
      const gen_res::Image img = gen_res::decode_png(p.png);
      int x0 = img.w, x1 = -1;
      for (int y = 0; y < img.h; ++y)
        for (int x = 0; x < img.w; ++x)
          if (img.at(x, y)[3] >= 128) x0 = std::min(x0, x), x1 = std::max(x1, x);
      EXPECT_GE((x1 - x0 + 1) * 10, img.w * 7) << p.name;
    }
  }
}

}  // namespace
