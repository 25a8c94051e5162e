#include "compose.h"
#include "spec/todo.h"
namespace ub {
const std::u32string BLACKLIST_CHARS = U"⌫℃■●‹－＋–…→★◆▶▷①";
void Composer::check_text_fit(const std::string&, const std::string&, double, int, int, const std::string&) {
  UB_TODO("check_text_fit");
}
void Composer::assert_children_fit(const Node&, int, int, const std::string&) const { UB_TODO("assert_children_fit"); }
std::vector<RectRecord> Composer::collect_rects(const NodeList&, int, int, const std::optional<std::array<int, 4>>&,
                                                std::vector<RectRecord>*, const std::vector<std::string>&) {
  UB_TODO("collect_rects");
}
void Composer::assert_no_bar_overlap(const NodeList&, const NodeList&) { UB_TODO("assert_no_bar_overlap"); }
std::vector<std::pair<std::optional<std::string>, std::string>> find_forbidden_chars(const Json&) {
  UB_TODO("find_forbidden_chars");
}
Json duplicate_captions(const Json&) { UB_TODO("duplicate_captions"); }
void assert_caption_unique(const Json&, const std::string&) { UB_TODO("assert_caption_unique"); }
}  // namespace ub
