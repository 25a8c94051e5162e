#include <iostream>

#include "assets/registry.h"
#include "iconlib/iconlib.h"
#include "base/values.h"

namespace ub {

namespace {

// Icon names carry page tokens; they must stay file names inside resources/images.
void assert_plain_name(const std::string& name) {
  if (name.find('/') != std::string::npos || name.find('\\') != std::string::npos ||
      name.find('\0') != std::string::npos)
    stop("[X] 图片名不能含路径分隔符：" + name + "（图标语义名请用库里的名字）");
}

std::string text_field(const Json& rec, const char* key) {
  auto it = rec.find(key);
  if (it == rec.end()) return "";
  return it->is_string() ? it->get<std::string>() : to_text(*it);
}

}  // namespace

Asset glyph_entry(IconBook book, const std::string& name, const std::string& g, double size, Rgba color,
                  std::optional<std::pair<int, int>> canvas, std::optional<std::string> state) {
  assert_plain_name(name);
  int sz = (int)trunc_int(size);
  const Json* info = iconlib::available() ? iconlib::find(g) : nullptr;

  Asset a;
  a.g = g;
  a.size = sz;
  a.color = color;
  a.canvas = canvas;
  if (info) {
    a.kind = "libicon";
    a.state = state;
    book.uses.add(g, text_field(*info, "name"), sz, iconlib::tier_of(sz), a.state);
  } else {
    a.kind = "glyph";  // wire-frames have no states
    book.fallbacks.push_back({g, sz, name, book.page});
    std::cout << "  [回退线框] 图标 " << literal_form(Json(g))
              << " 在 components/icons 里没有对应语义名 → 用 gen_res 线框（" << name
              << "；目标 0 处，请改用库里已有语义名）" << std::endl;
  }
  return a;
}

void IconTally::add(const std::string& token, const std::string& name, int size, int tier,
                    const std::optional<std::string>& state) {
  ++uses;
  ++tiers[tier];
  kinds.emplace(token, name, size, tier, state && !state->empty() ? *state : "-");
}

}  // namespace ub
