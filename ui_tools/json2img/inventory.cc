#include "json2img/inventory.h"

namespace j2i {

namespace {

std::string quote_text(std::string_view s) {
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

std::string entry_line(const layout::Layout& lay, const std::string& indent, const std::string& name,
                       const layout::Element& e, const layout::Rect& origin, const std::string& where) {
  layout::Rect r = e.position.is_object() ? layout::read_box(lay, e.position, origin.l, origin.t, where) : origin;
  std::string line = indent + name + " " + quote_text(e.caption) + " " + box_text(r);
  if (!e.text.empty()) line += " text " + quote_text(e.text);
  if (!e.pics[0].empty()) line += " pic " + std::string(e.pics[0]);
  return line;
}

}  // namespace

std::vector<std::string> inventory_lines(const layout::Layout& lay) {
  std::vector<std::string> out;
  for (const auto& c : lay.controls) {
    std::string indent((size_t)c.depth * 2, ' ');
    const layout::Extra* ex = lay.extra_of(c);
    std::string line = indent + c.key + " " + c.type + " " + quote_text(c.caption) + " " + box_text(c.box);
    const std::string_view hint = ex ? ex->hint_text : std::string_view();
    if (!c.text.empty()) line += " text " + quote_text(c.text);
    if (c.text.empty() && !hint.empty()) line += " hint " + quote_text(hint);
    if (!c.background_pic.empty()) line += " pic " + std::string(c.background_pic);
    if (!c.shown) line += " [hidden]";
    if (c.shown && c.vis.empty()) line += " [clipped]";
    out.push_back(line);

    std::string sub = indent + "  ";
    if (c.type == "radiogroup" && ex && ex->has_radios)
      for (int i = ex->radio_begin; i < ex->radio_end; ++i)
        out.push_back(entry_line(lay, sub, "radiobutton[" + std::to_string(i - ex->radio_begin) + "]",
                                 lay.elements[(size_t)i], c.box, c.key + ".radiobuttons"));
    if (c.type == "listview" && ex && ex->item >= 0) {
      const layout::Element& item = lay.elements[(size_t)ex->item];
      layout::Rect ib =
          item.position.is_object() ? layout::read_box(lay, item.position, c.box.l, c.box.t, c.key + ".item") : c.box;
      out.push_back(entry_line(lay, sub, "item", item, c.box, c.key + ".item"));
      if (ex->has_subs)
        for (int i = ex->sub_begin; i < ex->sub_end; ++i)
          out.push_back(entry_line(lay, sub + "  ", "subItem[" + std::to_string(i - ex->sub_begin) + "]",
                                   lay.elements[(size_t)i], ib, c.key + ".subItem"));
    }
  }
  return out;
}

}  // namespace j2i
