// The state of the page flow: the layout cursor, and the place lines of the blocks built
// (which Node::place indexes) with the one being built.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace ub {

class FlowState {
 public:
  // Back to the start of a run: cursor at the top, no places.
  void restart() {
    y_ = 0;
    places_.clear();
    building_ = -1;
  }

  int y() const { return y_; }
  void set_y(int y) { y_ = y; }

  const std::vector<std::string>& places() const { return places_; }
  // Adds a place line; returns its index.
  int add_place(std::string line) {
    places_.push_back(std::move(line));
    return (int)places_.size() - 1;
  }
  // The place of the block being built, -1 outside any.
  int building() const { return building_; }
  void set_building(int place) { building_ = place; }

 private:
  int y_ = 0;
  std::vector<std::string> places_;
  int building_ = -1;
};

}  // namespace ub
