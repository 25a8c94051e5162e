#include "iconlib/iconlib.h"

#include <fstream>
#include <stdexcept>

namespace iconlib {

namespace {

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

int tier_of(int size) {
  for (int t : tiers())
    if (size >= t) return t;
  return tiers().back();
}

int tier_covering(int size) {
  int best = tiers().front();
  for (int t : tiers())
    if (t >= size) best = t;
  return best;
}

Index Index::load(const std::string& dir) {
  Index l;
  l.root_ = dir;
  if (dir.empty()) return l;
  std::ifstream in(dir + "/index.json", std::ios::binary);
  if (!in) return l;
  Json idx = Json::parse(in, nullptr, /*allow_exceptions=*/false);
  if (idx.is_object() && idx.contains("icons") && idx["icons"].is_object()) {
    l.icons_ = std::move(idx["icons"]);
    for (auto it = l.icons_.begin(); it != l.icons_.end(); ++it)
      if (it->is_object()) l.by_token_.emplace(it.key(), &*it);
    l.ok_ = true;
  }
  return l;
}

const Json* Index::find(const std::string& token) const {
  auto it = by_token_.find(token);
  return it == by_token_.end() ? nullptr : it->second;
}

std::vector<std::string> Index::files_read() const {
  std::vector<std::string> out;
  if (ok_) out.push_back(root_ + "/index.json");
  out.insert(out.end(), read_order_.begin(), read_order_.end());
  return out;
}

std::optional<Json> Index::lookup(const std::string& token) const {
  const Json* rec = find(token);
  if (!rec) return std::nullopt;
  return *rec;
}

std::pair<gen_res::Image, Json> Index::produce(const std::string& token, int size, gen_res::Rgba color,
                                               const std::optional<std::string>& state, int tier) const {
  const Json* rec = find(token);
  if (!rec) throw std::runtime_error("icon library has no token '" + token + "' (" + root_ + ")");
  std::string name = rec->value("name", token);
  if (tier <= 0) tier = tier_of(size);
  bool filled = state && *state == "on" && has_state(*rec, "on");
  std::string path = root_ + "/" + std::to_string(tier) + "/" + name + (filled ? "_on" : "_off") + ".png";
  auto pic = pictures_.find(path);
  if (pic == pictures_.end()) {
    pic = pictures_.emplace(path, gen_res::load_png(path)).first;
    read_order_.push_back(path);
  }
  gen_res::Image img = pic->second;
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
