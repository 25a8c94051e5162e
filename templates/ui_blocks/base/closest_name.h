// The known name closest to a misspelt one, for "did you mean" hints.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace ub {

// Edits (insert, delete, replace one code point, or swap two neighbours) from a to b.
size_t edit_distance(const std::string& a, const std::string& b);

// The candidate nearest to `word`, when it is close: at most max(2, length / 3) edits, and
// fewer than either name has code points (so "ab" is no misspelling of "on"). The first of
// equally near candidates wins; the word itself is never suggested.
std::optional<std::string> closest_name(const std::string& word, const std::vector<std::string>& candidates);

}  // namespace ub
