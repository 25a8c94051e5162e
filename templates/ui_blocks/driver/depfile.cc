#include "driver/depfile.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include "base/values.h"

namespace fs = std::filesystem;

namespace ub {

namespace {

std::string absolute_text(const std::string& p) { return fs::absolute(p).lexically_normal().string(); }

bool is_json_file(const std::string& name) {
  return name.size() > 5 && name.compare(name.size() - 5, 5, ".json") == 0;
}

}  // namespace

std::string depfile_path(const std::string& path) {
  if (path.find_first_of("\n\r") != std::string::npos)
    throw InputError("a path with a line break cannot stand in a depfile: " + literal_form(Json(path)));
  std::string out;
  for (size_t i = 0; i < path.size(); ++i) {
    const char c = path[i];
    if (c == ' ' || c == '#') {
      // Backslashes right before an escaped character are doubled, as GCC writes them.
      size_t j = out.size();
      while (j > 0 && out[j - 1] == '\\') --j;
      out.append(out.size() - j, '\\');
      out += '\\';
      out += c;
    } else if (c == '$') {
      out += "$$";
    } else {
      out += c;
    }
  }
  return out;
}

std::string depfile_text(const std::vector<std::string>& targets, const std::vector<std::string>& deps) {
  std::string out;
  for (size_t i = 0; i < targets.size(); ++i) out += (i ? " " : "") + depfile_path(targets[i]);
  out += ":";
  std::set<std::string> seen;
  for (const std::string& d : deps)
    if (seen.insert(d).second) out += " \\\n  " + depfile_path(d);
  out += "\n";
  return out;
}

std::vector<std::string> run_inputs(const std::string& spec, const std::string& blocks_dir,
                                    const std::string& required_keys, const std::vector<std::string>& icon_files,
                                    const std::optional<std::string>& font, const std::string& theme) {
  std::vector<std::string> out = {absolute_text(spec)};
  // The token file, then the block definitions in the order the library reads them.
  const std::string lib = absolute_text(blocks_dir);
  out.push_back(lib + "/_tokens.json");
  if (!theme.empty()) out.push_back(absolute_text(theme));
  std::vector<std::string> names;
  std::error_code ec;
  for (const auto& e : fs::directory_iterator(lib, ec)) {
    const std::string name = e.path().filename().string();
    if (is_json_file(name) && name[0] != '_') names.push_back(name);
  }
  std::sort(names.begin(), names.end());
  for (const std::string& n : names) out.push_back(lib + "/" + n);
  std::error_code missing;
  if (fs::is_regular_file(required_keys, missing)) out.push_back(absolute_text(required_keys));
  for (const std::string& f : icon_files) out.push_back(absolute_text(f));
  if (font && !font->empty()) out.push_back(absolute_text(*font));
  return out;
}

}  // namespace ub
