#include "serve/preview_render.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "driver/toolchain.h"
#include "gen_res/png_writer.h"
#include "test_support.h"

namespace fs = std::filesystem;

namespace {

// A real composition, drawn as the server draws it: the spec's size, its pictures in it.
TEST(PreviewRender, ARealRunIsDrawnAtItsSize) {
  const fs::path dir = ubtest::temp_dir("serve_render");
  fs::create_directories(dir);
  Json blocks = Json::array();
  blocks.push_back(Json::parse(R"({"type": "toggle_row", "label": "蓝牙", "icon": "bluetooth"})"));
  std::ofstream(dir / "spec.json") << ubtest::page_spec(320, 240, blocks).dump();
  serve::ServeOptions o;
  o.spec = (dir / "spec.json").string();
  o.project = (dir / "proj").string();
  const auto plans = serve::plan_runs(COMPOSE_EXE, o);
  ASSERT_EQ(plans.size(), 1u);
  auto r = serve::run_plan(plans[0], "main");
  ASSERT_TRUE(r.ok) << r.stop;
  EXPECT_EQ(r.layout_path, (dir / "proj" / "ui" / "main.json").string());
  EXPECT_TRUE(r.png.empty());

  serve::PreviewRenderer renderer(ub::find_render_font(o.project).value_or(""));
  serve::draw_preview(renderer, (dir / "proj" / "resources" / "images").string(), r);
  const gen_res::Image img = gen_res::decode_png(r.png);
  EXPECT_EQ(std::tuple(img.w, img.h), std::tuple(320, 240));
  std::set<uint32_t> colours;
  for (size_t i = 0; i < img.px.size(); i += 4) colours.insert(img.px[i] << 16 | img.px[i + 1] << 8 | img.px[i + 2]);
  EXPECT_GT(colours.size(), 8u);  // bands, text and the icon, not a blank screen

  // A layout that cannot be drawn keeps no picture and says why.
  r.layout = Json::parse(R"({"id": 0})");
  serve::draw_preview(renderer, (dir / "proj" / "resources" / "images").string(), r);
  EXPECT_TRUE(r.png.empty());
  ASSERT_FALSE(r.notes.empty());
  EXPECT_EQ(r.notes.back().rfind("preview not drawn: ", 0), 0u) << r.notes.back();
  fs::remove_all(dir);
}

}  // namespace
