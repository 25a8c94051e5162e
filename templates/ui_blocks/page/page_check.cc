#include "page/page_check.h"

#include "spec/page_limits.h"

namespace ub {

namespace {

// A value whose text becomes part of a picture name: a text when given at all. `shown`
// gives the key's place for the message, built only on failure.
template <class Shown>
void name_text(const LimitWhere& w, const Json* v, const Shown& shown) {
  if (!v || v->is_string() || !truthy(*v)) return;
  w.fail_at(shown(), "expected text, got " + shown_value(*v));
}

// Icons and states of the entries of a list value (items, actions...).
void entry_names(const LimitWhere& w, const Json* list, const char* list_key, std::initializer_list<const char*> keys,
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
      w.fail_at(cat(list_key, "[", i, "]"), "expected an icon name or a mapping, got " + shown_value(e));
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
void names(const LimitWhere& w) {
  const NameKeys n = name_keys(w.blk);
  if (n.name && truthy(*n.name) && !(n.name->is_string() && is_identifier(n.name->get_ref<const std::string&>())))
    w.fail_at("name", cat(literal_form(*n.name), " is not an identifier: letters, digits and underscores, not "
                                                 "starting with a digit, at most ",
                          kMaxIdentifierLength, " characters"));
  for (int i = 0; i < 4; ++i) name_text(w, n.text[i], [&] { return std::string(kNameTextKeys[i]); });
  entry_names(w, n.items, "items", {"icon", "state", "icon_state"}, false);
  entry_names(w, n.actions, "actions", {"icon"}, true);
}

class PageCheck {
 public:
  PageCheck(const Metrics& m, const KindTable& kinds)
      : kinds_(kinds), lc_{m, (long long)kScrollScreens * m.H, [this](const LimitWhere& w) { return block(w, kinds_.of(w.blk)); }} {}

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
        block(w, k);
      }
    }
    const Json& footer = get(pg, "footer");
    if (footer.is_object()) {
      const LimitWhere w{footer, "page.footer"};
      block(w, kinds_.of(w.blk));
    }
  }

 private:
  // Checks one block of kind k (null: unknown); returns the least height it takes in the content flow.
  long long block(const LimitWhere& w, const BlockKind* k) {
    if (!w.blk.is_object()) return 0;
    names(w);
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
