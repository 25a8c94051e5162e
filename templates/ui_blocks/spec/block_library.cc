// The block library: _tokens.json and one definition file per known block type.
#include <algorithm>
#include <filesystem>

#include "spec/library.h"
#include "spec/quick_json.h"

namespace fs = std::filesystem;

namespace ub {

Json load_json(const std::string& path) {
  std::string text;
  try {
    text = read_file(path);
  } catch (const InputError&) {
    throw InputError("cannot read " + path);
  }
  // The quick reader takes plain files; deeper nesting and anything it leaves go to Json::parse.
  if (std::optional<Json> doc = read_quick_json(text, 256)) return std::move(*doc);
  try {
    return Json::parse(text);
  } catch (const Json::parse_error& e) {
    throw InputError("malformed JSON in " + path + ": " + e.what());
  }
}

std::map<std::string, Json> load_block_library(const std::string& dir) {
  std::error_code ec;
  if (!fs::is_directory(dir, ec)) throw InputError("block library not found: " + dir);
  std::vector<std::string> names;
  for (const auto& e : fs::directory_iterator(dir, ec)) names.push_back(e.path().filename().string());
  if (ec) throw InputError("cannot list the block library " + dir + ": " + ec.message());
  std::sort(names.begin(), names.end());
  std::map<std::string, Json> out;
  for (const std::string& name : names) {
    if (name.size() < 5 || name.compare(name.size() - 5, 5, ".json") != 0) continue;
    if (starts_with(name, "_")) continue;
    std::string path = dir + "/" + name;
    Json b = load_json(path);
    const Json& type = get(b, "type");
    if (!type.is_string()) throw InputError("block library file " + path + " has no \"type\" text");
    out[type.get<std::string>()] = std::move(b);
  }
  return out;
}

}  // namespace ub
