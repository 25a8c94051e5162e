// #9: the packing step reads flat single-resolution layouts only: every layout is a
// readable ui/<page>.json and all of them have one resolution.
#include <map>

#include "check_all/rules.h"

namespace check {

void rule_flat_layouts(const Project& p, Report& r) {
  r.section(9, "扁平单分辨率布局");
  if (p.layouts.empty()) {
    r.fail("ui/ 下没有布局文件（ui/*.json 或 ui/<W>x<H>/*.json）");
    return;
  }
  std::vector<std::pair<std::string, std::vector<std::string>>> by_res;  // in order of first use
  for (const auto& lf : p.layouts) {
    if (!lf.ok()) {
      r.fail(lf.rel + " 读不了：" + lf.error);
      continue;
    }
    if (!lf.res_dir.empty()) {
      r.fail(lf.rel + " 在分辨率子目录里：打包只认扁平布局 ui/" + lf.page + ".json");
      continue;
    }
    std::string res = std::to_string(lf.lay.W) + "x" + std::to_string(lf.lay.H);
    auto it = std::find_if(by_res.begin(), by_res.end(), [&](const auto& e) { return e.first == res; });
    if (it == by_res.end())
      by_res.push_back({res, {lf.rel}});
    else
      it->second.push_back(lf.rel);
  }
  if (by_res.size() > 1) {
    std::vector<std::string> parts;
    for (const auto& [res, files] : by_res) parts.push_back(res + "：" + ub::join(files, ", "));
    r.fail("布局分辨率不一：" + ub::join(parts, "；"));
  }
  if (!by_res.empty())
    r.pass(std::to_string(p.layouts.size()) + " 个布局，扁平单分辨率 " + by_res.front().first);
}

}  // namespace check
