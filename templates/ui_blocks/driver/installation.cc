#include "driver/installation.h"

#include "driver/paths.h"
#include "spec/library.h"
#include "spec/theme.h"

namespace ub {

Json library_tokens() { return load_json(blocks_dir() + "/_tokens.json"); }

Json run_tokens(const std::string& tokens_file) {
  if (tokens_file.empty()) return library_tokens();
  return lay_theme(library_tokens(), read_tokens_file(tokens_file), tokens_file);
}

Installation installation(Json tokens) {
  return load_installation(std::move(tokens), blocks_dir(), paths().repo + "/components/icons",
                           paths().ui_tools + "/ui_emit/required_keys.json");
}

std::string required_keys_warning(const EmitLayer& layer) {
  if (layer.ok) return "";
  return "[warn] 未走共享发射层（ui_emit 不可用：" + layer.reason + "）→ 必填键可能缺\n";
}

}  // namespace ub
