#include "page/page_check.h"

#include "kinds/block_limits.h"
#include "kinds/value_check.h"
#include "spec/page_limits.h"

namespace ub {

namespace {

// A value whose text becomes part of a picture name: a text when given at all. `shown`
// gives the key's place for the message, built only on failure.
template <class Shown>
void name_text(const BlockRecord& w, const Json* v, const Shown& shown) {
  if (!v || v->is_string() || !truthy(*v)) return;
  fail_at(w, shown(), "expected text, got " + shown_value(*v));
}

// Icons and states of the entries of a list value (items, actions...).
void entry_names(const BlockRecord& w, const Json* list, const char* list_key, std::initializer_list<const char*> keys,
                 bool plain_is_icon) {
  if (!list || !list->is_array()) return;
  for (size_t i = 0; i < list->size(); ++i) {
    const Json& e = (*list)[i];
    if (e.is_object()) {
      for (const char* k : keys) {
        auto it = e.find(std::string_view(k));
        if (it != e.end()) name_text(w, &*it, [&] { return cat(list_key, "[", i, "].", k); });
      }
    } else if (plain_is_icon && !e.is_string() && truthy(e)) {
      fail_at(w, cat(list_key, "[", i, "]"), "expected an icon name or a mapping, got " + shown_value(e));
    }
  }
}

// The keys of a block the names check reads, found in one pass over its members.
struct NameKeys {
  const Json* name = nullptr;
  const Json* text[4] = {};  // icon, backIcon, state, icon_state
  const Json* items = nullptr;
  const Json* actions = nullptr;
};
constexpr const char* kNameTextKeys[4] = {"icon", "backIcon", "state", "icon_state"};

NameKeys name_keys(const Json& blk) {
  NameKeys n;
  auto keep = [](const Json*& slot, const Json& v) {
    if (!slot) slot = &v;
  };
  for (const auto& [key, value] : blk.get_ref<const Json::object_t&>()) {
    switch (key.size()) {
      case 4:
        if (key == "name") keep(n.name, value);
        else if (key == "icon") keep(n.text[0], value);
        break;
      case 5:
        if (key == "state") keep(n.text[2], value);
        else if (key == "items") keep(n.items, value);
        break;
      case 7:
        if (key == "actions") keep(n.actions, value);
        break;
      case 8:
        if (key == "backIcon") keep(n.text[1], value);
        break;
      case 10:
        if (key == "icon_state") keep(n.text[3], value);
        break;
    }
  }
  return n;
}

// The block name becomes part of captions and callback names.
void names(const BlockRecord& w) {
  const NameKeys n = name_keys(*w.raw);
  if (n.name && truthy(*n.name) && !(n.name->is_string() && is_identifier(n.name->get_ref<const std::string&>())))
    fail_at(w, "name", cat(literal_form(*n.name), " is not an identifier: letters, digits and underscores, not "
                                                 "starting with a digit, at most ",
                          kMaxIdentifierLength, " characters"));
  for (int i = 0; i < 4; ++i) name_text(w, n.text[i], [&] { return std::string(kNameTextKeys[i]); });
  entry_names(w, n.items, "items", {"icon", "state", "icon_state"}, false);
  entry_names(w, n.actions, "actions", {"icon"}, true);
}

class PageCheck {
 public:
  explicit PageCheck(const Metrics& m)
      : lc_{m, (long long)kScrollScreens * m.H, [this](const BlockRecord& b) { return block(b, b.kind); }} {}

  void page(const PageRecords& pg) {
    int overlays = 0;
    for (const BlockRecord& b : pg.blocks) {
      if (b.kind && b.kind->flow != Flow::Content && ++overlays > kMaxOverlays)
        fail(b, cat("a page holds at most ", kMaxOverlays, " fixed bands and overlays"));
      // Each block is bounded on its own; the page's length only costs linear time.
      block(b, b.kind);
    }
    // page.footer is checked as given, without a type of its own.
    if (pg.footer) block(*pg.footer, nullptr);
  }

 private:
  // Checks one block of kind k (null: unknown); returns the least height it takes in the content flow.
  long long block(const BlockRecord& b, const BlockKind* k) {
    if (!b.raw->is_object()) return 0;
    check_values(b);
    names(b);
    if (k && k->limits) return k->limits(lc_, b);
    return lc_.m.h_b2;
  }

  const LimitCheck lc_;
};

}  // namespace

void check_page_limits(const PageRecords& page, const std::string& page_name, const Metrics& m) {
  if (!is_identifier(page_name))
    throw InputError(cat("page name ", literal_form(Json(page_name)),
                         " is not an identifier (letters, digits and underscores, not starting with a digit, at most ",
                         kMaxIdentifierLength, " characters); it names the layout and logic files, never a path"));
  PageCheck(m).page(page);
}

}  // namespace ub
