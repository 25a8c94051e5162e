// The tables are named after the listview each feeds: the list "List" + caption base, a
// wheel column "List" + caption base + "Col" + n, as the list callbacks of the skeleton
// are. A block's own name therefore keeps the names when blocks are inserted above it.
#include "logic/data_header.h"

#include "base/values.h"

namespace ub {

namespace {

const char* const kDataHead =
    "/*\n"
    " * 本文件由 templates/ui_blocks/compose 生成：页面的列表行与滚轮列数据。\n"
    " * 每次运行都会重写，请勿手改；要改数据，改 spec.json 里的 items / columns。\n"
    " *\n"
    " * 列表 List<名>：List<名>Count() 行数，List<名>Row(i) 第 i 行，\n"
    " *   fillList<名>Item(item, i) 给 item 的 title / value / icon / chevron 赋值；\n"
    " * 滚轮列 List<名>Col<n>：同名的 Count()、Value(i)、fill…Item(item, i)（只赋 title）。\n"
    " * 下标越界时给空行 / 空文本。\n"
    " */\n"
    "#pragma once\n";

const char* const kRowType =
    "// 列表的一行：标题、值、图标图片（resources/images 下的文件名，\"\" = 无图标）、是否画箭头\n"
    "struct ListRow {\n"
    "    const char *title;\n"
    "    const char *value;\n"
    "    const char *icon;\n"
    "    bool chevron;\n"
    "};\n"
    "\n"
    "static const ListRow kNoRow = {\"\", \"\", \"\", false};\n";

// The row accessor's body: the table's row, or the empty one out of range.
std::string pick(const std::string& table, size_t n, const std::string& none) {
  if (n == 0) return cat("    (void)index;\n    return ", none, ";\n");
  return cat("    return index >= 0 && index < ", n, " ? ", table, "[index] : ", none, ";\n");
}

std::string list_text(const ListData& l) {
  const std::string id = "List" + l.base, table = "k" + id + "Rows";
  std::string out = cat("\n// ---- 列表 ", id, "（", l.rows.size(), " 行）----\n");
  if (!l.rows.empty()) {
    out += cat("static const ListRow ", table, "[] = {\n");
    for (const ListDataRow& r : l.rows)
      out += cat("    {", cpp_string_literal(r.title), ", ", cpp_string_literal(r.value), ", ",
                 cpp_string_literal(r.icon), ", ", r.chevron ? "true" : "false", "},\n");
    out += "};\n";
  }
  out += cat("static inline int ", id, "Count() { return ", l.rows.size(), "; }\n");
  out += cat("static inline const ListRow &", id, "Row(int index) {\n", pick(table, l.rows.size(), "kNoRow"), "}\n");
  out += cat("template <typename Item>\nstatic inline void fill", id, "Item(Item &item, int index) {\n",
             "    const ListRow &row = ", id, "Row(index);\n", "    item.title = row.title;\n",
             "    item.value = row.value;\n", "    item.icon = row.icon;\n", "    item.chevron = row.chevron;\n}\n");
  return out;
}

std::string column_text(const std::string& id, const std::vector<std::string>& values) {
  const std::string table = "k" + id + "Values";
  std::string out = cat("\n// ---- 滚轮列 ", id, "（", values.size(), " 个值）----\n");
  if (!values.empty()) {
    out += cat("static const char *const ", table, "[] = {\n");
    for (const std::string& v : values) out += cat("    ", cpp_string_literal(v), ",\n");
    out += "};\n";
  }
  out += cat("static inline int ", id, "Count() { return ", values.size(), "; }\n");
  out += cat("static inline const char *", id, "Value(int index) {\n", pick(table, values.size(), "\"\""), "}\n");
  out += cat("template <typename Item>\nstatic inline void fill", id, "Item(Item &item, int index) {\n",
             "    item.title = ", id, "Value(index);\n}\n");
  return out;
}

}  // namespace

std::string cpp_string_literal(std::string_view text) {
  std::string out = "\"";
  for (size_t i = 0; i < text.size(); ++i) {
    const unsigned char c = static_cast<unsigned char>(text[i]);
    switch (c) {
      case '"': out += "\\\""; break;
      case '\\': out += "\\\\"; break;
      case '\n': out += "\\n"; break;
      case '\r': out += "\\r"; break;
      case '\t': out += "\\t"; break;
      case '?': out += i > 0 && text[i - 1] == '?' ? "\\?" : "?"; break;
      default:
        if (c < 0x20 || c == 0x7f) {
          // Three octal digits: an escape that never takes in the character after it.
          const char digits[] = {'\\', char('0' + (c >> 6)), char('0' + ((c >> 3) & 7)), char('0' + (c & 7))};
          out.append(digits, 4);
        } else {
          out += static_cast<char>(c);
        }
    }
  }
  return out + "\"";
}

std::string data_header_text(const std::string& page, const PageData& data) {
  std::string out = kDataHead;
  out += cat("\nnamespace ", page, "Data {\n\n", kRowType);
  for (const ListData& l : data.lists) out += list_text(l);
  for (const WheelData& w : data.wheels)
    for (size_t i = 0; i < w.columns.size(); ++i) out += column_text(cat("List", w.base, "Col", i + 1), w.columns[i]);
  out += cat("\n}  // namespace ", page, "Data\n");
  return out;
}

std::string data_header_path(const std::string& page) { return "src/logic/" + page + "Data.h"; }

}  // namespace ub
