// Writes a large layout for the readers' benchmark: the controls of a composed layout
// repeated COPIES times, each copy placed one screen further down (out of view, as the
// scroll content of a long page is) with keys, captions and ids of its own, so that the
// layout stays one that check_all passes. Pages this large cannot be composed: their ids
// would leave the control types' ranges. Also writes the logic file with a callback for
// every button and edit field, and prints the number of controls.
// Usage: make_layout LAYOUT.json COPIES OUT_LAYOUT.json OUT_LOGIC.cc
#include <fstream>
#include <iostream>
#include <map>
#include <string>

#include <nlohmann/json.hpp>

using Json = nlohmann::ordered_json;

namespace {

bool is_control(const std::string& key, const Json& v) {
  return key.find("__") != std::string::npos && v.is_object();
}

struct Copier {
  std::map<std::string, long long> count;  // per control type: keys and ids run on
  std::string callbacks;

  // A copy of the record under new keys, moved down by dy; captions get the copy's
  // suffix; its controls move down by child_dy.
  Json copy(const Json& rec, const std::string& suffix, int dy, int child_dy) {
    Json out = Json::object();
    for (auto it = rec.begin(); it != rec.end(); ++it) {
      const std::string& key = it.key();
      const Json& v = it.value();
      if (is_control(key, v)) {
        const std::string type = key.substr(0, key.find("__"));
        const long long n = ++count[type];
        Json c = copy(v, suffix, child_dy, 0);
        // The type's id base times 1000, plus the count: unique while a type has fewer than
        // 500,000 controls (radio groups and check boxes lie 500 apart).
        if (c.contains("id") && c["id"].is_number_integer()) c["id"] = c["id"].get<long long>() / 100 * 100000 + n;
        if (type == "button" || type == "edittext") {
          const std::string cap = c.value("caption", "");
          if (!cap.empty())
            callbacks += type == "button" ? "static bool onButtonClick_" + cap + "(TVButton *pButton) { return false; }\n"
                                          : "static void onEditTextChanged_" + cap + "(const std::string &text) {}\n";
        }
        out[type + "__" + std::to_string(n)] = std::move(c);
      } else if (key == "caption" && v.is_string() && !v.get<std::string>().empty()) {
        out[key] = v.get<std::string>() + suffix;
      } else if (key == "position" && dy && v.is_object()) {
        Json p = v;
        p["top"] = p.value("top", 0) + dy;
        out[key] = std::move(p);
      } else {
        out[key] = v;
      }
    }
    return out;
  }
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 5) {
    std::cerr << "usage: make_layout LAYOUT.json COPIES OUT_LAYOUT.json OUT_LOGIC.cc\n";
    return 2;
  }
  std::ifstream in(argv[1]);
  const Json page = Json::parse(in, nullptr, false);
  const int copies = std::stoi(argv[2]);
  if (page.is_discarded() || !page.is_object() || !page.contains("resolution")) {
    std::cerr << "make_layout: not a layout: " << argv[1] << "\n";
    return 1;
  }
  const int height = page["resolution"].value("height", 0);
  Json out = Json::object();
  for (auto it = page.begin(); it != page.end(); ++it)
    if (!is_control(it.key(), it.value())) out[it.key()] = it.value();
  Copier copier;
  for (int i = 0; i < copies; ++i) {
    Json one = copier.copy(page, i ? "C" + std::to_string(i) : "", 0, i * height);
    for (auto it = one.begin(); it != one.end(); ++it)
      if (is_control(it.key(), it.value())) out[it.key()] = std::move(it.value());
  }
  std::ofstream(argv[3]) << out.dump(2) << "\n";
  std::ofstream(argv[4]) << "// callbacks of the benchmark layout\n" << copier.callbacks;
  long long controls = 0;
  for (const auto& [type, n] : copier.count) controls += n;
  std::cout << controls << "\n";
  return 0;
}
