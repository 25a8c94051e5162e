// Characters outside the engine's font library, and the scan of one text for them.
// The composer refuses a page holding them; check_all reports them in a project.
#pragma once

#include <string>
#include <string_view>

namespace ub {

// The set, in the order it is documented.
inline constexpr std::u32string_view kForbiddenChars = U"⌫℃■●‹－＋–…→★◆▶▷①";

// The forbidden characters of a UTF-8 text, each once, in order of first appearance.
std::u32string forbidden_in(const std::string& text);
bool has_forbidden(const std::string& text);

}  // namespace ub
