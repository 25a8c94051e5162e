// Digests of file contents: 64-bit FNV-1a in 16 hex digits. compose build records the
// pictures it wrote by them, and the project checks compare against that record.
#pragma once

#include <string>
#include <string_view>

namespace ub {

// The digest of a file's bytes; empty when it cannot be read.
std::string file_digest(const std::string& path);
// The same digest of bytes in memory.
std::string text_digest(std::string_view bytes);

}  // namespace ub
