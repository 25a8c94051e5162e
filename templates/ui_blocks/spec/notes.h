// The notes of a page run: lines the report prints, in the order they were added.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace ub {

class Notes {
 public:
  void add(std::string line) { lines_.push_back(std::move(line)); }
  const std::vector<std::string>& all() const { return lines_; }

 private:
  std::vector<std::string> lines_;
};

}  // namespace ub
