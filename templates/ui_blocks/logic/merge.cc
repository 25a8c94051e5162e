// The three-way merge of a logic file (libgit2's git_merge_file on texts in memory), with
// what a plain merge of two skeletons would get wrong set right: callbacks of controls
// that are gone stay (marked), callbacks the author already wrote are not added twice,
// and every callback the page needs is defined afterwards.
#include "logic/merge.h"

#include <algorithm>
#include <map>
#include <set>
#include <stdexcept>

#include "logic/definitions.h"
#include "logic/libgit2.h"

namespace ub {

const char* const kRemovedControlMark = "// 页面上已没有这个控件：回调保留，不再需要时手动删除";

namespace {

// Conflict marker labels: the author's side, the last skeleton, the new skeleton.
const char* const kOursLabel = "手改";
const char* const kBaseLabel = "上次骨架";
const char* const kTheirsLabel = "新骨架";

// The lines of a text, each with its line break (the last one may have none).
std::vector<std::string> split_lines(const std::string& text) {
  std::vector<std::string> lines;
  size_t start = 0;
  while (start < text.size()) {
    size_t nl = text.find('\n', start);
    size_t end = nl == std::string::npos ? text.size() : nl + 1;
    lines.push_back(text.substr(start, end - start));
    start = end;
  }
  return lines;
}

// A line without its break and surrounding blanks.
std::string trimmed(const std::string& line) {
  size_t a = 0, b = line.size();
  while (a < b && (line[a] == ' ' || line[a] == '\t')) ++a;
  while (b > a && (line[b - 1] == '\n' || line[b - 1] == '\r' || line[b - 1] == ' ' || line[b - 1] == '\t')) --b;
  return line.substr(a, b - a);
}

[[noreturn]] void git_failed(const char* what) {
  const git_error* e = libgit2().error_last();
  throw std::runtime_error(std::string(what) + ": " + (e && e->message ? e->message : "libgit2 failed"));
}

struct GitMerge {
  bool clean = false;
  std::string text;
};

GitMerge git_merge(const std::string& base, const std::string& ours, const std::string& theirs, uint32_t style,
                   git_merge_file_favor_t favor = GIT_MERGE_FILE_FAVOR_NORMAL) {
  const Libgit2& git = libgit2();
  git_merge_file_input in_base = GIT_MERGE_FILE_INPUT_INIT, in_ours = GIT_MERGE_FILE_INPUT_INIT,
                       in_theirs = GIT_MERGE_FILE_INPUT_INIT;
  in_base.ptr = base.data();
  in_base.size = base.size();
  in_ours.ptr = ours.data();
  in_ours.size = ours.size();
  in_theirs.ptr = theirs.data();
  in_theirs.size = theirs.size();
  git_merge_file_options opts = GIT_MERGE_FILE_OPTIONS_INIT;
  opts.ancestor_label = kBaseLabel;
  opts.our_label = kOursLabel;
  opts.their_label = kTheirsLabel;
  opts.favor = favor;
  // Line ends are no edit: a file saved with CR LF merges like the skeleton it came from.
  opts.flags = style | GIT_MERGE_FILE_IGNORE_WHITESPACE_EOL;
  git_merge_file_result result = {};
  if (git.merge_file(&result, &in_base, &in_ours, &in_theirs, &opts) != 0) git_failed("cannot merge the logic file");
  GitMerge out{result.automergeable != 0, std::string(result.ptr ? result.ptr : "", result.len)};
  git.merge_file_result_free(&result);
  return out;
}

bool is_marker(const std::string& line, const std::string& mark) {
  const std::string t = trimmed(line);
  return t == mark;
}

// True when every conflict of a diff3-style merge has an empty base part: both sides only
// added lines at the same place, and keeping both (the author's first) loses nothing.
bool only_additions_conflict(const std::string& diff3) {
  const std::string base_mark = std::string(7, '|') + " " + kBaseLabel, mid = std::string(7, '=');
  const std::vector<std::string> lines = split_lines(diff3);
  for (size_t i = 0; i < lines.size(); ++i)
    if (is_marker(lines[i], base_mark) && !(i + 1 < lines.size() && is_marker(lines[i + 1], mid))) return false;
  return true;
}

// The line of the author's file each line of the merge comes from (0: not from it), through
// libgit2's diff of the two texts.
std::vector<int> lines_from_ours(const std::string& ours, const std::string& merged, size_t merged_lines) {
  const Libgit2& git = libgit2();
  struct Seen {
    std::set<int> added, deleted;  // lines of the merge not in ours; lines of ours not in the merge
  } seen;
  git_diff_options opts = GIT_DIFF_OPTIONS_INIT;
  opts.flags = GIT_DIFF_FORCE_TEXT;
  auto on_line = [](const git_diff_delta*, const git_diff_hunk*, const git_diff_line* l, void* p) -> int {
    auto* s = static_cast<Seen*>(p);
    if (l->origin == GIT_DIFF_LINE_ADDITION) s->added.insert(l->new_lineno);
    if (l->origin == GIT_DIFF_LINE_DELETION) s->deleted.insert(l->old_lineno);
    return 0;
  };
  if (git.diff_buffers(ours.data(), ours.size(), nullptr, merged.data(), merged.size(), nullptr, &opts, nullptr,
                       nullptr, nullptr, on_line, &seen) != 0)
    git_failed("cannot compare the logic file");
  std::vector<int> from(merged_lines + 1, 0);
  int at = 1;
  for (size_t j = 1; j <= merged_lines; ++j) {
    while (seen.deleted.count(at)) ++at;
    if (!seen.added.count((int)j)) from[j] = at++;
  }
  return from;
}

const std::string kOpenMark = std::string(7, '<') + " " + kOursLabel;

// Where the author's side of each conflict of `merged` stands in the author's file.
std::vector<LineSpan> locate_conflicts(const std::string& ours, const std::string& merged) {
  std::vector<LineSpan> spans;
  const std::vector<std::string> lines = split_lines(merged);
  const std::vector<int> from = lines_from_ours(ours, merged, lines.size());
  const std::string mid = std::string(7, '='), close = std::string(7, '>') + " " + kTheirsLabel;
  for (size_t i = 0; i < lines.size(); ++i) {
    if (!is_marker(lines[i], kOpenMark)) continue;
    size_t j = i + 1;
    int first = 0, last = 0;
    for (; j < lines.size() && !is_marker(lines[j], mid); ++j)
      if (int n = from[j + 1]) {
        if (!first) first = n;
        last = n;
      }
    if (!first) {
      // The author removed these lines: the lines around the place where they stood.
      int before = 0, after = 0;
      for (size_t k = i; k-- > 0 && !before;) before = from[k + 1];
      for (size_t k = j; k < lines.size() && !after; ++k)
        if (!is_marker(lines[k], close)) after = from[k + 1];
      first = before ? before : after;
      last = after ? after : before;
    }
    spans.push_back({std::max(first, 1), std::max(last, 1)});
  }
  return spans;
}

// The text as the author's side of its conflicts has it, each line in its place: the
// markers and the new skeleton's side are blank lines, so brackets pair up as in the file.
std::string authors_side(const std::vector<std::string>& lines) {
  const std::string mid = std::string(7, '='), close = std::string(7, '>') + " " + kTheirsLabel;
  std::string out;
  enum { outside, ours, theirs } at = outside;
  for (const std::string& line : lines) {
    if (at == outside && is_marker(line, kOpenMark)) at = ours;
    else if (at == ours && is_marker(line, mid)) at = theirs;
    else if (at == theirs && is_marker(line, close)) at = outside;
    else if (at != theirs) {
      out += line;
      continue;
    }
    out += '\n';
  }
  return out;
}

// The lines where conflicts start, 1-based.
std::vector<int> conflict_starts(const std::string& text) {
  std::vector<int> out;
  const std::vector<std::string> lines = split_lines(text);
  for (size_t i = 0; i < lines.size(); ++i)
    if (is_marker(lines[i], kOpenMark)) out.push_back((int)i + 1);
  return out;
}

// The callbacks of a text that is exactly a skeleton, or nullopt.
std::optional<PageCallbacks> skeleton_callbacks(const std::string& text) {
  const std::string button_head = "static bool onButtonClick_", button_tail = "(TVButton *pButton) {\n";
  const std::string edit_head = "static void onEditTextChanged_", edit_tail = "(const std::string &text) {\n";
  auto middle = [](const std::string& line, const std::string& head, const std::string& tail) -> std::optional<std::string> {
    if (line.size() > head.size() + tail.size() && starts_with(line, head) &&
        line.compare(line.size() - tail.size(), tail.size(), tail) == 0)
      return line.substr(head.size(), line.size() - head.size() - tail.size());
    return std::nullopt;
  };
  PageCallbacks found;
  for (const std::string& line : split_lines(text)) {
    if (auto cap = middle(line, button_head, button_tail)) found.buttons.push_back(*cap);
    else if (auto c = middle(line, edit_head, edit_tail)) found.edits.push_back(*c);
  }
  try {
    if (logic_text(found) == text) return found;
  } catch (const StopError&) {
  }
  return std::nullopt;
}

// The base's captions in their order, with each caption of `now` that is new (and not in
// `skip`) after the one it follows in `now`: the skeleton merged is then the base with
// callbacks added, never moved or removed, so a control moved or gone touches no hand edit.
std::vector<std::string> merge_order(const std::vector<std::string>& base, const std::vector<std::string>& now,
                                     const std::set<std::string>& skip) {
  std::vector<std::string> out = base;
  std::set<std::string> placed(base.begin(), base.end());
  for (size_t i = 0; i < now.size(); ++i) {
    if (placed.count(now[i]) || skip.count(now[i])) continue;
    size_t at = 0;
    for (size_t k = i; k-- > 0;)
      if (placed.count(now[k])) {
        at = (size_t)(std::find(out.begin(), out.end(), now[k]) - out.begin()) + 1;
        break;
      }
    out.insert(out.begin() + (long)at, now[i]);
    placed.insert(now[i]);
  }
  return out;
}

// Lines to add before a line of a text, or a line to drop.
struct Edit {
  size_t line;  // index of the line it stands before (lines.size(): at the end)
  int order;    // among edits at one line: what ends the function above first
  std::string text;
  bool drop = false;
};

std::string apply(const std::vector<std::string>& lines, std::vector<Edit> edits) {
  std::stable_sort(edits.begin(), edits.end(),
                   [](const Edit& a, const Edit& b) { return a.line != b.line ? a.line < b.line : a.order < b.order; });
  std::string out;
  size_t e = 0;
  for (size_t i = 0; i <= lines.size(); ++i) {
    bool drop = false;
    for (; e < edits.size() && edits[e].line == i; ++e) {
      if (edits[e].drop) {
        drop = true;
        continue;
      }
      if (!out.empty() && out.back() != '\n') out += '\n';
      out += edits[e].text;
    }
    if (i < lines.size() && !drop) out += lines[i];
  }
  return out;
}

// The merge made complete: marks the kept callbacks of controls that are gone (`gone`),
// unmarks those whose control is back, and adds every callback of the page still missing,
// after the last callback of its kind (or its section head, or at the end). A merge with
// conflict markers (`conflicted`) is searched on the author's side and gets nothing added:
// the new skeleton's side of its conflicts holds what it lacks.
std::string complete(const std::string& text, const PageCallbacks& page, const std::set<std::string>& gone,
                     int& kept, bool conflicted = false) {
  const std::vector<std::string> lines = split_lines(text);
  std::map<std::string, FunctionDef> defs;
  size_t last_button = std::string::npos, last_edit = std::string::npos;
  for (const FunctionDef& d : function_definitions(conflicted ? authors_side(lines) : text)) {
    defs.emplace(d.name, d);
    if (starts_with(d.name, "onButtonClick_")) last_button = (size_t)d.end_line;
    if (starts_with(d.name, "onEditTextChanged_")) last_edit = (size_t)d.end_line;
  }
  auto marked = [&](const FunctionDef& d) { return d.line > 0 && trimmed(lines[(size_t)d.line - 1]) == kRemovedControlMark; };

  std::vector<Edit> edits;
  kept = 0;
  for (const std::string& name : gone) {
    auto it = defs.find(name);
    if (it == defs.end()) continue;
    ++kept;
    if (!marked(it->second)) edits.push_back({(size_t)it->second.line, 1, std::string(kRemovedControlMark) + "\n"});
  }

  auto section_line = [&](const char* head) {
    const std::string want = trimmed(head + 1);  // the head without its leading blank line
    for (size_t i = 0; i < lines.size(); ++i)
      if (trimmed(lines[i]) == want) return i;
    return std::string::npos;
  };
  auto add_missing = [&](const std::vector<std::string>& caps, std::string (*name)(const std::string&),
                         std::string (*callback)(const std::string&), size_t last, const char* head) {
    std::string missing;
    for (const std::string& cap : caps) {
      auto it = defs.find(name(cap));
      if (it == defs.end()) missing += callback(cap);
      else if (marked(it->second)) edits.push_back({(size_t)it->second.line - 1, 2, "", true});
    }
    if (missing.empty() || conflicted) return;
    const size_t section = section_line(head);
    if (last != std::string::npos) edits.push_back({last + 1, 0, missing});
    else if (section != std::string::npos) edits.push_back({section + 1, 0, missing});
    else edits.push_back({lines.size(), 0, head + missing});
  };
  add_missing(page.buttons, button_callback_name, button_callback, last_button, kButtonSectionHead);
  add_missing(page.edits, edit_callback_name, edit_callback, last_edit, kEditSectionHead);
  return edits.empty() ? text : apply(lines, std::move(edits));
}

std::set<std::string> names_of(const std::vector<FunctionDef>& defs) {
  std::set<std::string> out;
  for (const auto& d : defs) out.insert(d.name);
  return out;
}

}  // namespace

LogicMerge merge_logic(const std::optional<std::string>& base, const std::optional<std::string>& file,
                       const PageCallbacks& page) {
  LogicMerge m;
  m.skeleton = logic_text(page);
  if (!file) {
    m.kind = LogicMergeKind::written;
    m.text = m.skeleton;
    return m;
  }
  const std::string& ours = *file;
  const std::set<std::string> defined = names_of(function_definitions(ours));
  for (const auto& c : page.buttons) m.added += !defined.count(button_callback_name(c));
  for (const auto& c : page.edits) m.added += !defined.count(edit_callback_name(c));
  if (ours == m.skeleton) {
    m.kind = LogicMergeKind::unchanged;
    m.text = ours;
    m.added = 0;
    return m;
  }

  const std::optional<PageCallbacks> before = base ? skeleton_callbacks(*base) : std::nullopt;
  std::set<std::string> gone;  // callbacks of the base whose controls are no longer on the page
  if (before) {
    const std::set<std::string> now_buttons(page.buttons.begin(), page.buttons.end()),
        now_edits(page.edits.begin(), page.edits.end());
    for (const auto& c : before->buttons)
      if (!now_buttons.count(c)) gone.insert(button_callback_name(c));
    for (const auto& c : before->edits)
      if (!now_edits.count(c)) gone.insert(edit_callback_name(c));
  }

  // Conflict markers of an earlier run still stand: the file stays as it is but for the marks
  // of controls that are gone, and gets what it lacks once they are resolved.
  if (!conflict_starts(ours).empty()) {
    m.text = complete(ours, page, gone, m.kept, true);
    m.kind = m.text == ours ? LogicMergeKind::unchanged : LogicMergeKind::merged;
    m.added = 0;
    m.marker_lines = conflict_starts(m.text);
    return m;
  }
  if (!before) {
    m.text = complete(ours, page, {}, m.kept);
    m.kind = m.text == ours ? LogicMergeKind::unchanged : LogicMergeKind::merged_no_base;
    return m;
  }
  if (ours == *base) {
    m.kind = LogicMergeKind::replaced;
    m.text = m.skeleton;
    return m;
  }

  // The skeleton merged in: the base with the page's new callbacks added, except those the
  // author has written already.
  std::set<std::string> skip_buttons, skip_edits;
  for (const auto& c : page.buttons)
    if (defined.count(button_callback_name(c))) skip_buttons.insert(c);
  for (const auto& c : page.edits)
    if (defined.count(edit_callback_name(c))) skip_edits.insert(c);
  const std::string theirs = logic_text(PageCallbacks{merge_order(before->buttons, page.buttons, skip_buttons),
                                                      merge_order(before->edits, page.edits, skip_edits)});

  // Nothing new to merge in (the usual rerun) gives the author's file as it is; libgit2,
  // whose start-up reads the system's certificates, is then not started at all.
  GitMerge merged = theirs == *base ? GitMerge{true, ours} : git_merge(*base, ours, theirs, GIT_MERGE_FILE_STYLE_MERGE);
  if (!merged.clean) {
    if (only_additions_conflict(git_merge(*base, ours, theirs, GIT_MERGE_FILE_STYLE_DIFF3).text)) {
      // In diff3 style the sides are not trimmed of the lines they share, which in union
      // would leave one function's closing brace to the other.
      merged = git_merge(*base, ours, theirs, GIT_MERGE_FILE_STYLE_DIFF3, GIT_MERGE_FILE_FAVOR_UNION);
    } else {
      // Written with the markers, and with the callbacks of controls that are gone marked
      // too; what is missing is on the skeleton's side of the conflicts.
      m.kind = LogicMergeKind::conflict;
      m.conflicts = locate_conflicts(ours, merged.text);
      m.text = complete(merged.text, page, gone, m.kept, true);
      m.marker_lines = conflict_starts(m.text);
      return m;
    }
  }
  m.text = complete(merged.text, page, gone, m.kept);
  m.kind = m.text == ours ? LogicMergeKind::unchanged : LogicMergeKind::merged;
  return m;
}

}  // namespace ub
