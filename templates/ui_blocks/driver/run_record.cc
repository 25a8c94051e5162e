#include "driver/run_record.h"

#include "base/values.h"

namespace ub {

std::string run_record_text(const RunRecord& r) {
  Json sizes = Json::array();
  for (const SizeRecord& s : r.sizes)
    sizes.push_back(object_of("size", s.size, "layout", s.layout, "controls", s.controls, "pictures", s.pictures,
                              "notes", s.notes, "seconds", s.seconds));
  return dump_layout(object_of("sizes", std::move(sizes), "inputs", r.inputs));
}

RunRecord parse_run_record(const std::string& text) {
  RunRecord r;
  try {
    const Json j = Json::parse(text);
    for (const Json& s : j.at("sizes"))
      r.sizes.push_back({s.at("size").get<std::string>(), s.at("layout").get<std::string>(),
                         s.at("controls").get<long long>(), s.at("pictures").get<long long>(),
                         s.at("notes").get<long long>(), s.at("seconds").get<double>()});
    r.inputs = j.at("inputs").get<std::vector<std::string>>();
  } catch (const Json::exception& e) {
    throw InputError(std::string("unreadable run record: ") + e.what());
  }
  return r;
}

}  // namespace ub
