#include "driver/prune.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "base/data_header_pictures.h"
#include "base/output_files.h"
#include "base/values.h"
#include "driver/build_state.h"

namespace fs = std::filesystem;

namespace ub {

namespace {

// Collects the text values of a document as it is read, without building it.
struct TextValues : nlohmann::json_sax<Json> {
  std::set<std::string>& names;
  explicit TextValues(std::set<std::string>& n) : names(n) {}
  bool string(string_t& s) override {
    if (starts_with(s, "images/")) names.insert(s.substr(7));
    else if (!s.empty() && s.find('/') == std::string::npos) names.insert(s);
    return true;
  }
  bool null() override { return true; }
  bool boolean(bool) override { return true; }
  bool number_integer(number_integer_t) override { return true; }
  bool number_unsigned(number_unsigned_t) override { return true; }
  bool number_float(number_float_t, const string_t&) override { return true; }
  bool binary(binary_t&) override { return true; }
  bool start_object(std::size_t) override { return true; }
  bool key(string_t&) override { return true; }
  bool end_object() override { return true; }
  bool start_array(std::size_t) override { return true; }
  bool end_array() override { return true; }
  bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception& e) override {
    error = e.what();
    return false;
  }
  std::string error;
};

}  // namespace

std::set<std::string> pictures_named(const std::string& root) {
  std::set<std::string> names;
  const fs::path ui = fs::path(root) / "ui";
  std::error_code ec;
  if (!fs::is_directory(ui, ec)) return names;
  std::vector<fs::path> layouts;
  for (auto it = fs::recursive_directory_iterator(ui, ec); !ec && it != fs::recursive_directory_iterator();
       it.increment(ec))
    if (it->path().extension() == ".json" && it->is_regular_file(ec)) layouts.push_back(it->path());
  if (ec) throw InputError("cannot list " + ui.string() + ": " + ec.message());
  for (const fs::path& p : layouts) {
    std::ifstream in(p, std::ios::binary);
    TextValues sax(names);
    if (!in || !Json::sax_parse(in, &sax))
      throw InputError("cannot read the layout " + p.string() + (sax.error.empty() ? "" : ": " + sax.error));
  }
  return names;
}

PruneOutcome prune_pictures(const std::string& root, std::map<std::string, std::string>& written) {
  base::ProjectLock lock(root);
  std::set<std::string> named = pictures_named(root);
  named.merge(data_header_pictures(root));  // list rows' icons, shown from the data headers
  const std::string images = root + "/resources/images/";
  PruneOutcome out;
  // Only plain folders lead to the pictures: nothing outside the project is ever removed.
  struct stat st;
  for (const std::string& dir : {root + "/resources", root + "/resources/images"})
    if (::lstat(dir.c_str(), &st) != 0 || !S_ISDIR(st.st_mode)) {
      for (const auto& [name, digest] : written) out.forgotten.push_back(name);
      written.clear();
      return out;
    }
  for (auto it = written.begin(); it != written.end();) {
    const std::string& name = it->first;
    const std::string path = images + name;
    const bool plain = name.find('/') == std::string::npos && name != "." && name != ".." &&
                       ::lstat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode);
    if (!plain || file_digest(path) != it->second) {
      out.forgotten.push_back(name);  // gone, replaced or changed: not ours any more
      it = written.erase(it);
      continue;
    }
    if (named.count(name)) {
      ++it;
      continue;
    }
    if (::unlink(path.c_str()) != 0) throw InputError("cannot remove " + path);
    out.removed.push_back(name);
    it = written.erase(it);
  }
  return out;
}

}  // namespace ub
