// #9: every layout can be read, and the project's layouts agree on their resolutions.
// A project keeps its layouts either flat, ui/<page>.json, all of one resolution (what
// the packing step reads), or in resolution folders, ui/<W>x<H>/<page>.json, each
// layout of the folder's resolution; never both.
#include "check_all/rules.h"

namespace check {

namespace {

std::string res_of(const LayoutFile& lf) { return std::to_string(lf.lay.W) + "x" + std::to_string(lf.lay.H); }

}  // namespace

void rule_flat_layouts(const Project& p, Report& r) {
  r.section(9, "布局可读、分辨率一致");
  if (p.layouts.empty()) {
    r.fail("ui/ 下没有布局文件（ui/*.json 或 ui/<W>x<H>/*.json）");
    return;
  }
  std::vector<std::pair<std::string, std::vector<std::string>>> flat;  // by resolution, in order of first use
  std::vector<std::string> folders, flat_files;                         // in the order of the layouts
  for (const auto& lf : p.layouts) {
    if (lf.res_dir.empty()) {
      flat_files.push_back(lf.rel);
    } else if (folders.empty() || folders.back() != lf.res_dir) {
      folders.push_back(lf.res_dir);
    }
    if (!lf.ok()) {
      r.fail(lf.rel + " 读不了：" + lf.error);
      continue;
    }
    const std::string res = res_of(lf);
    if (!lf.res_dir.empty()) {
      if (res != lf.res_dir) r.fail(lf.rel + " 分辨率 " + res + " ≠ 所在目录 " + lf.res_dir);
      continue;
    }
    auto it = std::find_if(flat.begin(), flat.end(), [&](const auto& e) { return e.first == res; });
    if (it == flat.end())
      flat.push_back({res, {lf.rel}});
    else
      it->second.push_back(lf.rel);
  }
  if (!flat_files.empty() && !folders.empty()) {
    std::vector<std::string> dirs;
    for (const auto& d : folders) dirs.push_back("ui/" + d + "/");
    r.fail("扁平布局与分辨率目录混用：" + ub::join(flat_files, ", ") + "；" + ub::join(dirs, ", ") +
           " → 一个工程只用一种（--ui-layout flat 或 res）");
  }
  if (flat.size() > 1) {
    std::vector<std::string> parts;
    for (const auto& [res, files] : flat) parts.push_back(res + "：" + ub::join(files, ", "));
    r.fail("布局分辨率不一：" + ub::join(parts, "；"));
  }
  if (folders.empty() && !flat.empty())
    r.pass(std::to_string(p.layouts.size()) + " 个布局，扁平单分辨率 " + flat.front().first);
  else if (flat_files.empty())
    r.pass(std::to_string(p.layouts.size()) + " 个布局，各在其分辨率目录：" + ub::join(folders, "、"));
}

}  // namespace check
