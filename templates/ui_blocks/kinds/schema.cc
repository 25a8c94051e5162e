#include "kinds/schema.h"

#include <limits>
#include <optional>

#include "kinds/block_record.h"
#include "kinds/schema_patterns.h"
#include "spec/page_limits.h"

namespace ub {

namespace {

std::string def_ref(const std::string& def) { return "#/$defs/" + def; }
Json ref_to(const std::string& def) { return {{"$ref", def_ref(def)}}; }

// The definition names of the block dispatchers and the shared values; block types use
// the plain type name.
const char* const kNameDef = "block_name";
const char* const kAbsentDef = "absent";
const char* const kPageBlockDef = "block_on_page";
std::string container_def(const BlockKind& k) { return std::string("block_in_") + k.type; }

// Indexes are tied to their list's length up to this index; past it compose alone checks.
constexpr int kIndexClauses = 16;

// The whole numbers compose can hold: the range of long long.
const Json kLeastWhole = std::numeric_limits<long long>::min();
const Json kPastWhole = 9223372036854775808ULL;

// Keys starting with an underscore are comments; compose ignores them.
Json comment_keys() { return {{"^_", {{"description", "a comment: compose ignores keys that start with _"}}}}; }

std::optional<long long> bound(const Json& decl, const char* key) {
  const Json& v = get(decl, key);
  if (!v.is_number()) return std::nullopt;
  return v.get<long long>();
}

Json key_schema(const std::string& where, const Json& decl, bool required);

// A declared whole number: a number, whose fraction compose cuts, or whole-number text.
void whole_number(Json& s) {
  const auto lo = bound(s, "minimum"), hi = bound(s, "maximum");
  s.erase("minimum");
  s.erase("maximum");
  s["type"] = {"number", "string"};
  // Bounds on the number cut towards zero.
  if (lo && *lo >= 1) s["minimum"] = *lo;
  else s["exclusiveMinimum"] = lo ? Json(*lo - 1) : kLeastWhole;
  if (hi && *hi < 0) s["maximum"] = *hi;
  else s["exclusiveMaximum"] = hi ? Json(*hi + 1) : kPastWhole;
  s["pattern"] = whole_text_pattern(lo, hi);
  // "Not even from M on", said of the number, said of its text too.
  if (s.contains("not")) {
    const Json n = s["not"];
    if (get(n, "multipleOf") == 2 && get(n, "minimum").is_number())
      s["not"] = {{"anyOf", {n, {{"type", "string"}, {"pattern", even_text_pattern(n["minimum"].get<long long>())}}}}};
  }
}

// The value a declaration describes, as a validator reads it.
Json value_schema(const std::string& where, Json s) {
  s.erase("required");
  s.erase("index_of");
  // A text (a number is turned into one) shown on the screen: the engine's font lacks
  // the forbidden characters. font_checked says otherwise for one key.
  const bool text = has_type(s, "string") && has_type(s, "number");
  if (get(s, "font_checked").is_boolean() ? s["font_checked"].get<bool>() : text && !s.contains("enum"))
    s["pattern"] = no_forbidden_pattern();
  s.erase("font_checked");
  // An icon's semantic name: never a path, since picture names are made of it.
  if (truthy(get(s, "icon_name"))) s["pattern"] = icon_name_pattern();
  s.erase("icon_name");
  // A name that becomes part of captions and callback names.
  if (truthy(get(s, "identifier"))) {
    s["pattern"] = identifier_pattern();
    s["maxLength"] = kMaxIdentifierLength;
  }
  s.erase("identifier");
  if (has_type(s, "boolean") && s["type"].is_string()) {
    // A flag: true or false, also written 1 or 0.
    s.erase("type");
    s["enum"] = {false, true, 0, 1};
  } else if (s.value("type", Json()) == "integer") {
    whole_number(s);
  } else if (s.value("type", Json()) == "number") {
    s["type"] = {"number", "string"};
    s["pattern"] = number_text_pattern();
  }
  if (s.value("type", Json()) == "object" && s.contains("properties")) {
    // A record a block holds under one key: its keys read with defaults.
    for (auto& [key, d] : s["properties"].items()) d = key_schema(where + "." + key, d, false);
    s["patternProperties"] = comment_keys();
  }
  if (s.contains("items") && s["items"].is_object() && !s["items"].contains("$ref")) {
    Json& e = s["items"];
    e = value_schema(where + "[]", e);
    if (e.contains("properties")) {
      // A record of a list: its keys read with defaults.
      for (auto& [key, d] : e["properties"].items()) d = key_schema(where + "[]." + key, d, false);
      e["patternProperties"] = comment_keys();
    }
  }
  return s;
}

// The schema of one key of a block or record. Unless the key is required, a flag or
// declares null itself, a false value (null, false, 0, "", [], {}) stands for the key's
// absence, as compose reads it.
Json key_schema(const std::string& where, const Json& decl, bool required) {
  if (!decl.is_object() || !get(decl, "description").is_string())
    throw InputError("block library: " + where + " must be a mapping with a \"description\" text");
  Json core = value_schema(where, decl);
  const bool flag = core.contains("enum") && !core.contains("type");
  if (required || flag || has_type(decl, "null")) return core;
  Json outer = Json::object();
  for (const char* k : {"description", "default"})
    if (core.contains(k)) {
      outer[k] = core[k];
      core.erase(k);
    }
  outer["anyOf"] = {std::move(core), ref_to(kAbsentDef)};
  return outer;
}

// An index given into another key's list names one of its entries: with at most k
// entries (none when the list is left out) the index lies below k. Index 0, the default,
// always passes. Stated up to a list's longest, at most kIndexClauses entries.
Json index_clauses(const std::string& key, const std::string& list, const Json& list_decl) {
  Json clauses = Json::array();
  int last = kIndexClauses;
  if (get(list_decl, "maxItems").is_number()) last = std::min(last, list_decl["maxItems"].get<int>());
  for (int k = 1; k <= last; ++k) {
    Json few = {{"anyOf", {ref_to(kAbsentDef), {{"type", "array"}, {"maxItems", k}}}}};
    Json test = {{"anyOf", {{{"not", {{"required", {list}}}}}, {{"properties", {{list, std::move(few)}}}}}}};
    Json below = {{"anyOf",
                   {ref_to(kAbsentDef),
                    {{"type", "number"}, {"exclusiveMaximum", k}},
                    {{"type", "string"}, {"pattern", whole_text_pattern(std::nullopt, k - 1)}}}}};
    Json then = Json::object();
    then["properties"][key] = std::move(below);
    clauses.push_back({{"if", std::move(test)}, {"then", std::move(then)}});
  }
  return clauses;
}

Json block_def(const BlockKind& k, const Json& lib) {
  Json required = Json::array({"type"});
  Json props = Json::object();
  props["type"] = {{"const", k.type}, {"description", "block type"}};
  props["name"] = ref_to(kNameDef);
  Json checks = Json::array();
  const Json& keys = get(lib, "keys");
  if (!keys.is_null() && !keys.is_object())
    throw InputError(cat("block library: ", k.type, ".keys must be a mapping"));
  if (keys.is_object()) {
    for (const auto& [key, decl] : keys.items()) {
      const bool req = truthy(get(decl, "required"));
      if (req) required.push_back(key);
      Json d = decl;
      if (key == "blocks" && k.takes && d.is_object()) d["items"] = ref_to(container_def(k));
      props[key] = key_schema(cat(k.type, ".keys.", key), d, req);
      const Json& list = get(decl, "index_of");
      if (list.is_string())
        for (Json& c : index_clauses(key, list, get(keys, list.get<std::string>()))) checks.push_back(std::move(c));
    }
  }
  if (k.takes && !props.contains("blocks")) props["blocks"] = {{"type", "array"}, {"items", ref_to(container_def(k))}};
  Json def = Json::object();
  def["type"] = "object";
  if (get(lib, "description").is_string()) def["description"] = get(lib, "description");
  def["properties"] = std::move(props);
  def["patternProperties"] = comment_keys();
  def["required"] = std::move(required);
  def["additionalProperties"] = false;
  if (!checks.empty()) def["allOf"] = std::move(checks);
  return def;
}

// The definition of a block of one of the kinds [from, to), chosen by halving the set of
// types: a validator asks a few questions about `type` instead of one per kind.
Json pick(const std::vector<const BlockKind*>& kinds, size_t from, size_t to) {
  if (to - from == 1) return ref_to(kinds[from]->type);
  const size_t mid = from + (to - from) / 2;
  Json first = Json::array();
  for (size_t i = from; i < mid; ++i) first.push_back(kinds[i]->type);
  return {{"if", {{"properties", {{"type", {{"enum", std::move(first)}}}}}}},
          {"then", pick(kinds, from, mid)},
          {"else", pick(kinds, mid, to)}};
}

// Any block of the given kinds, checked against its type's definition alone, so that a
// validator reports a mistake inside the block it belongs to.
Json dispatcher(const std::vector<const BlockKind*>& kinds, const std::string& description) {
  Json types = Json::array();
  for (const BlockKind* k : kinds) types.push_back(k->type);
  Json d = Json::object();
  d["type"] = "object";
  d["description"] = description;
  d["properties"] = {{"type", {{"enum", std::move(types)}, {"description", "block type"}}}};
  d["required"] = {"type"};
  // Only a block of a listed type is checked further: another one is wrong in its type alone.
  if (!kinds.empty()) d["allOf"] = {{{"if", {{"properties", {{"type", {{"enum", d["properties"]["type"]["enum"]}}}}}}},
                                     {"then", pick(kinds, 0, kinds.size())}}};
  return d;
}

Json screen_side(const std::string& description) {
  Json s = {{"type", "integer"}, {"minimum", kMinScreenSide}, {"maximum", kMaxScreenSide}};
  s = value_schema("resolution", s);
  s["description"] = cat(description, ", ", kMinScreenSide, " to ", kMaxScreenSide,
                         " px: a number (a fraction is cut) or whole-number text");
  return s;
}

// Blocks of these kinds among the page's blocks.
Json blocks_holding(const std::vector<const BlockKind*>& kinds) {
  Json types = Json::array();
  for (const BlockKind* k : kinds) types.push_back(k->type);
  return {{"type", "array"}, {"contains", {{"properties", {{"type", {{"enum", std::move(types)}}}}}, {"required", {"type"}}}}};
}

// The rules of the page as a whole that a validator can check: a top band and a bottom
// bar, at most one title block and one toolbar and not both, a bounded number of bands.
Json page_rules(const KindTable& kinds, const std::vector<const BlockKind*>& known) {
  const BlockKind* title = &kinds.with_flow(Flow::Title);
  const BlockKind* toolbar = &kinds.with_flow(Flow::TopBand);
  const BlockKind* footer = &kinds.with_flow(Flow::Footer);
  auto given = [](const char* key) {
    return Json{{"properties", {{key, {{"not", ref_to(kAbsentDef)}}}}}, {"required", {key}}};
  };
  auto holding = [](const std::vector<const BlockKind*>& ks) {
    return Json{{"properties", {{"blocks", blocks_holding(ks)}}}, {"required", {"blocks"}}};
  };
  auto at_most = [](const std::vector<const BlockKind*>& ks, int n) {
    Json b = blocks_holding(ks);
    b["minContains"] = 0;
    b["maxContains"] = n;
    return Json{{"properties", {{"blocks", std::move(b)}}}};
  };
  std::vector<const BlockKind*> bands;
  for (const BlockKind* k : known)
    if (k->flow != Flow::Content) bands.push_back(k);
  // Without a band's block the page's own key must be given: the message names the key.
  Json rules = Json::array();
  rules.push_back({{"description", cat("a top band: page.title, a ", title->type, " block or a ", toolbar->type, " block")},
                   {"if", {{"not", holding({title, toolbar})}}},
                   {"then", given("title")}});
  rules.push_back({{"description", cat("a bottom bar: page.footer or a ", footer->type, " block")},
                   {"if", {{"not", holding({footer})}}},
                   {"then", given("footer")}});
  rules.push_back(at_most({title}, 1));
  rules.push_back(at_most({toolbar}, 1));
  rules.push_back({{"description", cat("a ", title->type, " block and a ", toolbar->type, " block take one band")},
                   {"not", {{"allOf", {holding({title}), holding({toolbar})}}}}});
  rules.push_back(at_most(bands, kMaxOverlays));
  return rules;
}

}  // namespace

Json spec_schema(const KindTable& kinds, const std::map<std::string, Json>& library) {
  std::vector<const BlockKind*> known;
  for (const BlockKind* k : kinds.all())
    if (library.count(k->type)) known.push_back(k);

  Json defs = Json::object();
  defs[kAbsentDef] = {{"description", "a false value: compose reads the key as absent"},
                      {"enum", {nullptr, false, 0, "", Json::array(), Json::object()}}};
  defs[kNameDef] = {{"description", cat("replaces the generated name in the block's captions: an identifier (letters, "
                                        "digits, underscores, not starting with a digit, at most ",
                                        kMaxIdentifierLength, " characters)")},
                    {"anyOf",
                     {{{"type", "string"}, {"maxLength", kMaxIdentifierLength}, {"pattern", identifier_pattern()}},
                      ref_to(kAbsentDef)}}};
  std::vector<const BlockKind*> on_page;
  for (const BlockKind* k : known)
    if (k->places & kOnPage) on_page.push_back(k);
  defs[kPageBlockDef] = dispatcher(on_page, "a block of the page");
  for (const BlockKind* c : known) {
    if (!c->takes) continue;
    std::vector<const BlockKind*> inside;
    for (const BlockKind* k : known)
      if (k->places & c->takes) inside.push_back(k);
    defs[container_def(*c)] = dispatcher(inside, cat("a block inside a ", c->type));
  }
  for (const BlockKind* k : known) defs[k->type] = block_def(*k, library.at(k->type));

  const Json text = {{"type", {"string", "number"}}};
  Json page_props = Json::object();
  Json title = text, subtitle = text;
  title["description"] = "page title; builds the title band unless a title block or a toolbar exists";
  subtitle["description"] = "smaller line under the page title";
  page_props["title"] = key_schema("page.title", title, false);
  page_props["subtitle"] = key_schema("page.subtitle", subtitle, false);
  page_props["blocks"] = key_schema(
      "page.blocks",
      {{"type", "array"}, {"description", "the blocks, top to bottom"}, {"items", ref_to(kPageBlockDef)}}, false);
  for (const BlockKind* k : known) {
    if (k->flow != Flow::Footer) continue;
    // The bottom bar's keys, used when the page has no such block.
    Json footer = defs[k->type];
    footer["properties"].erase("type");
    footer["required"].erase(0);
    if (footer["required"].empty()) footer.erase("required");
    footer.erase("description");
    page_props["footer"] = {{"description", cat("keys of a ", k->type, " block, used when the page has none")},
                            {"anyOf", {std::move(footer), ref_to(kAbsentDef)}}};
    break;
  }

  Json res = Json::object();
  res["type"] = "object";
  res["description"] = "screen size";
  res["properties"] = {{"width", screen_side("screen width")}, {"height", screen_side("screen height")}};
  res["patternProperties"] = comment_keys();
  res["required"] = {"width", "height"};
  res["additionalProperties"] = false;

  Json page = Json::object();
  page["type"] = "object";
  page["description"] = "the page: title and blocks";
  page["properties"] = std::move(page_props);
  page["patternProperties"] = comment_keys();
  page["additionalProperties"] = false;
  page["allOf"] = page_rules(kinds, known);

  Json s = Json::object();
  s["$schema"] = "https://json-schema.org/draft/2020-12/schema";
  s["$id"] = "https://schemas.moraine.example/compose/spec.schema.json";
  s["title"] = "compose page description (spec.json)";
  s["type"] = "object";
  s["properties"] = {{"$schema", {{"type", "string"}, {"description", "schema of this file for editors; compose ignores it"}}},
                     {"resolution", std::move(res)},
                     {"page", std::move(page)}};
  s["patternProperties"] = comment_keys();
  s["required"] = {"resolution", "page"};
  s["additionalProperties"] = false;
  s["$defs"] = std::move(defs);
  return s;
}

}  // namespace ub
