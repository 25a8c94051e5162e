#include "serve/control_boxes.h"

#include <algorithm>
#include <cctype>

namespace serve {

using nlohmann::json;
using Layout = nlohmann::ordered_json;

namespace {

int int_of(const Layout& o, const char* key) {
  auto it = o.find(key);
  return it != o.end() && it->is_number() ? it->get<int>() : 0;
}

bool is_word_char(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }

// The caption stands in the line as a whole word: "Tabs1" does not name "Tabs1Item1".
bool names(const std::string& line, const std::string& caption) {
  if (caption.empty()) return false;
  for (size_t at = line.find(caption); at != std::string::npos; at = line.find(caption, at + 1)) {
    const size_t end = at + caption.size();
    if ((at == 0 || !is_word_char(line[at - 1])) && (end >= line.size() || !is_word_char(line[end]))) return true;
  }
  return false;
}

// Picture references anywhere in a record, its children excluded: values of keys ending in
// "Pic" and the values of a "picTab", nested mappings (thumb, item) included.
void collect_pictures(const Layout& rec, json& out) {
  for (auto it = rec.begin(); it != rec.end(); ++it) {
    const std::string& k = it.key();
    if (k.find("__") != std::string::npos) continue;
    const Layout& v = *it;
    if (v.is_string()) {
      const bool pic_key = (k.size() >= 3 && k.compare(k.size() - 3, 3, "Pic") == 0) || k.rfind("pic", 0) == 0;
      const std::string name = pic_key ? picture_name(v.get<std::string>()) : "";
      if (!name.empty() && std::find(out.begin(), out.end(), name) == out.end()) out.push_back(name);
    } else if (v.is_object()) {
      collect_pictures(v, out);
    } else if (v.is_array()) {
      for (const auto& e : v)
        if (e.is_object()) collect_pictures(e, out);
    }
  }
}

void walk(const Layout& parent, int ox, int oy, const std::vector<std::string>& notes, json& out) {
  for (auto it = parent.begin(); it != parent.end(); ++it) {
    if (it.key().find("__") == std::string::npos || !it->is_object()) continue;
    const Layout& rec = *it;
    const Layout pos = rec.value("position", Layout::object());
    const int left = ox + int_of(pos, "left"), top = oy + int_of(pos, "top");
    json c;
    c["key"] = it.key();
    c["caption"] = rec.value("caption", "");
    c["type"] = it.key().substr(0, it.key().find("__"));
    c["left"] = left;
    c["top"] = top;
    c["width"] = int_of(pos, "width");
    c["height"] = int_of(pos, "height");
    c["text"] = rec.contains("text") && rec["text"].is_string() ? rec["text"].get<std::string>() : "";
    c["fontSize"] = rec.contains("fontSize") && rec["fontSize"].is_number() ? json(rec["fontSize"].get<int>()) : json(nullptr);
    c["visible"] = rec.value("visible", true);
    json pics = json::array();
    collect_pictures(rec, pics);
    c["pictures"] = pics;
    json named = json::array();
    const std::string caption = c["caption"];
    for (size_t i = 0; i < notes.size(); ++i)
      if (names(notes[i], caption)) named.push_back(i);
    c["notes"] = named;
    out.push_back(std::move(c));
    walk(rec, left, top, notes, out);
  }
}

}  // namespace

std::string picture_name(const std::string& ref) {
  std::string s = ref;
  if (s.rfind("images/", 0) == 0) s = s.substr(7);
  if (s.empty() || s[0] == '.' || s.size() > 200) return "";
  for (char ch : s)
    if (!std::isalnum(static_cast<unsigned char>(ch)) && ch != '_' && ch != '-' && ch != '.') return "";
  return s;
}

json control_boxes(const Layout& layout, const std::vector<std::string>& notes) {
  json out = json::array();
  if (layout.is_object()) walk(layout, 0, 0, notes, out);
  return out;
}

}  // namespace serve
