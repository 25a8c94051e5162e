// Picture emission of the 1024x600 bench page: bytes written, and the time of drawing,
// encoding and writing every picture, against an honest floor: the same images (decoded
// from this run's files) through libpng's default encoder (RGBA, level 6, its own filter
// choice). The first emission of the process includes loading the icon library.
// Usage: emit_bench [runs] [spec]
#include <png.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>

#include "compose.h"
#include "spec/library.h"
#include "gen_res/image.h"

namespace fs = std::filesystem;
using namespace ub;

namespace {

// Process CPU time: steadier than wall time on a shared machine.
double cpu_now() {
  timespec ts;
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &ts);
  return ts.tv_sec + ts.tv_nsec / 1e9;
}

// libpng with every setting at its default except the level, written to a file.
void save_png_default(const gen_res::Image& img, const std::string& path) {
  FILE* f = std::fopen(path.c_str(), "wb");
  if (!f) throw std::runtime_error("cannot write " + path);
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  if (setjmp(png_jmpbuf(png))) {
    png_destroy_write_struct(&png, &info);
    std::fclose(f);
    throw std::runtime_error("PNG encoding failed for " + path);
  }
  png_init_io(png, f);
  png_set_IHDR(png, info, img.w, img.h, 8, PNG_COLOR_TYPE_RGBA, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
               PNG_FILTER_TYPE_DEFAULT);
  png_set_compression_level(png, 6);
  png_write_info(png, info);
  for (int y = 0; y < img.h; ++y) png_write_row(png, const_cast<png_bytep>(img.at(0, y)));
  png_write_end(png, nullptr);
  png_destroy_write_struct(&png, &info);
  std::fclose(f);
}

Json read_json(const std::string& path) {
  std::ifstream in(path);
  std::stringstream ss;
  ss << in.rdbuf();
  return Json::parse(ss.str());
}

uintmax_t dir_bytes(const std::string& dir) {
  uintmax_t n = 0;
  for (const auto& e : fs::directory_iterator(dir)) n += e.file_size();
  return n;
}

}  // namespace

int main(int argc, char** argv) {
  int runs = argc > 1 ? std::max(1, std::atoi(argv[1])) : 5;
  std::string spec_path = argc > 2 ? argv[2] : std::string(UB_SOURCE_DIR) + "/examples/bench_page_1024x600.json";
  const std::string blocks = std::string(UB_SOURCE_DIR) + "/templates/ui_blocks/blocks";
  const Installation inst = load_installation(load_json(blocks + "/_tokens.json"), blocks,
                                              std::string(UB_SOURCE_DIR) + "/components/icons",
                                              std::string(UB_SOURCE_DIR) + "/ui_tools/ui_emit/required_keys.json");
  Composer cmp(read_json(spec_path), "main", inst);
  cmp.document();  // registers the pictures
  std::string root = (fs::temp_directory_path() / ("emit_bench_" + std::to_string(::getpid()))).string();
  fs::remove_all(root);
  std::string out = root + "/resources/images";

  std::ostringstream icon_lines;  // the per-icon lines are not measured output
  std::vector<std::string> made;
  double first = 0, best = 1e9;
  for (int r = 0; r < runs; ++r) {
    fs::remove_all(root);
    double t0 = cpu_now();
    made = cmp.pictures().emit_assets(root, icon_lines);
    double t = cpu_now() - t0;
    if (r == 0) first = t;
    best = std::min(best, t);
  }

  std::vector<gen_res::Image> images;
  size_t pixels = 0;
  for (const std::string& n : made) {
    images.push_back(gen_res::load_png(out + "/" + n));
    pixels += (size_t)images.back().w * images.back().h;
  }
  uintmax_t bytes = dir_bytes(out);
  std::string floor_dir = root + "/floor";
  double floor_best = 1e9;
  for (int r = 0; r < runs; ++r) {
    fs::remove_all(floor_dir);
    fs::create_directories(floor_dir);
    double t0 = cpu_now();
    for (size_t i = 0; i < images.size(); ++i) save_png_default(images[i], floor_dir + "/" + made[i]);
    floor_best = std::min(floor_best, cpu_now() - t0);
  }
  uintmax_t floor_bytes = dir_bytes(floor_dir);
  std::printf("bench page pictures   %zu (%.2f Mpx), CPU time, best of %d runs unless said\n", made.size(),
              pixels / 1e6, runs);
  std::printf("picture bytes         %ju (libpng default level 6: %ju)\n", bytes, floor_bytes);
  std::printf("emission, first run   %.1f ms (icon loading included)\n", first * 1e3);
  std::printf("emission, best run    %.1f ms\n", best * 1e3);
  std::printf("floor: libpng lvl 6   %.1f ms (encode and write only)\n", floor_best * 1e3);
  std::printf("first run / floor     %.2f\n", first / floor_best);
  fs::remove_all(root);
  return 0;
}
