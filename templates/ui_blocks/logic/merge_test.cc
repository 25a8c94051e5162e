#include "logic/merge.h"

#include <gtest/gtest.h>

#include "logic/logic_head.h"

using namespace ub;

namespace {

using Caps = std::vector<std::string>;

std::string skeleton(const Caps& buttons, const Caps& edits = {}) { return logic_text(PageCallbacks{buttons, edits}); }

const std::string kHead = std::string(LOGIC_HEAD) + kButtonSectionHead;

// A's callback as its author filled it in.
const std::string kEditedA =
    "static bool onButtonClick_A(TVButton *pButton) {\n    openDoor();\n    return true;\n}\n";
const std::string kHelper = "\nstatic void helper() {\n    // mine\n}\n";

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  const size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

std::string mark() { return std::string(kRemovedControlMark) + "\n"; }

int line_of(const std::string& text, const std::string& piece) {
  const size_t at = text.find(piece);
  return at == std::string::npos ? -1 : 1 + (int)std::count(text.begin(), text.begin() + (long)at, '\n');
}

}  // namespace

TEST(MergeLogic, NewAndUntouchedFilesAreTheSkeleton) {
  const PageCallbacks page{{"A", "B"}, {"E"}};
  LogicMerge m = merge_logic(std::nullopt, std::nullopt, page);
  EXPECT_EQ(m.kind, LogicMergeKind::written);
  EXPECT_EQ(m.text, skeleton({"A", "B"}, {"E"}));
  EXPECT_EQ(m.skeleton, m.text);

  // Untouched since the last run: replaced whole, the stubs of controls that are gone with it.
  m = merge_logic(skeleton({"A", "B", "C"}), skeleton({"A", "B", "C"}), page);
  EXPECT_EQ(m.kind, LogicMergeKind::replaced);
  EXPECT_EQ(m.text, skeleton({"A", "B"}, {"E"}));

  for (const auto& base : {std::optional<std::string>(skeleton({"A"})), std::optional<std::string>()}) {
    m = merge_logic(base, skeleton({"A", "B"}, {"E"}), page);
    EXPECT_EQ(m.kind, LogicMergeKind::unchanged);
    EXPECT_EQ(m.text, skeleton({"A", "B"}, {"E"}));
  }
}

TEST(MergeLogic, HandEditsSurviveAndNewCallbacksAreAdded) {
  const std::string base = skeleton({"A", "C"});
  const std::string ours = replaced(base, button_callback("A"), kEditedA) + kHelper;
  LogicMerge m = merge_logic(base, ours, PageCallbacks{{"A", "B", "C"}, {"E"}});
  EXPECT_EQ(m.kind, LogicMergeKind::merged);
  // B lands where the page has it; the edit section and the helper were both added at the
  // end: both are kept, the author's lines first.
  EXPECT_EQ(m.text, kHead + kEditedA + button_callback("B") + button_callback("C") + kHelper + kEditSectionHead +
                        edit_callback("E"));
  EXPECT_EQ(std::tie(m.added, m.kept), std::tuple(2, 0));
  EXPECT_EQ(m.skeleton, skeleton({"A", "B", "C"}, {"E"}));

  // The next run has nothing to add.
  const LogicMerge again = merge_logic(m.skeleton, m.text, PageCallbacks{{"A", "B", "C"}, {"E"}});
  EXPECT_EQ(again.kind, LogicMergeKind::unchanged);
  EXPECT_EQ(again.text, m.text);

  // A control moved on the page moves no hand-written code, and touches no edit.
  const LogicMerge moved = merge_logic(m.skeleton, m.text, PageCallbacks{{"C", "A", "B"}, {"E"}});
  EXPECT_EQ(moved.kind, LogicMergeKind::unchanged);
}

TEST(MergeLogic, CallbacksOfRemovedControlsStayMarked) {
  const std::string editedB = "static bool onButtonClick_B(TVButton *pButton) {\n    beep();\n    return false;\n}\n";
  const std::string ours = replaced(skeleton({"A", "B", "C"}), button_callback("B"), editedB);
  // B was edited, C was not: a plain merge would drop C; both stay, marked.
  LogicMerge m = merge_logic(skeleton({"A", "B", "C"}), ours, PageCallbacks{{"A"}, {}});
  EXPECT_EQ(m.kind, LogicMergeKind::merged);
  EXPECT_EQ(m.text, kHead + button_callback("A") + mark() + editedB + mark() + button_callback("C"));
  EXPECT_EQ(std::tie(m.added, m.kept), std::tuple(0, 2));

  // Marked once only.
  const LogicMerge again = merge_logic(m.skeleton, m.text, PageCallbacks{{"A"}, {}});
  EXPECT_EQ(again.kind, LogicMergeKind::unchanged);

  // The controls come back: their callbacks are not added twice and lose the mark.
  const LogicMerge back = merge_logic(m.skeleton, m.text, PageCallbacks{{"A", "B", "C"}, {}});
  EXPECT_EQ(back.kind, LogicMergeKind::merged);
  EXPECT_EQ(back.text, kHead + button_callback("A") + editedB + button_callback("C"));
  EXPECT_EQ(std::tie(back.added, back.kept), std::tuple(0, 0));
}

TEST(MergeLogic, WithoutAUsableBaseTheFileStaysWholeAndOnlyMissingCallbacksAreAdded) {
  // Written before bases were kept: A edited, D written by hand under another signature.
  const std::string handD = "static bool onButtonClick_D(TVButton *b) { return true; }\n";
  const std::string ours = kHead + kEditedA + handD + kHelper;
  const PageCallbacks page{{"A", "B", "D"}, {"E"}};
  const std::string want = kHead + kEditedA + handD + button_callback("B") + kHelper + kEditSectionHead + edit_callback("E");
  // No base, or a base that is no skeleton (hand-edited): the same.
  for (const auto& base : {std::optional<std::string>(), std::optional<std::string>(skeleton({"A"}) + "// x\n")}) {
    LogicMerge m = merge_logic(base, ours, page);
    EXPECT_EQ(m.kind, LogicMergeKind::merged_no_base);
    EXPECT_EQ(m.text, want);
    EXPECT_EQ(std::tie(m.added, m.kept), std::tuple(2, 0));
  }
  // A file without the section heads gets them with what it lacks.
  LogicMerge bare = merge_logic(std::nullopt, "void helper() {}\n", PageCallbacks{{"A"}, {"E"}});
  EXPECT_EQ(bare.text, "void helper() {}\n" + std::string(kButtonSectionHead) + button_callback("A") +
                           kEditSectionHead + edit_callback("E"));
  // A last line without its line break is ended first.
  bare = merge_logic(std::nullopt, kHead + "static bool onButtonClick_A(TVButton *p) {}", PageCallbacks{{"A", "B"}, {}});
  EXPECT_EQ(bare.text, kHead + "static bool onButtonClick_A(TVButton *p) {}\n" + button_callback("B"));
}

TEST(MergeLogic, AConflictNamesTheLinesOfTheAuthorsFile) {
  const std::string base = skeleton({"A", "C"});
  const PageCallbacks page{{"A", "B", "C"}, {}};
  // B goes right before C's first line, which the author changed.
  const std::string signature = "static bool onButtonClick_C(TVButton * /*unused*/) {\n";
  const std::string ours = replaced(base, "static bool onButtonClick_C(TVButton *pButton) {\n", signature);
  LogicMerge m = merge_logic(base, ours, page);
  ASSERT_EQ(m.kind, LogicMergeKind::conflict);
  const int line = line_of(ours, signature);
  ASSERT_EQ(m.conflicts.size(), 1u);
  EXPECT_EQ(std::tie(m.conflicts[0].first, m.conflicts[0].last), std::tie(line, line));
  ASSERT_EQ(m.marker_lines.size(), 1u);
  EXPECT_EQ(m.marker_lines[0], line_of(m.text, "<<<<<<< 手改\n"));
  EXPECT_NE(m.text.find("=======\n"), std::string::npos);
  EXPECT_NE(m.text.find(">>>>>>> 新骨架\n"), std::string::npos);
  EXPECT_NE(m.text.find(signature), std::string::npos);
  EXPECT_EQ(m.skeleton, skeleton({"A", "B", "C"}));

  // Written with its markers and run again before they are resolved: the file stays as it is,
  // and D, not defined on the author's side, waits for the resolution.
  const LogicMerge pending = merge_logic(m.skeleton, m.text, PageCallbacks{{"A", "B", "C", "D"}, {}});
  EXPECT_EQ(pending.kind, LogicMergeKind::unchanged);
  EXPECT_EQ(pending.text, m.text);
  EXPECT_EQ(pending.marker_lines, m.marker_lines);

  // The author removed C's callback where B goes: the lines around the removal are named.
  const std::string without_c = replaced(base, button_callback("C"), "");
  m = merge_logic(base, without_c, page);
  ASSERT_EQ(m.kind, LogicMergeKind::conflict);
  const int last = (int)std::count(without_c.begin(), without_c.end(), '\n');
  ASSERT_EQ(m.conflicts.size(), 1u);
  EXPECT_EQ(std::tie(m.conflicts[0].first, m.conflicts[0].last), std::tie(last, last));
}

TEST(MergeLogic, AFileSavedWithCrLfMergesLikeItsSkeleton) {
  std::string ours = replaced(skeleton({"A", "C"}), button_callback("A"), kEditedA);
  for (size_t at = 0; (at = ours.find('\n', at)) != std::string::npos; at += 2) ours.insert(at, "\r");
  LogicMerge m = merge_logic(skeleton({"A", "C"}), ours, PageCallbacks{{"A", "B", "C"}, {}});
  ASSERT_EQ(m.kind, LogicMergeKind::merged);
  EXPECT_NE(m.text.find("    openDoor();\r\n"), std::string::npos);
  EXPECT_NE(m.text.find("}\r\n" + button_callback("B") + "static bool onButtonClick_C"), std::string::npos);
}
