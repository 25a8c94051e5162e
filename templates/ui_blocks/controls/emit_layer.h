// The shared emission layer: per control type, the keys the framework requires and
// their default values.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "base/values.h"

namespace ub {

struct EmitLayer {
  bool ok = false;
  std::string reason;  // why the layer is unavailable
  Json table;          // type -> {key: default}; null means required without a default
};

// The table at path (the driver reads <ui_tools>/ui_emit/required_keys.json); an
// unreadable or malformed table gives a layer that is not ok, with the reason.
EmitLayer load_emit_layer(const std::string& path);

// Adds missing required keys with their defaults at the end of ctrl; returns the
// completed record and the required keys that have no default.
std::pair<Json, std::vector<std::string>> fill_required(const Json& table, const std::string& type, Json ctrl);

}  // namespace ub
