#include "kinds/block_place.h"

#include <exception>

#include "base/closest_name.h"
#include "kinds/block_limits.h"

namespace ub {

std::string place_line(const BlockRecord& blk) {
  if (blk.path.empty()) return "";
  return cat("  at ", blk.path, " (", type_text(blk), " ", blk.name, ")");
}

std::string type_hint(const Json& type, const std::vector<std::string>& types) {
  const auto near = type.is_string() ? closest_name(type.get<std::string>(), types) : std::nullopt;
  return near ? cat(" — did you mean \"", *near, "\"?") : "";
}

void stop_at(const BlockRecord& blk, const std::string& msg, const std::string& hint) {
  const std::string at = place_line(blk);
  if (at.empty()) throw StopError(msg);
  throw BlockStop(msg + "\n" + at + hint);
}

void rethrow_placed(const BlockRecord& blk) {
  try {
    throw;
  } catch (const BlockStop&) {
    throw;
  } catch (const StopError& e) {
    stop_at(blk, e.what());
  } catch (const KeyError& e) {
    if (blk.path.empty()) throw;
    throw InputError(input_at(blk.path + "." + e.key, type_text(blk), e.problem));
  }
}

void build_placed(FlowState& flow, const BlockRecord& blk, NodeList& parent, const std::function<void()>& build) {
  const size_t from = parent.size();
  const int outer = flow.building();
  std::string at = place_line(blk);
  const int place = at.empty() ? -1 : flow.add_place(std::move(at));
  flow.set_building(place >= 0 ? place : outer);
  at_block(blk, build);
  flow.set_building(outer);
  if (place >= 0) claim_nodes(parent, from, place);
}

}  // namespace ub
