// #11: texts use only characters the engine's font library has. The layout reader scans
// every mapping of the document (radio buttons and list subitems included) as it reads it.
#include "check_all/rules.h"

namespace check {

void rule_forbidden_chars(const Project& p, Report& r) {
  r.section(11, "引擎字库黑名单字符");
  for (const auto& lf : p.layouts) {
    if (!lf.ok()) continue;
    for (const auto& f : lf.lay.text_findings) r.fail(lf.rel + " " + f.what + " 含字库外字符 " + f.chars + " → 改用 ASCII 写法");
  }
  r.pass("没有字库外字符");
}

}  // namespace check
