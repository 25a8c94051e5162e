#include "json2img/inventory.h"

namespace j2i {

namespace {

std::string quote_text(const std::string& s) {
  std::string out = "\"";
  for (char c : s) {
    if (c == '\n')
      out += "\\n";
    else if (c == '"' || c == '\\')
      out += std::string("\\") + c;
    else
      out += c;
  }
  return out + "\"";
}

std::string box_text(const layout::Rect& r) {
  return "@" + std::to_string(r.l) + "," + std::to_string(r.t) + " " + std::to_string(r.w()) + "x" +
         std::to_string(r.h());
}

std::string str_field(const Json& rec, const char* key) {
  const Json& v = ub::get(rec, key);
  return v.is_string() ? v.get<std::string>() : "";
}

std::string entry_line(const std::string& indent, const std::string& name, const Json& rec,
                       const layout::Rect& origin, const std::string& where) {
  const Json& p = ub::get(rec, "position");
  layout::Rect r = p.is_object() ? layout::read_box(p, origin.l, origin.t, where) : origin;
  std::string line = indent + name + " " + quote_text(str_field(rec, "caption")) + " " + box_text(r);
  std::string text = str_field(rec, "text");
  if (!text.empty()) line += " text " + quote_text(text);
  const Json& pic = ub::get(ub::get(rec, "picTab"), "pic0");
  if (pic.is_string() && !pic.get<std::string>().empty()) line += " pic " + pic.get<std::string>();
  return line;
}

}  // namespace

std::vector<std::string> inventory_lines(const layout::Layout& lay) {
  std::vector<std::string> out;
  for (const auto& c : lay.controls) {
    std::string indent((size_t)c.depth * 2, ' ');
    const Json& r = *c.rec;
    std::string line = indent + c.key + " " + c.type + " " + quote_text(c.caption) + " " + box_text(c.box);
    std::string text = str_field(r, "text"), hint = str_field(r, "hintText");
    if (!text.empty()) line += " text " + quote_text(text);
    if (text.empty() && !hint.empty()) line += " hint " + quote_text(hint);
    std::string bg = str_field(r, "backgroundPic");
    if (!bg.empty()) line += " pic " + bg;
    if (!c.shown) line += " [hidden]";
    if (c.shown && c.vis.empty()) line += " [clipped]";
    out.push_back(line);

    std::string sub = indent + "  ";
    if (c.type == "radiogroup" && ub::get(r, "radiobuttons").is_array()) {
      const Json& rbs = r["radiobuttons"];
      for (size_t i = 0; i < rbs.size(); ++i)
        out.push_back(entry_line(sub, "radiobutton[" + std::to_string(i) + "]", rbs[i], c.box,
                                 c.key + ".radiobuttons"));
    }
    if (c.type == "listview" && ub::get(r, "item").is_object()) {
      const Json& item = r["item"];
      const Json& ip = ub::get(item, "position");
      layout::Rect ib = ip.is_object() ? layout::read_box(ip, c.box.l, c.box.t, c.key + ".item") : c.box;
      out.push_back(entry_line(sub, "item", item, c.box, c.key + ".item"));
      const Json& subs = ub::get(item, "subItem");
      if (subs.is_array())
        for (size_t i = 0; i < subs.size(); ++i)
          out.push_back(entry_line(sub + "  ", "subItem[" + std::to_string(i) + "]", subs[i], ib,
                                   c.key + ".subItem"));
    }
  }
  return out;
}

}  // namespace j2i
