#include "driver/logic_file.h"

#include <filesystem>

namespace fs = std::filesystem;

namespace ub {

namespace {

// A regular file's bytes; nullopt when missing, or when it is something else (which the
// commit then refuses to write over).
std::optional<std::string> read_if_file(const fs::path& p) {
  std::error_code ec;
  if (!fs::is_regular_file(fs::symlink_status(p, ec))) return std::nullopt;
  return read_file(p.string());
}

std::string line_spans(const std::vector<LineSpan>& spans) {
  std::vector<std::string> parts;
  for (const LineSpan& s : spans)
    parts.push_back(s.first == s.last ? cat("第 ", s.first, " 行") : cat("第 ", s.first, "-", s.last, " 行"));
  return join(parts, "、");
}

std::string line_list(const std::vector<int>& lines) {
  std::vector<std::string> parts;
  for (int line : lines) parts.push_back(cat(line));
  return join(parts, "、");
}

}  // namespace

LogicPlan plan_logic(const std::string& project, const std::string& page, const PageCallbacks& callbacks,
                     bool write_conflicts) {
  LogicPlan p;
  const fs::path file = fs::path(project) / logic_path(page);
  p.file_was = read_if_file(file);
  p.base_was = read_if_file(fs::path(project) / logic_base_path(page));
  p.merge = merge_logic(p.base_was, p.file_was, callbacks);
  if (p.merge.kind == LogicMergeKind::conflict && !write_conflicts)
    stop(cat("[X] logic 合并冲突：", file.string(), " ", line_spans(p.merge.conflicts),
             "的手改与新骨架改在同一处 → 什么都没写\n"
             "  改法：加 --write-conflicts 重跑，合并结果带冲突标记（<<<<<<< 手改 / ======= / >>>>>>> 新骨架）写入，"
             "逐处解决后再运行；或先用 --no-logic 不动 logic 文件"));
  return p;
}

void add_logic(base::OutputSet& files, const std::string& page, const LogicPlan& p) {
  files.add(logic_path(page), p.merge.text);
  files.add(logic_base_path(page), p.merge.skeleton);
  files.require_unchanged(logic_path(page), p.file_was);
  files.require_unchanged(logic_base_path(page), p.base_was);
}

std::string logic_status(const LogicPlan& p, const std::string& page) {
  const LogicMerge& m = p.merge;
  if (m.kind != LogicMergeKind::conflict && !m.marker_lines.empty())
    return cat(m.kind == LogicMergeKind::unchanged ? "：未变" : "：已与手改合并", "；还有 ", m.marker_lines.size(),
               " 处冲突标记未解决（第 ", line_list(m.marker_lines), " 行起）→ 解决后再运行才会补上新回调");
  switch (m.kind) {
    case LogicMergeKind::written: return "";
    case LogicMergeKind::unchanged: return "：未变";
    case LogicMergeKind::replaced: return "：未手改 → 换成新骨架";
    case LogicMergeKind::merged:
      return cat("：已与手改合并 → 新增 ", m.added, " 个回调，保留 ", m.kept, " 个已删控件的回调（已加注释）");
    case LogicMergeKind::merged_no_base:
      return cat("：没有可用的合并基线（", logic_base_path(page), p.base_was ? " 不是上次的骨架" : " 缺失",
                 "）→ 手改全部保留，只补 ", m.added, " 个新回调");
    case LogicMergeKind::conflict:
      return cat("：[X] ", m.marker_lines.size(), " 处合并冲突已带冲突标记写入（第 ", line_list(m.marker_lines),
                 " 行起）→ 逐处解决后再运行");
  }
  return "";
}

}  // namespace ub
