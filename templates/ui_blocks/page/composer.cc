// Construction of the page state: the spec frame, tokens, metrics, block library.
#include "compose.h"
#include "kinds/registry.h"
#include "page/key_notes.h"
#include "page/page_check.h"
#include "spec/library.h"
#include "spec/page_limits.h"

namespace ub {

namespace {

// Every block, also inside containers, must be a mapping; a blocks value a sequence.
void check_blocks(const Json& blocks, const std::string& where) {
  if (!truthy(blocks)) return;
  if (!blocks.is_array())
    throw InputError("spec.json: " + where + ": expected a list of blocks, got " + shown_value(blocks));
  for (size_t i = 0; i < blocks.size(); ++i) {
    const Json& b = blocks[i];
    std::string at = cat(where, "[", i, "]");
    if (!b.is_object()) throw InputError("spec.json: " + at + ": expected a block (a mapping), got " + shown_value(b));
    const BlockKind* k = block_kinds().of(b);
    if (k && k->holds_blocks) check_blocks(get(b, "blocks"), at + ".blocks");
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

}  // namespace

Composer::Composer(Json spec_in, std::string page_name_in, const Installation& inst)
    : spec(std::move(spec_in)), page_name(std::move(page_name_in)), blocks_dir(inst.blocks_dir), required_keys(inst.required_keys) {
  if (!spec.is_object()) throw InputError("spec.json must hold a mapping, not " + type_name(spec));
  // The page moves out of the spec (its key is left null): the blocks are held once.
  auto pg = spec.find("page");
  if (pg == spec.end() || !truthy(*pg)) page = Json::object();
  else if (!pg->is_object()) throw InputError("spec.json: page: expected a mapping, got " + shown_value(*pg));
  else page = std::move(*pg);
  check_blocks(get(page, "blocks"), "page.blocks");

  tok = load_json(blocks_dir + "/_tokens.json");
  if (!tok.is_object()) throw InputError("_tokens.json must hold a mapping");

  const Json& res_in = get(spec, "resolution");
  Json res = has(spec, "resolution") ? res_in : Json::object();
  if (!res.is_object()) throw InputError("spec.json: resolution: expected a mapping, got " + shown_value(res));
  W = screen_side(res, "width");
  H = screen_side(res, "height");
  m = build_metrics(W, H, tok);
  check_page_limits(page, page_name, m, block_kinds());
  blocks = load_block_library(blocks_dir);
  notes = unknown_key_notes(page, blocks, block_kinds());
  Json cols = col_int();
  for (auto it = cols.begin(); it != cols.end(); ++it) col_map[it.key()] = it.value().get<long long>();
}

}  // namespace ub
