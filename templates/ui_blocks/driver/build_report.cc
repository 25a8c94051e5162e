#include "driver/build_report.h"

#include <cstdio>

#include "base/values.h"
#include "driver/console_text.h"

namespace ub {

namespace {

std::string pad_left(const std::string& s, size_t n) {
  const size_t len = cp_len(s);
  return len >= n ? s : std::string(n - len, ' ') + s;
}

std::string seconds_text(double s) {
  char buf[32];
  std::snprintf(buf, sizeof buf, "%.2f s", s);
  return buf;
}

}  // namespace

std::string summary_table(const std::vector<SummaryRow>& rows) {
  size_t page_w = 4, size_w = 4;
  for (const SummaryRow& r : rows) {
    page_w = std::max(page_w, cp_len(r.page));
    size_w = std::max(size_w, cp_len(r.size));
  }
  auto line = [&](const std::string& page, const std::string& size, const std::vector<std::string>& rest) {
    std::string out = pad_right(page, page_w) + "  " + pad_right(size, size_w);
    static const size_t widths[] = {8, 8, 5, 8};
    for (size_t i = 0; i < rest.size(); ++i) out += "  " + pad_left(rest[i], widths[i]);
    while (!out.empty() && out.back() == ' ') out.pop_back();
    return out + "\n";
  };
  std::string out = line("page", "size", {"controls", "pictures", "notes", "time"});
  for (const SummaryRow& r : rows) {
    if (r.up_to_date)
      out += pad_right(r.page, page_w) + "  " + pad_right(r.size, size_w) + "  up to date\n";
    else
      out += line(r.page, r.size,
                  {std::to_string(r.controls), std::to_string(r.pictures), std::to_string(r.notes), seconds_text(r.seconds)});
  }
  return out;
}

std::string notable_lines(const std::string& report) {
  std::string out, head;
  for (const std::string& l : split_lines(report)) {
    if (starts_with(l, "==== ")) {
      head = l;
      continue;
    }
    if (!contains(l, "[X]") && !contains(l, "[WARN]") && !contains(l, "[回退线框]")) continue;
    if (!head.empty()) {
      out += head + "\n";
      head.clear();
    }
    out += l + "\n";
  }
  return out;
}

std::string progress_line(size_t done, size_t total, const std::vector<std::string>& running, size_t width) {
  std::string out = cat("[", done, "/", total, "]");
  if (!running.empty()) out += " " + join(running, ", ");
  if (cp_len(out) > width) out = cp_prefix(out, width - 1) + "…";
  return out;
}

}  // namespace ub
