#include "driver/report.h"

#include <filesystem>
#include <map>
#include <set>
#include <tuple>

#include "driver/console_text.h"
#include "gen_res/image.h"

namespace ub {

std::string summary_head(const PageContext& c, int content_h) {
  const Metrics& m = c.m;
  return cat("== compose (", c.W, "x", c.H, ") ==\n", "行高 ", m.row_h, " ｜ 字号 ", m.fs.plain_text(), " ｜ 圆角 ",
             m.radius, " ｜ 图标底/图标 ", m.icon_bg, "/", m.icon, " ｜ 箭头 ", m.chev_w, "x", m.chev_h, " ｜ 内容 ",
             content_h, " → 视口 ", m.viewport, "\n");
}

std::string icon_stats(const IconTally& uses) {
  if (uses.empty()) return "";
  std::vector<std::string> tier_words;
  for (const auto& [tier, n] : uses.tiers) tier_words.push_back(cat(tier, " 档 ×", n));
  std::string out = cat("图标来源：components/icons（", uses.uses, " 处 ｜ 档位 ", join(tier_words, "、"),
                        " ｜ ", uses.kinds.size(), " 种 名×尺寸×态 组合）\n");
  for (const auto& [token, name, size, tier, state] : uses.kinds)
    out += cat("      ", pad_right(token, 12), " → ", pad_right(name, 24), " ", size, "px（", tier, " 档）state=",
               state, "\n");
  return out;
}

std::string fallback_icon_lines(const std::vector<IconFallback>& fallbacks) {
  std::string out;
  std::set<std::pair<std::string, std::string>> seen;
  for (const IconFallback& f : fallbacks)
    if (seen.emplace(f.token, f.asset).second)
      out += cat("  [回退线框] 图标 ", literal_form(Json(f.token)), " 在 components/icons 里没有对应语义名 → 用 gen_res 线框（",
                 f.asset, "；目标 0 处，请改用库里已有语义名）\n");
  return out;
}

std::string fallback_line(const std::vector<IconFallback>& fallbacks) {
  if (fallbacks.empty()) return "回退线框 0 处（全部图标来自 components/icons ✓）\n";
  std::vector<std::string> items;
  for (const IconFallback& f : fallbacks) items.push_back(cat(f.token, "@", f.size, "px"));
  return cat("  [X] 回退线框 ", fallbacks.size(), " 处（目标 0）—— 图标字面量不在 components/icons 里：",
             join(items, "、"), "\n");
}

std::string notes_lines(const std::vector<std::string>& notes) {
  std::string out;
  for (const auto& n : notes) out += "  [NOTE] " + n + "\n";
  return out;
}

std::string too_long_lines(const std::vector<std::string>& notes) {
  std::vector<std::string> bad;
  for (const auto& n : notes)
    if (contains(n, "文案过长")) bad.push_back(n);
  if (bad.empty()) return "";
  std::string out = cat("  [X] ", bad.size(), " 处文本装不下（#13 会 FAIL）→ 缩短文案或给 value_short：\n");
  for (const auto& n : bad) out += "      - " + n + "\n";
  return out;
}

std::string control_line(const Json& doc, int control_count) {
  size_t keys = 0;
  for (const auto& [k, v] : doc.items())
    if (contains(k, "__")) ++keys;
  return control_line(keys, control_count);
}

std::string control_line(size_t top_level_records, int control_count) {
  return cat("控件：顶层 ", top_level_records, " 个键 ｜ 含嵌套共 ", control_count, " 个控件\n");
}

std::string render_report_text(const std::string& rep) {
  const size_t n = cp_len(rep);
  if (n <= 6000) return rep;
  return cp_prefix(rep, 2500) + cat("\n  ...[中略 ", n - 5000, " 字；完整清单请直接跑 json2img --report]...\n") +
         cp_suffix(rep, 2500);
}

std::string render_section(const ChildResult& r, const std::string& png, int W, int H, bool full) {
  std::string out = "-- render --\n" + render_report_text(strip_space(r.out)) + "\n";
  if (r.status != 0) return out + cat("  [X] json2img exit=", r.status, "\n", cp_suffix(r.err, 800), "\n");
  int w = 0, h = 0;
  try {
    if (!gen_res::png_size(png, w, h)) throw std::runtime_error("cannot identify image file '" + png + "'");
  } catch (const std::exception& e) {
    return out + "  [WARN] 渲染图读取失败：" + e.what() + "\n";
  }
  if (full)
    return out + cat("渲染图 ", std::filesystem::path(png).filename().string(), " ", w, "x", h,
                     "（整页）｜ 宽 == resolution: ", w == W && h >= H ? "True" : "False", "\n");
  const bool ok = w == W && h == H;
  return out + cat("渲染图 ", std::filesystem::path(png).filename().string(), " ", w, "x", h,
                   " ｜ 尺寸 == resolution: ", ok ? "True" : "False", "\n");
}

std::string sheet_line(const ChildResult& r, const std::string& png) {
  int w = 0, h = 0;
  bool read = false;
  try {
    read = r.status == 0 && gen_res::png_size(png, w, h);
  } catch (const std::exception&) {
  }
  if (!read)
    return cat("  [X] 联系表未生成：json2img exit=", r.status, "\n", cp_suffix(r.err, 800), "\n");
  return cat("联系表 → ", png, " ", w, "x", h, "\n");
}

std::vector<std::string> check_tail(const std::string& out) {
  std::vector<std::string> tail;
  for (const auto& l : split_lines(out)) {
    bool keep = starts_with(l, "[OK]") || starts_with(l, "[X]") || starts_with(l, "[!]");
    for (const char* k : {"== 2", "== 27", "== 26", "FAIL", "WARN 需"}) keep = keep || contains(l, k);
    if (keep) tail.push_back(l);
  }
  return tail;
}

std::string check_section(const ChildResult& r) {
  std::vector<std::string> tail = check_tail(r.out);
  if (tail.size() > 25) tail.erase(tail.begin(), tail.end() - 25);
  std::string out = join(tail, "\n") + "\n" + cat("  check_all exit = ", r.status, "\n");
  if (r.status != 0) out += cp_suffix(r.out, 3000) + "\n";
  return out;
}

}  // namespace ub
