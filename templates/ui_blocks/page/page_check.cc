#include "page/page_check.h"

#include "spec/page_limits.h"

namespace ub {

namespace {

// A key whose text becomes part of a picture name: a text when given at all.
void name_text(const LimitWhere& w, const Json& holder, const std::string& key, const std::string& shown) {
  const Json& v = get(holder, key);
  if (!truthy(v) || v.is_string()) return;
  w.fail_at(shown, "expected text, got " + shown_value(v));
}

// Icons and states of the entries of a list key (items, actions...).
void entry_names(const LimitWhere& w, const char* list_key, std::initializer_list<const char*> keys,
                 bool plain_is_icon) {
  const Json& list = get(w.blk, list_key);
  if (!list.is_array()) return;
  for (size_t i = 0; i < list.size(); ++i) {
    const Json& e = list[i];
    const std::string at = cat(list_key, "[", i, "]");
    if (e.is_object()) {
      for (const char* k : keys) name_text(w, e, k, at + "." + k);
    } else if (plain_is_icon && truthy(e) && !e.is_string()) {
      w.fail_at(at, "expected an icon name or a mapping, got " + shown_value(e));
    }
  }
}

// The block name becomes part of captions and callback names.
void names(const LimitWhere& w) {
  const Json& v = get(w.blk, "name");
  if (truthy(v) && !(v.is_string() && is_identifier(v.get<std::string>())))
    w.fail_at("name", cat(literal_form(v), " is not an identifier: letters, digits and underscores, not starting "
                          "with a digit, at most ", kMaxIdentifierLength, " characters"));
  for (const char* k : {"icon", "backIcon", "state", "icon_state"}) name_text(w, w.blk, k, k);
  entry_names(w, "items", {"icon", "state", "icon_state"}, false);
  entry_names(w, "actions", {"icon"}, true);
}

class PageCheck {
 public:
  PageCheck(const Metrics& m, const KindTable& kinds)
      : kinds_(kinds), lc_{m, (long long)kScrollScreens * m.H, [this](const LimitWhere& w) { return block(w); }} {}

  void page(const Json& pg) {
    const Json& blocks = get(pg, "blocks");
    int overlays = 0;
    if (blocks.is_array()) {
      for (size_t i = 0; i < blocks.size(); ++i) {
        const LimitWhere w{blocks[i], cat("page.blocks[", i, "]")};
        const BlockKind* k = kinds_.of(w.blk);
        if (k && k->flow != Flow::Content && ++overlays > kMaxOverlays)
          w.fail(cat("a page holds at most ", kMaxOverlays, " fixed bands and overlays"));
        // Each block is bounded on its own; the page's length only costs linear time.
        block(w);
      }
    }
    const Json& footer = get(pg, "footer");
    if (footer.is_object()) block(LimitWhere{footer, "page.footer"});
  }

 private:
  // Checks one block; returns the least height it takes in the content flow.
  long long block(const LimitWhere& w) {
    if (!w.blk.is_object()) return 0;
    names(w);
    const BlockKind* k = kinds_.of(w.blk);
    if (k && k->limits) return k->limits(lc_, w);
    return lc_.m.h_b2;
  }

  const KindTable& kinds_;
  const LimitCheck lc_;
};

}  // namespace

void check_page_limits(const Json& page, const std::string& page_name, const Metrics& m, const KindTable& kinds) {
  if (!is_identifier(page_name))
    throw InputError(cat("page name ", literal_form(Json(page_name)),
                         " is not an identifier (letters, digits and underscores, not starting with a digit, at most ",
                         kMaxIdentifierLength, " characters); it names the layout and logic files, never a path"));
  PageCheck(m, kinds).page(page);
}

}  // namespace ub
