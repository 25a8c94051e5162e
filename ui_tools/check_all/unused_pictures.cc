// #22: pictures in resources/images that no layout names: what `compose build --prune`
// would remove (the pictures a build wrote and nobody changed since), and the others,
// which it keeps. Only a warning: code may load a picture by name.
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

#include "base/file_digest.h"
#include "base/values.h"
#include "base/data_header_pictures.h"
#include "check_all/picture_uses.h"
#include "check_all/rules.h"
#include "json2img/picture_files.h"

namespace fs = std::filesystem;

namespace check {

namespace {

// The pictures compose build wrote, by name, with their digests (its state file in the
// project's tool folder); empty when there is none or it cannot be read.
std::map<std::string, std::string> written_by_builds(const std::string& root) {
  std::map<std::string, std::string> out;
  try {
    const Json state = Json::parse(ub::read_file(root + "/.compose/build.json"));
    const Json& w = ub::get(state, "written");
    if (!w.is_object()) return out;
    for (auto it = w.begin(); it != w.end(); ++it)
      if (it.value().is_string()) out[it.key()] = it.value().get<std::string>();
  } catch (const std::exception&) {
  }
  return out;
}

}  // namespace

void rule_unused_pictures(const Project& p, Report& r) {
  r.section(22, "没有布局引用的图片");
  for (const auto& lf : p.layouts)
    if (!lf.ok()) {
      r.warn(lf.rel + " 读不了（见 #9）→ 无从判断哪些图没有布局引用；compose build --prune 此时一张也不删");
      return;
    }
  std::set<std::string> named;  // the files the layouts name, their paths normalised
  for (const auto& lf : p.layouts)
    for (const auto& c : lf.lay.controls)
      for (const auto& u : picture_uses(lf, c)) {
        const std::string path = layout::picture_path(p.images_dir(), u.ref);
        if (!path.empty()) named.insert(fs::path(path).lexically_normal().string());
      }
  // The icons of list rows are shown from the data headers.
  for (const std::string& name : ub::data_header_pictures(p.root))
    named.insert((fs::path(p.images_dir()) / name).lexically_normal().string());
  std::vector<std::string> unused;
  size_t pictures = 0;
  std::error_code ec;
  for (const auto& e : fs::directory_iterator(p.images_dir(), ec)) {
    struct stat st;
    if (::lstat(e.path().c_str(), &st) != 0 || !S_ISREG(st.st_mode)) continue;  // a plain file, as --prune removes
    ++pictures;
    if (!named.count(e.path().lexically_normal().string())) unused.push_back(e.path().filename().string());
  }
  std::sort(unused.begin(), unused.end());
  const auto written = written_by_builds(p.root);
  constexpr size_t kListed = 40;  // lines listed; the rest is counted
  size_t prunable = 0;
  for (size_t i = 0; i < unused.size(); ++i) {
    const std::string& name = unused[i];
    auto w = written.find(name);
    const bool ours = w != written.end();
    const bool as_written = ours && ub::file_digest(p.images_dir() + "/" + name) == w->second;
    prunable += as_written;
    if (i == kListed) r.warn(ub::cat("另有 ", unused.size() - kListed, " 张没有布局引用的图未列出"));
    if (i >= kListed) continue;
    r.warn("resources/images/" + name + " 没有布局引用 → " +
           (as_written ? std::string("compose build --prune 会删掉它")
            : ours     ? std::string("构建写出后被改过，--prune 不删")
                       : std::string("不是 compose build 写出的，--prune 不删")));
  }
  if (unused.empty()) r.pass(ub::cat(pictures, " 张图都有布局引用"));
  else r.pass(ub::cat(pictures - unused.size(), " 张图有布局引用，", unused.size(), " 张没有（--prune 会删 ", prunable, " 张）"));
}

}  // namespace check
