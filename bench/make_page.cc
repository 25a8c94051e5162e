// Writes a page of N blocks made by repeating the content blocks of a page
// (fixed bands and dialogs are kept once; block names are dropped so that the
// repeated blocks get numbered captions).
// Usage: make_page PAGE.json N > OUT.json
#include <fstream>
#include <iostream>
#include <string>

#include <nlohmann/json.hpp>

using Json = nlohmann::ordered_json;

namespace {

bool fixed_band(const std::string& type) {
  return type == "toolbar" || type == "bottom_nav" || type == "bottom_actions" || type == "page_title" ||
         type == "dialog" || type == "toast";
}

void drop_names(Json& b) {
  if (!b.is_object()) return;
  b.erase("name");
  if (auto it = b.find("blocks"); it != b.end() && it->is_array())
    for (Json& inner : *it) drop_names(inner);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: make_page PAGE.json N\n";
    return 2;
  }
  std::ifstream in(argv[1]);
  Json page = Json::parse(in, nullptr, false);
  const long n = std::stol(argv[2]);
  if (page.is_discarded() || !page.contains("page") || !page["page"].contains("blocks")) {
    std::cerr << "make_page: not a page: " << argv[1] << "\n";
    return 1;
  }
  Json fixed = Json::array(), body = Json::array();
  for (const Json& b : page["page"]["blocks"]) {
    Json c = b;
    drop_names(c);
    (fixed_band(c.value("type", "")) ? fixed : body).push_back(std::move(c));
  }
  Json blocks = fixed;
  for (long i = 0; (long)blocks.size() < n && !body.empty(); ++i) blocks.push_back(body[i % body.size()]);
  page["page"]["blocks"] = std::move(blocks);
  std::cout << page.dump() << "\n";
  return 0;
}
