#include "controls/emit_layer.h"

#include "spec/library.h"

namespace ub {

EmitLayer load_emit_layer(const std::string& path) {
  EmitLayer layer;
  try {
    layer.table = load_json(path);
  } catch (const InputError& e) {
    layer.reason = e.what();
    return layer;
  }
  if (!layer.table.is_object()) {
    layer.reason = path + ": the table must be a mapping";
    return layer;
  }
  for (auto it = layer.table.begin(); it != layer.table.end(); ++it)
    if (!it.value().is_object()) {
      layer.reason = path + ": entry '" + it.key() + "' must be a mapping";
      return layer;
    }
  layer.ok = true;
  return layer;
}

std::pair<Json, std::vector<std::string>> fill_required(const Json& table, const std::string& type, Json ctrl) {
  std::vector<std::string> unfilled;
  const Json& req = get(table, type);
  if (!req.is_object()) return {std::move(ctrl), unfilled};
  for (auto it = req.begin(); it != req.end(); ++it) {
    if (ctrl.contains(it.key())) continue;
    if (it.value().is_null()) unfilled.push_back(it.key());
    else ctrl[it.key()] = it.value();
  }
  return {std::move(ctrl), unfilled};
}

}  // namespace ub
