// #13 and #36: every text of a page control fits its box by the text estimate, and
// keeps a margin of 5 percent of the estimated width.
#include <cstdio>

#include "check_all/rules.h"
#include "base/primitives.h"

namespace check {

namespace {

struct PlacedText {
  const LayoutFile* lf;
  const layout::Control* c;
  const char* field;  // text or hintText
  std::string text;
  int size, align;
  layout::Rect box;
};

int default_align(const std::string& type) {
  if (type == "textview") return 0;
  return type == "edittext" ? 36 : 37;
}

// Texts of the controls of every usable layout. List subitems and radio buttons are
// members of their control and are left to the tool that made them.
std::vector<PlacedText> page_texts(const Project& p) {
  std::vector<PlacedText> out;
  for (const auto& lf : p.layouts) {
    if (!lf.ok()) continue;
    for (const auto& c : lf.lay.controls) {
      const std::string& t = c.type;
      if (t != "textview" && t != "button" && t != "edittext" && t != "checkbox") continue;
      const layout::Extra* ex = lf.lay.extra_of(c);
      int size = (int)lf.lay.number(c.font_size, 16, c.key);
      int align = (int)lf.lay.number(c.alignment, default_align(t), c.key);
      layout::Rect box = t == "edittext" ? c.box : layout::text_box(lf.lay, c);
      bool password = ex && ex->is_password;
      std::string text(c.text);
      if (!text.empty() && !(t == "edittext" && password)) out.push_back({&lf, &c, "text", text, size, align, box});
      std::string hint = t == "edittext" && ex ? std::string(ex->hint_text) : "";
      if (!hint.empty()) out.push_back({&lf, &c, "hintText", hint, size, align, box});
    }
  }
  return out;
}

std::string describe(const PlacedText& pt) {
  std::string s = where(*pt.lf, *pt.c);
  if (std::string(pt.field) != "text") s += "." + std::string(pt.field);
  return s + " 「" + pt.text + "」";
}

std::string one_decimal(double v) {
  char buf[32];
  std::snprintf(buf, sizeof buf, "%.1f", v);
  return buf;
}

}  // namespace

void rule_text_fit(const Project& p, Report& r) {
  r.section(13, "文本装得下");
  auto texts = page_texts(p);
  for (const auto& pt : texts) {
    auto [mw, mh] = ub::text_min_size(pt.text, pt.size, pt.align);
    if (mw > pt.box.w() || mh > pt.box.h())
      r.fail(describe(pt) + " 需 ≥" + std::to_string(mw) + "x" + std::to_string(mh) + "，盒 " +
             std::to_string(pt.box.w()) + "x" + std::to_string(pt.box.h()) + "（字号 " + std::to_string(pt.size) +
             "）→ 缩短文案或加宽盒");
  }
  r.pass(std::to_string(texts.size()) + " 处文本都装得下");
}

void rule_text_margin(const Project& p, Report& r) {
  r.section(36, "文本盒宽 ≥ 估算 ×1.05");
  auto texts = page_texts(p);
  for (const auto& pt : texts) {
    int mw = ub::text_min_size(pt.text, pt.size, pt.align).first;
    if (pt.box.w() < mw * 1.05)
      r.fail(describe(pt) + " 盒宽 " + std::to_string(pt.box.w()) + " < 估算 " + std::to_string(mw) +
             " ×1.05 = " + one_decimal(mw * 1.05));
  }
  r.pass(std::to_string(texts.size()) + " 处文本盒都留足 5% 余量");
}

}  // namespace check
