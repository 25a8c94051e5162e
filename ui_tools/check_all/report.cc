#include "check_all/report.h"

#include "base/values.h"

namespace check {

void Report::section(int rule, const std::string& title) {
  close_section();
  rule_ = rule;
  ++sections_;
  out_ << "== " << rule << " " << title << " ==\n";
}

void Report::fail(const std::string& msg) {
  ++fails_;
  if (sec_fails_ == 0) failed_rules_.push_back(rule_);
  // Long lists are cut; the count of the rest closes the section.
  if (sec_fails_++ < max_lines_) out_ << "[X] " << tag() << msg << "\n";
}

void Report::count_fails(uint64_t n) {
  if (n == 0) return;
  if (sec_fails_ == 0) failed_rules_.push_back(rule_);
  fails_ += n;
  sec_fails_ += n;
}

void Report::warn(const std::string& msg) {
  ++warns_;
  out_ << "[!] " << tag() << msg << "\n";
}

void Report::pass(const std::string& msg) {
  if (sec_fails_ == 0) out_ << "[OK] " << tag() << msg << "\n";
}

void Report::close_section() {
  if (sec_fails_ > max_lines_) out_ << "[X] " << tag() << "另有 " << (sec_fails_ - max_lines_) << " 处未列出\n";
  sec_fails_ = 0;
}

int Report::finish() {
  close_section();
  out_ << "== 汇总 ==\n";
  if (fails_ == 0) {
    out_ << "[OK] check_all 全部通过：" << sections_ << " 条规则，[!] " << warns_ << " 处\n";
    return 0;
  }
  std::vector<std::string> rules;
  for (int r : failed_rules_) rules.push_back("#" + std::to_string(r));
  out_ << "[X] check_all FAIL：" << failed_rules_.size() << " 条规则不过（" << ub::join(rules, "、") << "），[X] "
       << fails_ << " 处，[!] " << warns_ << " 处\n";
  return 1;
}

}  // namespace check
