#include "check_all/project.h"

#include <algorithm>
#include <filesystem>
#include <regex>

#include "base/values.h"
#include "json2img/layout_reader.h"
#include "json2img/picture_files.h"

namespace fs = std::filesystem;

namespace check {

namespace {

bool is_res_dir(const std::string& name) {
  static const std::regex re("[0-9]+x[0-9]+");
  return std::regex_match(name, re);
}

std::vector<fs::path> json_files(const fs::path& dir) {
  std::vector<fs::path> out;
  std::error_code ec;
  for (const auto& e : fs::directory_iterator(dir, ec))
    if (e.is_regular_file(ec) && e.path().extension() == ".json") out.push_back(e.path());
  std::sort(out.begin(), out.end());
  return out;
}

void add_layout(Project& p, const fs::path& file, const std::string& res_dir) {
  LayoutFile lf;
  lf.rel = file.lexically_relative(p.root).generic_string();
  lf.page = file.stem().string();
  lf.res_dir = res_dir;
  if (!layout::resolves_inside(p.root, file.string())) {
    lf.error = "a symbolic link leading outside the project";
    p.layouts.push_back(std::move(lf));
    return;
  }
  read_layout(lf, file.string());
  p.layouts.push_back(std::move(lf));
}

bool ident_char(char c) { return std::isalnum((unsigned char)c) || c == '_' || (unsigned char)c >= 0x80; }

}  // namespace

Project load_project(const std::string& root) {
  Project p;
  p.root = fs::absolute(root).lexically_normal().string();
  while (p.root.size() > 1 && p.root.back() == '/') p.root.pop_back();
  fs::path ui = fs::path(p.root) / "ui";
  std::error_code ec;
  if (fs::is_directory(ui, ec)) {
    for (const auto& f : json_files(ui)) add_layout(p, f, "");
    std::vector<fs::path> dirs;
    for (const auto& e : fs::directory_iterator(ui, ec))
      if (e.is_directory(ec) && is_res_dir(e.path().filename().string())) dirs.push_back(e.path());
    std::sort(dirs.begin(), dirs.end());
    for (const auto& d : dirs)
      for (const auto& f : json_files(d)) add_layout(p, f, d.filename().string());
  }
  return p;
}

void read_layout(LayoutFile& lf, const std::string& path) {
  layout::ReadOptions o;
  o.text_findings = true;
  try {
    lf.lay = layout::read_layout_file(path, o);
  } catch (const layout::SyntaxError& e) {
    lf.error = std::string("no valid JSON: ") + e.what();
  } catch (const std::exception& e) {
    lf.error = e.what();
  }
}

const std::optional<std::unordered_set<std::string>>& Project::logic_calls(const std::string& page) const {
  auto it = logic_.find(page);
  if (it != logic_.end()) return it->second;
  std::optional<std::unordered_set<std::string>> calls;
  fs::path f = fs::path(root) / logic_rel(page);
  std::error_code ec;
  if (fs::is_regular_file(f, ec) && layout::resolves_inside(root, f.string())) {
    try {
      calls = callables(strip_comments(ub::read_file(f.string())));
    } catch (const std::exception&) {
      calls.reset();
    }
  }
  return logic_.emplace(page, std::move(calls)).first->second;
}

std::string strip_comments(const std::string& code) {
  std::string out = code;
  size_t i = 0, n = code.size();
  while (i < n) {
    char c = code[i];
    if (c == '"' || c == '\'') {
      for (++i; i < n && code[i] != c && code[i] != '\n'; ++i)
        if (code[i] == '\\') ++i;
      ++i;
    } else if (c == '/' && i + 1 < n && code[i + 1] == '/') {
      for (; i < n && code[i] != '\n'; ++i) out[i] = ' ';
    } else if (c == '/' && i + 1 < n && code[i + 1] == '*') {
      size_t end = code.find("*/", i + 2);
      end = end == std::string::npos ? n : end + 2;
      for (; i < end; ++i)
        if (out[i] != '\n') out[i] = ' ';
    } else {
      ++i;
    }
  }
  return out;
}

std::unordered_set<std::string> callables(const std::string& code) {
  std::unordered_set<std::string> out;
  size_t i = 0, n = code.size();
  while (i < n) {
    if (!ident_char(code[i])) {
      ++i;
      continue;
    }
    size_t start = i;
    while (i < n && ident_char(code[i])) ++i;
    size_t e = i;
    while (e < n && std::isspace((unsigned char)code[e])) ++e;
    if (e < n && code[e] == '(') out.insert(code.substr(start, i - start));
  }
  return out;
}

bool defines_callback(const std::string& code, const std::string& name) { return callables(code).count(name) > 0; }

}  // namespace check
