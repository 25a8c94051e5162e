#include "spec/spec_text.h"

#include "base/json_reader.h"

namespace ub {

namespace {

// The reader's own message without its "[json.exception.…] " tag.
std::string reader_message(const Json::exception& e) {
  const std::string s = e.what();
  const size_t at = s.find("] ");
  return at == std::string::npos ? s : s.substr(at + 2);
}

}  // namespace

Json parse_spec_text(const std::string& text, const std::string& path) {
  TextPlace at;
  try {
    return read_json(text, kMaxSpecDepth, &at);
  } catch (const JsonTooDeep&) {
    throw InputError(cat("spec nests deeper than ", kMaxSpecDepth, " levels: ", path));
  } catch (const Json::parse_error& e) {
    throw InputError("malformed JSON in " + path + ": " + e.what());
  } catch (const Json::exception& e) {
    throw InputError(cat("unreadable number in ", path, ": line ", at.line, ", column ", at.column, ": ",
                         reader_message(e)));
  }
}

}  // namespace ub
