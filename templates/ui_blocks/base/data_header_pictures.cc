#include "base/data_header_pictures.h"

#include <filesystem>
#include <fstream>
#include <sstream>

namespace ub {

namespace fs = std::filesystem;

std::set<std::string> pictures_in_data_header(std::string_view text) {
  std::set<std::string> names;
  constexpr std::string_view kEnd = ".png\"";
  for (size_t end = text.find(kEnd); end != std::string_view::npos; end = text.find(kEnd, end + 1)) {
    // The literal's start: the quote before it. Picture names hold no quote, backslash or slash.
    const size_t open = text.rfind('"', end);
    if (open == std::string_view::npos) break;
    const std::string_view name = text.substr(open + 1, end + 4 - (open + 1));
    if (!name.empty() && name.find_first_of("\\/\n") == std::string_view::npos) names.emplace(name);
  }
  return names;
}

std::set<std::string> data_header_pictures(const std::string& root) {
  std::set<std::string> names;
  std::error_code ec;
  for (const auto& e : fs::directory_iterator(fs::path(root) / "src" / "logic", ec)) {
    const std::string file = e.path().filename().string();
    if (file.size() <= 6 || file.compare(file.size() - 6, 6, "Data.h") != 0 || !e.is_regular_file(ec)) continue;
    std::ifstream in(e.path(), std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    names.merge(pictures_in_data_header(text.str()));
  }
  return names;
}

}  // namespace ub
