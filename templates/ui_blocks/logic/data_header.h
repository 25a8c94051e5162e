// The data header src/logic/<page>Data.h: every list row and wheel value of a page as
// constant tables, with the small functions the list and wheel callbacks call. It is
// rewritten on every run and never edited by hand.
#pragma once

#include <string>
#include <string_view>

#include "kinds/page_data.h"

namespace ub {

// A C++ string literal of UTF-8 text: quotes, backslashes and control characters escaped,
// other characters (UTF-8 included) as they are; "??" is broken so no trigraph forms.
std::string cpp_string_literal(std::string_view text);

// The header's text for `page` (an identifier: its namespace is <page>Data).
std::string data_header_text(const std::string& page, const PageData& data);

// Its path relative to the project.
std::string data_header_path(const std::string& page);

}  // namespace ub
