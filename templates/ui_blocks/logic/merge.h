// The logic file of a page is the author's once edited: a run merges the new skeleton into
// it three ways, against the last skeleton written (the base the project keeps).
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "logic/logic.h"

namespace ub {

enum class LogicMergeKind {
  written,       // there was no file: the skeleton
  unchanged,     // the file already is the result
  replaced,      // the file was the last skeleton, untouched: the new skeleton
  merged,        // hand edits kept, the new skeleton merged in
  merged_no_base,  // no usable base: the file kept whole, missing callbacks added
  conflict,      // hand edits and the new skeleton change the same lines
};

// Lines of the author's file, 1-based, both ends included.
struct LineSpan {
  int first = 0, last = 0;
};

struct LogicMerge {
  LogicMergeKind kind = LogicMergeKind::written;
  std::string text;      // the file to write; on a conflict the merge with conflict markers
  std::string skeleton;  // the new skeleton: the base of the next run
  int added = 0;         // callbacks the author's file did not define
  int kept = 0;          // callbacks of controls no longer on the page, kept and marked
  std::vector<LineSpan> conflicts;  // conflict: the lines of the author's file concerned
  // The "<<<<<<<" lines of `text`, 1-based: the conflicts of this merge, or those of an
  // earlier one the author has not resolved yet (the file is then kept and nothing added).
  std::vector<int> marker_lines;
};

// The comment put above a callback whose control is no longer on the page.
extern const char* const kRemovedControlMark;

// `base`: the skeleton recorded by the last run, nullopt when missing; a base that is not
// exactly a skeleton (damaged, or hand-edited) is not used. `file`: the logic file as its
// author left it, nullopt when missing. Refuses duplicate button captions like logic_text.
LogicMerge merge_logic(const std::optional<std::string>& base, const std::optional<std::string>& file,
                       const PageCallbacks& page);

}  // namespace ub
