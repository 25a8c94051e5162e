// The spec frame, tokens, metrics, block library, and the fixed bands' changes.
#include "page/page_start.h"

#include <algorithm>

#include "kinds/registry.h"
#include "kinds/value_check.h"
#include "page/key_notes.h"
#include "page/page_check.h"
#include "spec/library.h"
#include "spec/page_limits.h"

namespace ub {

namespace {

// Every block, also inside containers, must be a mapping; a blocks value a sequence.
// where holds the list's place; each block's index is appended only for a message.
void check_blocks(const Json& blocks, std::string& where) {
  if (!truthy(blocks)) return;
  if (!blocks.is_array())
    throw InputError("spec.json: " + where + ": expected a list of blocks, got " + shown_value(blocks));
  const size_t base = where.size();
  for (size_t i = 0; i < blocks.size(); ++i) {
    const Json& b = blocks[i];
    if (!b.is_object())
      throw InputError("spec.json: " + where + cat("[", i, "]") + ": expected a block (a mapping), got " +
                       shown_value(b));
    const BlockKind* k = block_kinds().of(b);
    if (k && k->holds_blocks) {
      where += cat("[", i, "].blocks");
      check_blocks(get(b, "blocks"), where);
      where.resize(base);
    }
  }
}

int screen_side(const Json& res, const char* key) {
  const Json& v = get(res, key);
  if (v.is_null()) throw InputError(std::string("spec.json: resolution.") + key + ": missing");
  long long n;
  try {
    n = int_of(v);
  } catch (const InputError& e) {
    // A number fails on its range, anything else on its kind.
    throw InputError(std::string("spec.json: resolution.") + key + ": " +
                     (v.is_number() ? std::string(e.what()) : "expected a whole number, got " + shown_value(v)));
  }
  if (n < kMinScreenSide || n > kMaxScreenSide)
    throw InputError(cat("spec.json: resolution.", key, ": must lie between ", kMinScreenSide, " and ",
                         kMaxScreenSide, ", not ", n));
  return (int)n;
}

// Keys of the frame's mappings (the top level, resolution, page) that nothing reads.
void check_frame_keys(const Json& obj, const std::string& where, const std::vector<std::string>& known) {
  if (!obj.is_object()) return;
  for (const auto& [key, v] : obj.get_ref<const Json::object_t&>()) {
    if ((!key.empty() && key[0] == '_') || std::find(known.begin(), known.end(), key) != known.end()) continue;
    throw InputError(cat("spec.json: ", where, unknown_key_text(key, known)));
  }
}

constexpr int kMinViewport = 40;

// A toolbar may raise the title band, a bottom navigation takes its height off the
// viewport (once). Two toolbars change nothing: the flow refuses them.
void apply_band_changes(const PageRecords& page, Metrics& m, Notes& notes) {
  const BlockKind& top = block_kinds().with_flow(Flow::TopBand);
  const BlockKind& nav = block_kinds().with_flow(Flow::NavBand);
  int toolbars = 0;
  bool navs = false;
  for (const BlockRecord& b : page.blocks) {
    if (is_kind(b, top)) ++toolbars;
    if (is_kind(b, nav)) navs = true;
  }
  if (toolbars >= 2) return;
  if (toolbars == 1) {
    m.bar_top = std::max(m.tb_h, m.bar_top);
    m.viewport = std::max(m.content_bottom - m.bar_top, kMinViewport);
    notes.add(cat(top.type, " 固定带 ", m.tb_h, " px 占标题带位置 → 标题带 ", m.bar_top, "，视口重算为 ",
                  m.viewport));
  }
  if (navs) {
    m.viewport = std::max(m.viewport - m.nav_h, kMinViewport);
    notes.add(cat(nav.type, " 固定带 ", m.nav_h, " px 贴底栏上沿 → 视口缩至 ", m.viewport));
  }
}

}  // namespace

Installation load_installation(Json tokens, const std::string& blocks_dir, const std::string& icons_dir,
                               const std::string& required_keys_path) {
  if (!tokens.is_object()) throw InputError("_tokens.json must hold a mapping");
  Installation inst;
  inst.tokens = std::move(tokens);
  inst.blocks = load_block_library(blocks_dir);
  inst.icons = iconlib::Index::load(icons_dir);
  inst.required_keys = load_emit_layer(required_keys_path);
  return inst;
}

Json take_page(Json& spec) {
  if (!spec.is_object()) throw InputError("spec.json must hold a mapping, not " + type_name(spec));
  Json page;
  auto pg = spec.find("page");
  if (pg == spec.end() || !truthy(*pg)) page = Json::object();
  else if (!pg->is_object()) throw InputError("spec.json: page: expected a mapping, got " + shown_value(*pg));
  else page = std::move(*pg);
  check_frame_keys(spec, "", {"resolution", "page", "$schema"});
  check_frame_keys(get(spec, "resolution"), "resolution: ", {"width", "height"});
  check_frame_keys(page, "page: ", {"title", "subtitle", "blocks", "footer"});
  const Json& footer = get(page, "footer");
  if (truthy(footer) && !footer.is_object())
    throw InputError("spec.json: page.footer: expected a mapping, got " + shown_value(footer));
  check_shown_text(get(page, "title"), "page.title");
  check_shown_text(get(page, "subtitle"), "page.subtitle");
  std::string where = "page.blocks";
  check_blocks(get(page, "blocks"), where);
  return page;
}

PageContext build_page_context(const Json& spec, const Json& page, const PageRecords& records, std::string page_name,
                               const Installation& inst, Notes& notes) {
  PageContext c{inst.tokens, inst.blocks, inst.icons};
  c.page_name = std::move(page_name);

  const Json& res_in = get(spec, "resolution");
  Json res = has(spec, "resolution") ? res_in : Json::object();
  if (!res.is_object()) throw InputError("spec.json: resolution: expected a mapping, got " + shown_value(res));
  c.W = screen_side(res, "width");
  c.H = screen_side(res, "height");
  c.m = build_metrics(c.W, c.H, c.tok);
  check_page_limits(records, c.page_name, c.m);
  const std::vector<std::string> unknown = unknown_keys(page, c.blocks, block_kinds());
  if (!unknown.empty()) throw InputError("spec.json: " + join(unknown, "\nspec.json: "));
  c.col_int();  // refuses a colour table that is no mapping or holds no text
  c.index_colours();
  apply_band_changes(records, c.m, notes);
  return c;
}

}  // namespace ub
