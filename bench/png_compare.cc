// Compares the pictures of two trees: every *.png under REF must exist under OUT at the same
// relative path and decode to the same RGBA pixels, and OUT must hold no other picture.
// Prints the byte totals of both. Exit status 1 on any difference.
// Usage: png_compare REF OUT
#include <cstdio>
#include <filesystem>
#include <map>
#include <string>

#include "gen_res/image.h"

namespace fs = std::filesystem;

namespace {

std::map<std::string, uintmax_t> pictures(const fs::path& root) {
  std::map<std::string, uintmax_t> out;
  for (const auto& e : fs::recursive_directory_iterator(root))
    if (e.is_regular_file() && e.path().extension() == ".png")
      out[fs::relative(e.path(), root).string()] = e.file_size();
  return out;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: png_compare REF OUT\n");
    return 2;
  }
  fs::path ref = argv[1], out = argv[2];
  auto a = pictures(ref), b = pictures(out);
  uintmax_t bytes_a = 0, bytes_b = 0;
  int bad = 0;
  for (const auto& [rel, size] : a) {
    bytes_a += size;
    if (!b.count(rel)) {
      std::printf("missing  %s\n", rel.c_str());
      ++bad;
      continue;
    }
    try {
      gen_res::Image x = gen_res::load_png((ref / rel).string()), y = gen_res::load_png((out / rel).string());
      if (x.w != y.w || x.h != y.h || x.px != y.px) {
        std::printf("differs  %s\n", rel.c_str());
        ++bad;
      }
    } catch (const std::exception& e) {
      std::printf("unreadable  %s: %s\n", rel.c_str(), e.what());
      ++bad;
    }
  }
  for (const auto& [rel, size] : b) {
    bytes_b += size;
    if (!a.count(rel)) {
      std::printf("extra    %s\n", rel.c_str());
      ++bad;
    }
  }
  std::printf("%zu pictures, %ju bytes -> %ju bytes (%.1f%%), %d differ\n", a.size(), bytes_a, bytes_b,
              bytes_a ? 100.0 * bytes_b / bytes_a : 0.0, bad);
  return bad ? 1 : 0;
}
