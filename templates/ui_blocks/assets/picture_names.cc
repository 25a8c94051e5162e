#include "assets/picture_names.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <tuple>

#include "base/values.h"

namespace ub {

namespace {

auto fields(const Asset& a) {
  return std::tie(a.kind, a.w, a.h, a.radius, a.fill, a.border, a.border_w, a.g, a.size, a.color, a.canvas, a.state,
                  a.src_w, a.src_h, a.src_x, a.src_y, a.ss, a.bar_h, a.mark, a.mark_size, a.mark_color,
                  a.chart_kind, a.data, a.axis, a.base_h);
}

// A name registered before with a different picture: the later one wins, so a note
// says which name was given two pictures.
void note_replaced(Notes& notes, const std::string& name, const Asset& before, const Asset& after) {
  const std::string note = cat("图片名 ", name, " 登记了两种不同内容（", before.kind, " / ", after.kind,
                               "）→ 用到它的控件都显示后登记的那张；名字里缺了区分两者的值");
  for (const auto& n : notes.all())
    if (n == note) return;
  notes.add(note);
}

}  // namespace

void check_picture_name(const std::string& name) {
  if (name.find('/') != std::string::npos || name.find('\\') != std::string::npos ||
      name.find('\0') != std::string::npos)
    stop("[X] 图片名不能含路径分隔符：" + name + "（图标语义名请用库里的名字）");
  if (name.empty() || name == "." || name == "..") stop("[X] 图片名不是文件名：" + literal_form(Json(name)));
  if (name.size() > kMaxPictureName)
    stop(cat("[X] 图片名过长（", name.size(), " 字节 > ", kMaxPictureName, "）：", cp_prefix(name, 40),
             "…（图标语义名请用库里的名字）"));
}

std::string data_digest(const std::vector<double>& data) {
  // FNV-1a over the exact bits of every value.
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


void put_picture(AssetMap& assets, Notes& notes, const std::string& name, Asset a) {
  check_picture_name(name);
  auto it = assets.find(name);
  if (it == assets.end()) {
    assets.emplace(name, std::move(a));
    return;
  }
  if (same_picture(it->second, a)) return;  // the same picture again: most registrations
  note_replaced(notes, name, it->second, a);
  it->second = std::move(a);
}

}  // namespace ub
