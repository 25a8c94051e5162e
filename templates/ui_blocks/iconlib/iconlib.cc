#include "iconlib/iconlib.h"

#include <fstream>
#include <map>
#include <stdexcept>
#include <string_view>
#include <unordered_map>

namespace iconlib {

namespace {

struct Library {
  std::string root;  // set by the driver; empty: no library
  bool loaded = false;
  bool ok = false;
  Json icons;
  std::unordered_map<std::string_view, const Json*> by_token;  // the records of `icons`
  std::map<std::string, gen_res::Image> pictures;  // by file path
  std::vector<std::string> read_order;             // the keys of `pictures`, first read first
};

Library& lib() {
  static Library l;
  return l;
}

// Loads index.json once per root.
const Library& load() {
  Library& l = lib();
  if (l.loaded) return l;
  l.loaded = true;
  l.ok = false;
  if (l.root.empty()) return l;
  std::ifstream in(root() + "/index.json", std::ios::binary);
  if (!in) return l;
  Json idx = Json::parse(in, nullptr, /*allow_exceptions=*/false);
  if (idx.is_object() && idx.contains("icons") && idx["icons"].is_object()) {
    l.icons = std::move(idx["icons"]);
    for (auto it = l.icons.begin(); it != l.icons.end(); ++it)
      if (it->is_object()) l.by_token.emplace(it.key(), &*it);
    l.ok = true;
  }
  return l;
}

const gen_res::Image& picture(const std::string& path) {
  auto& pics = lib().pictures;
  auto it = pics.find(path);
  if (it == pics.end()) {
    it = pics.emplace(path, gen_res::load_png(path)).first;
    lib().read_order.push_back(path);
  }
  return it->second;
}

bool has_state(const Json& rec, const std::string& s) {
  const Json& states = rec.contains("states") ? rec["states"] : Json();
  if (!states.is_array()) return false;
  for (const Json& v : states)
    if (v.is_string() && v.get<std::string>() == s) return true;
  return false;
}

}  // namespace

const std::vector<int>& tiers() {
  static const std::vector<int> t = {56, 24, 22};
  return t;
}

std::string root() {
  return lib().root;
}

void set_root(const std::string& dir) {
  Library& l = lib();
  l = Library{};
  l.root = dir;
}

bool available() { return load().ok; }

std::vector<std::string> files_read() {
  const Library& l = lib();
  std::vector<std::string> out;
  if (l.loaded && l.ok) out.push_back(l.root + "/index.json");
  out.insert(out.end(), l.read_order.begin(), l.read_order.end());
  return out;
}

const Json* find(const std::string& token) {
  const Library& l = load();
  auto it = l.by_token.find(token);
  return it == l.by_token.end() ? nullptr : it->second;
}

std::optional<Json> lookup(const std::string& token) {
  const Json* rec = find(token);
  if (!rec) return std::nullopt;
  return *rec;
}

int tier_of(int size) {
  for (int t : tiers())
    if (size >= t) return t;
  return tiers().back();
}

std::pair<gen_res::Image, Json> produce(const std::string& token, int size, gen_res::Rgba color,
                                        const std::optional<std::string>& state) {
  std::optional<Json> rec = lookup(token);
  if (!rec) throw std::runtime_error("icon library has no token '" + token + "' (" + root() + ")");
  std::string name = rec->value("name", token);
  int tier = tier_of(size);
  bool filled = state && *state == "on" && has_state(*rec, "on");
  std::string path = root() + "/" + std::to_string(tier) + "/" + name + (filled ? "_on" : "_off") + ".png";
  gen_res::Image img = picture(path);
  std::string render = std::string(filled ? "filled" : "outline") + " " + std::to_string(tier);
  if (size < img.w || size < img.h) {
    int s = std::max(size, 0);
    img = gen_res::resize_box(img, s, s);
    render += "→" + std::to_string(s);
  }
  render += "px";
  // Monochrome: the picture's alpha is the coverage; the colour is the one asked for.
  for (size_t i = 0; i < img.px.size(); i += 4) {
    int cov = img.px[i + 3];
    img.px[i] = (uint8_t)color.r;
    img.px[i + 1] = (uint8_t)color.g;
    img.px[i + 2] = (uint8_t)color.b;
    img.px[i + 3] = (uint8_t)((cov * color.a + 127) / 255);
  }
  Json meta = Json::object();
  meta["name"] = name;
  meta["tier"] = tier;
  meta["render"] = render;
  return {std::move(img), std::move(meta)};
}

}  // namespace iconlib
