#include "assets/picture_names.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <functional>
#include <tuple>

#include "base/values.h"

namespace ub {

namespace {

auto fields(const Asset& a) {
  return std::tie(a.kind, a.w, a.h, a.radius, a.fill, a.border, a.border_w, a.g, a.size, a.color, a.canvas, a.state, a.tier,
                  a.src_w, a.src_h, a.src_x, a.src_y, a.ss, a.bar_h, a.mark, a.mark_size, a.mark_color,
                  a.chart_kind, a.data, a.axis, a.base_h, a.stroke, a.value_pm, a.limit_pm, a.pixels_id,
                  a.limit, a.limit_color);
}

struct Hash {
  size_t h = 0;
  template <class T>
  void add(const T& v) {
    h ^= std::hash<T>{}(v) + 0x9e3779b97f4a7c15ULL + (h << 6) + (h >> 2);
  }
  void add(const Rgba& c) {
    for (int v : {c.r, c.g, c.b, c.a}) add(v);
  }
  template <class T>
  void add(const std::optional<T>& v) {
    add(v.has_value());
    if (v) add(*v);
  }
  void add(const std::pair<int, int>& p) {
    add(p.first);
    add(p.second);
  }
  void add(const std::vector<double>& d) {
    for (double v : d) add(v);
  }
};

// Equal pictures hash alike: every field of the entry counts.
uint64_t picture_hash(const Asset& a) {
  Hash h;
  std::apply([&h](const auto&... f) { (h.add(f), ...); }, fields(a));
  return h.h;
}

std::string variant_name(const std::string& name, int n) {
  const bool png = name.size() >= 4 && name.compare(name.size() - 4, 4, ".png") == 0;
  return cat(png ? name.substr(0, name.size() - 4) : name, "_", n, ".png");
}

}  // namespace

uint64_t pixel_digest(const gen_res::Image& img) {
  uint64_t h = 1469598103934665603ULL;
  auto mix = [&h](uint8_t byte) {
    h ^= byte;
    h *= 1099511628211ULL;
  };
  for (int side : {img.w, img.h})
    for (int i = 0; i < 4; ++i) mix((uint8_t)(side >> (8 * i)));
  for (uint8_t byte : img.px) mix(byte);
  return h;
}

void check_picture_name(const std::string& name) {
  if (name.find('/') != std::string::npos || name.find('\\') != std::string::npos ||
      name.find('\0') != std::string::npos)
  {
    // A NUL is written out: the message must not end at it.
    std::string shown;
    for (char c : name) shown += c == '\0' ? std::string("\\x00") : std::string(1, c);
    stop("[X] 图片名不能含路径分隔符：" + shown + "（图标语义名请用库里的名字）");
  }
  if (name.empty() || name == "." || name == "..") stop("[X] 图片名不是文件名：" + literal_form(Json(name)));
  if (name.size() > kMaxPictureName)
    stop(cat("[X] 图片名过长（", name.size(), " 字节 > ", kMaxPictureName, "）：", cp_prefix(name, 40),
             "…（图标语义名请用库里的名字）"));
}

std::string data_digest(const std::vector<double>& data) {
  // FNV-1a over the exact bits of every value, byte by byte from the lowest.
  uint64_t h = 1469598103934665603ULL;
  for (double d : data) {
    uint64_t bits;
    std::memcpy(&bits, &d, sizeof bits);
    for (int i = 0; i < 8; ++i) {
      h ^= (bits >> (8 * i)) & 0xff;
      h *= 1099511628211ULL;
    }
  }
  char buf[9];
  std::snprintf(buf, sizeof buf, "%08x", (unsigned)((h >> 32) ^ h));
  return buf;
}

bool same_picture(const Asset& a, const Asset& b) { return fields(a) == fields(b); }

const Asset* PictureRegistry::taken(const std::string& name) const {
  if (auto it = own_.find(name); it != own_.end()) return &it->second;
  if (earlier_)
    if (auto it = earlier_->find(name); it != earlier_->end()) return &it->second;
  return nullptr;
}

// Registers a under a name that is free or holds the same picture.
const std::string& PictureRegistry::keep(const std::string& name, Asset a) {
  return own_.try_emplace(name, std::move(a)).first->first;
}

uint64_t PictureRegistry::key_of(const Asset& a, std::optional<Pixels>& mine) {
  if (!paint_) return picture_hash(a);
  if (!mine) {
    gen_res::Image img = paint_(a);
    mine = Pixels{pixel_digest(img), std::move(img)};
  }
  return mine->digest;
}

uint64_t PictureRegistry::key_of_taken(const std::string& name) {
  if (!paint_) return picture_hash(*taken(name));
  auto it = drawn_.find(name);
  if (it == drawn_.end()) it = drawn_.emplace(name, pixel_digest(paint_(*taken(name)))).first;
  return it->second;
}

bool PictureRegistry::holds(const std::string& name, const Asset& a, std::optional<Pixels>& mine) {
  const Asset& t = *taken(name);
  if (same_picture(t, a)) return true;
  if (!paint_ || key_of_taken(name) != key_of(a, mine)) return false;
  const gen_res::Image theirs = paint_(t);
  return theirs.w == mine->image.w && theirs.h == mine->image.h && theirs.px == mine->image.px;
}

const std::string& PictureRegistry::put(const std::string& name, Asset a) {
  check_picture_name(name);
  auto it = own_.find(name);
  if (it != own_.end() && same_picture(it->second, a)) return it->first;  // most registrations
  if (it == own_.end() && !taken(name)) return keep(name, std::move(a));
  std::optional<Pixels> mine;
  if (holds(name, a, mine)) return keep(name, std::move(a));
  return variant_of(name, std::move(a), mine);
}

const std::string& PictureRegistry::variant_of(const std::string& name, Asset a, std::optional<Pixels>& mine) {
  const bool png = name.size() >= 4 && name.compare(name.size() - 4, 4, ".png") == 0;
  Variants& v = variants_[name.substr(0, png ? name.size() - 4 : name.size())];
  const uint64_t key = key_of(a, mine);
  // Every n below `next` is taken; the first that holds this picture is the answer.
  int same = 0;
  auto [lo, hi] = v.taken.equal_range(key);
  for (auto i = lo; i != hi; ++i)
    if ((same == 0 || i->second < same) && holds(variant_name(name, i->second), a, mine)) same = i->second;
  if (same) return keep(variant_name(name, same), std::move(a));
  while (true) {
    const int n = v.next;
    const std::string candidate = variant_name(name, n);
    if (!taken(candidate)) break;
    ++v.next;
    v.taken.emplace(key_of_taken(candidate), n);
    if (holds(candidate, a, mine)) return keep(candidate, std::move(a));
  }
  v.taken.emplace(key, v.next);
  return keep(variant_name(name, v.next++), std::move(a));
}

}  // namespace ub
