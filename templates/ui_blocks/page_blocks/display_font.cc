#include "page_blocks/display_font.h"

#include <algorithm>
#include <vector>

#include "base/primitives.h"

namespace ub {

namespace {

const Json& display_tokens(const PageContext& page) {
  const Json& d = get(page.tok, "display");
  if (!d.is_object()) throw InputError("_tokens.json: 'display' must be a mapping");
  return d;
}

double token_number(const Json& obj, const char* key) {
  const Json& v = get(obj, key);
  if (!v.is_number()) throw InputError(cat("_tokens.json: 'display.", key, "' must be a number"));
  return v.get<double>();
}

std::vector<int> steps_of(const PageContext& page) {
  std::vector<int> steps;
  const Json& s = get(display_tokens(page), "steps");
  if (!s.is_array() || s.empty()) throw InputError("_tokens.json: 'display.steps' must be a non-empty sequence");
  for (const Json& v : s) {
    if (!v.is_number()) throw InputError("_tokens.json: 'display.steps' must hold numbers");
    steps.push_back((int)trunc_int(v.get<double>()));
  }
  return steps;
}

}  // namespace

int display_font(const PageContext& page) {
  const Json& d = display_tokens(page);
  if (page.m.compact) return (int)trunc_int(token_number(d, "compact"));
  const double base_h = token_number(get(page.tok, "base_screen"), "height");
  std::vector<double> ladder;
  for (int s : steps_of(page)) ladder.push_back(s);
  const double target = token_number(d, "base") * (page.H / base_h);
  return (int)trunc_int(pick(target, token_number(d, "min"), token_number(d, "max"), ladder));
}

int fitting_font(const PageContext& page, int start, const std::string& txt, int beside, int width, int align) {
  std::vector<int> sizes;
  for (int s : steps_of(page))
    if (s <= start) sizes.push_back(s);
  for (int s : {page.m.fs.h1, page.m.fs.h2, page.m.fs.b1})
    if (s <= start) sizes.push_back(s);
  std::sort(sizes.begin(), sizes.end(), std::greater<>());
  sizes.erase(std::unique(sizes.begin(), sizes.end()), sizes.end());
  if (sizes.empty()) return start;
  for (int fs : sizes)
    if (page.text_box_w(txt, fs, align) + beside <= width) return fs;
  return sizes.back();
}

int line_height(const PageContext& page, int fs) {
  return r4(fs * token_number(get(page.tok, "size"), "text_h_of_fs"));
}

}  // namespace ub
