#include "spec/spec_text.h"

#include "base/json_reader.h"
#include "spec/quick_json.h"

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
  // Well-formed text takes the quick path; the full reader places what is wrong.
  if (std::optional<Json> doc = read_quick_json(text, kMaxSpecDepth)) return std::move(*doc);
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
