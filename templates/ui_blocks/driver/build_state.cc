#include "driver/build_state.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>

#include "base/values.h"

namespace ub {

FileStamp stamp_of(const std::string& path) {
  FileStamp s{path};
  struct stat st;
  if (::stat(path.c_str(), &st) != 0) return s;
  s.mtime_ns = (long long)st.st_mtim.tv_sec * 1000000000LL + st.st_mtim.tv_nsec;
  s.size = S_ISDIR(st.st_mode) ? 0 : (long long)st.st_size;
  return s;
}

bool unchanged(const FileStamp& s) { return stamp_of(s.path) == s; }

namespace {

Json text_map(const std::map<std::string, std::string>& m) {
  Json o = Json::object();
  for (const auto& [k, v] : m) o[k] = v;
  return o;
}

std::map<std::string, std::string> map_of(const Json& o) {
  std::map<std::string, std::string> m;
  for (auto it = o.begin(); it != o.end(); ++it) m[it.key()] = it.value().get<std::string>();
  return m;
}

constexpr int kFormat = 1;

}  // namespace

BuildState read_build_state(const std::string& path) {
  BuildState s;
  try {
    const Json j = Json::parse(read_file(path));
    if (j.at("format") != kFormat) return {};
    for (auto it = j.at("pages").begin(); it != j.at("pages").end(); ++it) {
      const Json& p = it.value();
      PageStamp ps;
      ps.config = p.at("config").get<std::string>();
      ps.sizes = p.at("sizes").get<std::vector<std::string>>();
      ps.layouts = p.at("layouts").get<std::vector<std::string>>();
      for (const Json& f : p.at("inputs")) ps.inputs.push_back({f.at(0).get<std::string>(), f.at(1).get<long long>(), f.at(2).get<long long>()});
      ps.outputs = map_of(p.at("outputs"));
      ps.pictures = map_of(p.at("pictures"));
      ps.renamed = map_of(p.at("renamed"));
      s.pages[it.key()] = std::move(ps);
    }
    s.written = map_of(j.at("written"));
  } catch (const std::exception&) {
    return {};
  }
  return s;
}

std::string build_state_text(const BuildState& s) {
  Json pages = Json::object();
  for (const auto& [name, p] : s.pages) {
    Json inputs = Json::array();
    for (const FileStamp& f : p.inputs) inputs.push_back(Json::array({f.path, f.mtime_ns, f.size}));
    pages[name] = object_of("config", p.config, "sizes", p.sizes, "layouts", p.layouts, "inputs", std::move(inputs), "outputs",
                            text_map(p.outputs), "pictures", text_map(p.pictures), "renamed", text_map(p.renamed));
  }
  return dump_layout(object_of("format", kFormat, "pages", std::move(pages), "written", text_map(s.written)));
}

}  // namespace ub
