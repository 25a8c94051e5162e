// The shared emission layer: per control type, the keys the framework requires and
// their default values. Its data lives in ui_tools/ui_emit/required_keys.json.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "spec/values.h"

namespace ub {

struct EmitLayer {
  bool ok = false;
  std::string reason;  // why the layer is unavailable
  Json table;          // type -> {key: default}; null means required without a default
};

EmitLayer load_emit_layer(const std::string& path);
// Loaded on first use from <ui_tools>/ui_emit/required_keys.json.
const EmitLayer& emit_layer();
// Replaces the loaded layer (tests use it to simulate an absent or partial table).
void set_emit_layer(EmitLayer layer);

// Adds missing required keys with their defaults at the end of ctrl; returns the
// completed record and the required keys that have no default.
std::pair<Json, std::vector<std::string>> fill_required(const Json& table, const std::string& type, Json ctrl);

}  // namespace ub
