// What one run tells `compose build` about itself: per size the layout it wrote and its
// counts, and the files it read. Written as JSON by the child, read by the build.
#pragma once

#include <string>
#include <vector>

namespace ub {

struct SizeRecord {
  std::string size;    // "800x480"
  std::string layout;  // the layout file, relative to the project: "ui/800x480/oven.json"
  long long controls = 0, pictures = 0, notes = 0;
  double seconds = 0;  // composing and drawing this size
};

struct RunRecord {
  std::vector<SizeRecord> sizes;
  std::vector<std::string> inputs;  // absolute paths, in the order read
};

std::string run_record_text(const RunRecord& r);
// Throws InputError when the text is no run record.
RunRecord parse_run_record(const std::string& text);

}  // namespace ub
