// Output of the checks: a head line per rule ("== N title =="), then "[OK]", "[X]"
// and "[!]" lines, and a closing summary; the exit status follows from the [X] count.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

namespace check {

class Report {
 public:
  explicit Report(std::ostream& out, size_t max_fail_lines = 40) : out_(out), max_lines_(max_fail_lines) {}

  // Starts the section of a rule; the lines that follow carry "#rule".
  void section(int rule, const std::string& title);
  void fail(const std::string& msg);  // "[X] #N msg"
  // False once the section has listed as many [X] lines as it shows; later findings
  // need not build their text and are only counted.
  bool listing() const { return sec_fails_ < max_lines_; }
  void count_fail() { fail(""); }
  // n findings past the listed ones, only counted.
  void count_fails(uint64_t n);
  void warn(const std::string& msg);  // "[!] #N msg"
  // "[OK] #N msg", printed only when the section has no [X] so far.
  void pass(const std::string& msg);
  bool section_failed() const { return sec_fails_ > 0; }

  // Closes the last section, prints the summary line; returns the exit status: 1 for any
  // [X], however many there were.
  int finish();
  uint64_t fails() const { return fails_; }
  uint64_t warnings() const { return warns_; }

 private:
  void close_section();
  std::string tag() const { return "#" + std::to_string(rule_) + " "; }

  std::ostream& out_;
  uint64_t max_lines_;
  int rule_ = 0;
  // Counts that cannot wrap: a layout can make billions of findings (every pair of
  // overlapping controls is one).
  uint64_t sec_fails_ = 0;
  uint64_t fails_ = 0, warns_ = 0;
  int sections_ = 0;
  std::vector<int> failed_rules_;
};

}  // namespace check
