// Text handling of captured child output: lenient UTF-8 decoding, white-space strip and
// line splitting with the full set of Unicode white space and line breaks.
#pragma once

#include <string>
#include <vector>

namespace ub {

// Valid UTF-8 stays as it is; every byte that is not part of a valid sequence becomes U+FFFD.
std::string decode_replace(const std::string& bytes);
// White space removed at both ends (ASCII and Unicode spaces).
std::string strip_space(const std::string& s);
// Lines without their line breaks (\n, \r\n, \r, \v, \f, \x1c-\x1e, \x85, U+2028, U+2029).
std::vector<std::string> split_lines(const std::string& s);

}  // namespace ub
