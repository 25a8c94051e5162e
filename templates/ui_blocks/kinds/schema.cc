#include "kinds/schema.h"

#include "spec/page_limits.h"

namespace ub {

namespace {

// A whole number written as text, as the integer readings take it.
const char* const kWholeText = "^\\s*[+-]?[0-9]+(_[0-9]+)*\\s*$";

std::string def_ref(const std::string& def) { return "#/$defs/" + def; }

// The definition names of the block dispatchers; block types use the plain type name.
const char* const kNameDef = "block_name";
const char* const kPageBlockDef = "block_on_page";
std::string container_def(const BlockKind& k) { return std::string("block_in_") + k.type; }

Json text_schema(const std::string& description) {
  return {{"type", {"string", "number"}}, {"description", description}};
}

// The properties of a block type from its library keys; required keys are collected.
Json key_properties(const std::string& type, const Json& keys, Json& required) {
  Json props = Json::object();
  if (keys.is_null()) return props;
  if (!keys.is_object()) throw InputError("block library: " + type + ".keys must be a mapping");
  for (const auto& [key, decl] : keys.items()) {
    if (!decl.is_object() || !get(decl, "description").is_string())
      throw InputError("block library: " + type + ".keys." + key + " must be a mapping with a \"description\" text");
    Json p = decl;
    if (truthy(get(p, "required"))) required.push_back(key);
    p.erase("required");
    props[key] = std::move(p);
  }
  return props;
}

Json block_def(const BlockKind& k, const Json& lib) {
  Json required = Json::array({"type"});
  Json props = Json::object();
  props["type"] = {{"const", k.type}, {"description", "block type"}};
  props["name"] = {{"$ref", def_ref(kNameDef)}};
  Json keys = key_properties(k.type, get(lib, "keys"), required);
  for (auto& [key, p] : keys.items()) props[key] = std::move(p);
  if (k.takes) props["blocks"]["items"] = {{"$ref", def_ref(container_def(k))}};
  Json def = Json::object();
  def["type"] = "object";
  if (get(lib, "description").is_string()) def["description"] = get(lib, "description");
  def["properties"] = std::move(props);
  def["required"] = std::move(required);
  def["additionalProperties"] = false;
  return def;
}

// Any block of the given kinds, checked against its type's definition alone, so that a
// validator reports a mistake inside the block it belongs to.
Json dispatcher(const std::vector<const BlockKind*>& kinds, const std::string& description) {
  Json types = Json::array(), branches = Json::array();
  for (const BlockKind* k : kinds) {
    types.push_back(k->type);
    Json test = {{"properties", {{"type", {{"const", k->type}}}}}, {"required", {"type"}}};
    branches.push_back({{"if", std::move(test)}, {"then", {{"$ref", def_ref(k->type)}}}});
  }
  Json d = Json::object();
  d["type"] = "object";
  d["description"] = description;
  d["properties"] = {{"type", {{"enum", std::move(types)}, {"description", "block type"}}}};
  d["required"] = {"type"};
  d["allOf"] = std::move(branches);
  return d;
}

Json screen_side(const std::string& description) {
  Json s = Json::object();
  s["type"] = {"number", "string"};
  s["description"] = cat(description, ", ", kMinScreenSide, " to ", kMaxScreenSide,
                         " px: a number (a fraction is cut) or whole-number text");
  s["minimum"] = kMinScreenSide;
  s["exclusiveMaximum"] = kMaxScreenSide + 1;
  s["pattern"] = kWholeText;
  return s;
}

}  // namespace

Json spec_schema(const KindTable& kinds, const std::map<std::string, Json>& library) {
  std::vector<const BlockKind*> known;
  for (const BlockKind* k : kinds.all())
    if (library.count(k->type)) known.push_back(k);

  Json defs = Json::object();
  defs[kNameDef] = {{"type", "string"},
                    {"maxLength", kMaxIdentifierLength},
                    {"description", cat("replaces the generated name in the block's captions: an identifier (letters, "
                                        "digits, underscores, not starting with a digit, at most ",
                                        kMaxIdentifierLength, " characters)")}};
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

  Json page_props = Json::object();
  page_props["title"] = text_schema("page title; builds the title band unless a title block or a toolbar exists");
  page_props["subtitle"] = text_schema("smaller line under the page title");
  page_props["blocks"] = {{"type", "array"},
                          {"description", "the blocks, top to bottom"},
                          {"items", {{"$ref", def_ref(kPageBlockDef)}}}};
  for (const BlockKind* k : known) {
    if (k->flow != Flow::Footer) continue;
    // The bottom bar's keys, used when the page has no such block.
    Json footer = defs[k->type];
    footer["properties"].erase("type");
    footer["required"].erase(0);
    if (footer["required"].empty()) footer.erase("required");
    footer["description"] = cat("keys of a ", k->type, " block, used when the page has none");
    page_props["footer"] = std::move(footer);
    break;
  }

  Json res = Json::object();
  res["type"] = "object";
  res["description"] = "screen size";
  res["properties"] = {{"width", screen_side("screen width")}, {"height", screen_side("screen height")}};
  res["required"] = {"width", "height"};
  res["additionalProperties"] = false;

  Json page = Json::object();
  page["type"] = "object";
  page["description"] = "the page: title and blocks";
  page["properties"] = std::move(page_props);
  page["additionalProperties"] = false;

  Json s = Json::object();
  s["$schema"] = "https://json-schema.org/draft/2020-12/schema";
  s["$id"] = "https://schemas.moraine.example/compose/spec.schema.json";
  s["title"] = "compose page description (spec.json)";
  s["type"] = "object";
  s["properties"] = {{"$schema", {{"type", "string"}, {"description", "schema of this file for editors; compose ignores it"}}},
                     {"resolution", std::move(res)},
                     {"page", std::move(page)}};
  s["required"] = {"resolution", "page"};
  s["additionalProperties"] = false;
  s["$defs"] = std::move(defs);
  return s;
}

}  // namespace ub
