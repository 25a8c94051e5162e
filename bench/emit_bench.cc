// Emission speed of a large page: the time of writing every picture of a registry
// against the time of only PNG-encoding the same images. The drawing should cost at
// most as much as the encoding (ratio <= 2).
// Usage: emit_bench [runs]
#include <ctime>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "assets/registry.h"
#include "gen_res/image.h"
#include "iconlib/iconlib.h"

namespace fs = std::filesystem;
using namespace ub;

namespace {

// A page with scrims, cards, rows, tabs, controls, charts and many icons.
AssetMap big_page() {
  AssetMap a;
  std::vector<IconUse> uses;
  std::vector<IconFallback> fallbacks;
  std::string page = "bench";
  IconBook book{a, uses, fallbacks, page};
  Rgba brand{22, 119, 255, 255}, surface{255, 255, 255, 255}, line{220, 220, 220, 255};
  for (int k = 0; k < 4; ++k) a["scrim_" + std::to_string(k) + ".png"] = shape_entry(1024, 600, 0, {0, 0, 0, 60 + 30 * k}, {}, 1);
  a["dialog.png"] = shape_entry(640, 360, 16, surface, {}, 1);
  for (int k = 0; k < 10; ++k) {
    int h = 120 + 40 * k;
    a["card_976x" + std::to_string(h) + ".png"] = shape_entry(976, h, 12, surface, line, 1);
  }
  for (int k = 0; k < 10; ++k) a["row_" + std::to_string(k) + ".png"] = shape_entry(976, 64 + k, 8, surface, {}, 1);
  for (int k = 0; k < 6; ++k) {
    int l = k * 162;
    a["ind_162x4_l" + std::to_string(l) + ".png"] = clip_entry(162, 4, 24, brand, 976, 48, l, 44, 8);
    a["tab_on_162x44_l" + std::to_string(l) + ".png"] = clip_entry(162, 44, 24, brand, 976, 48, l, 0, 8);
  }
  for (int k = 0; k < 6; ++k) a["chev_" + std::to_string(k) + ".png"] = chevron_entry(12 + 2 * k, 16 + 2 * k, {150, 150, 150, 255});
  for (int k = 0; k < 4; ++k) a["seek_" + std::to_string(k) + ".png"] = bar_entry(600, 32, 6 + k, brand);
  a["cb_on.png"] = mark_entry(32, 32, 6, brand, "check", 24, surface, {}, 1);
  a["cb_off.png"] = mark_entry(32, 32, 6, surface, "", 0, {}, line, 2);
  a["rb_on.png"] = mark_entry(32, 32, 16, brand, "dot", 14, surface, {}, 1);
  a["chart_line.png"] = chart_entry(976, 240, "line", {3, 5, 2, 8, 6, 7, 4, 9, 5, 6, 8, 7}, brand, line, 1);
  a["chart_bar.png"] = chart_entry(976, 240, "bar", {3, 5, 2, 8, 6, 7, 4, 9, 5, 6, 8, 7}, brand, line, 1);
  const char* tokens[] = {"wifi", "bluetooth", "settings", "home", "user", "lock", "bell", "volume", "brightness",
                          "battery", "power", "search", "trash", "edit", "plus", "minus", "calendar", "clock",
                          "info", "check", "warning", "close", "arrow-left", "more", "photo", "loader"};
  int sizes[] = {24, 32, 40, 56};
  for (const char* t : tokens)
    for (int s : sizes)
      declare_glyph(book, "ic_" + std::string(t) + "_" + std::to_string(s) + ".png", t, s, brand, std::pair{s, s},
                    std::string(s == 56 ? "on" : "off"));
  return a;
}

// Process CPU time: steadier than wall time on a shared machine.
double cpu_now() {
  timespec ts;
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &ts);
  return ts.tv_sec + ts.tv_nsec / 1e9;
}

}  // namespace

int main(int argc, char** argv) {
  iconlib::set_root(std::string(UB_SOURCE_DIR) + "/components/icons");
  int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 5;
  AssetMap assets = big_page();
  std::string root = (fs::temp_directory_path() / "emit_bench").string();
  fs::remove_all(root);
  std::string out = root + "/resources/images";

  double best_emit = 1e9;
  std::streambuf* saved = std::cout.rdbuf(nullptr);  // the per-icon lines are not measured output
  std::vector<std::string> made;
  for (int r = 0; r < runs; ++r) {
    double t0 = cpu_now();
    made = emit_registry(assets, root);
    best_emit = std::min(best_emit, cpu_now() - t0);
  }
  std::cout.rdbuf(saved);
  std::cout.clear();

  std::vector<gen_res::Image> images;
  size_t pixels = 0, bytes = 0;
  for (const std::string& n : made) {
    images.push_back(gen_res::load_png(out + "/" + n));
    pixels += (size_t)images.back().w * images.back().h;
    bytes += fs::file_size(out + "/" + n);
  }
  std::string enc_dir = root + "/encode_only";
  fs::create_directories(enc_dir);
  double best_encode = 1e9;
  for (int r = 0; r < runs; ++r) {
    double t0 = cpu_now();
    for (size_t i = 0; i < images.size(); ++i) gen_res::save_png(images[i], enc_dir + "/" + made[i]);
    best_encode = std::min(best_encode, cpu_now() - t0);
  }
  std::printf("pictures %zu (%.1f Mpx, %.0f KiB of PNG), best of %d runs, CPU time\n", made.size(), pixels / 1e6,
              bytes / 1024.0, runs);
  std::printf("emit_assets   %.1f ms\n", best_emit * 1e3);
  std::printf("encode only   %.1f ms\n", best_encode * 1e3);
  std::printf("ratio         %.2f (target <= 2)\n", best_emit / best_encode);
  fs::remove_all(root);
  return 0;
}
