// The one page of "compose serve": HTML, CSS and script in one text.
#pragma once

#include <string>

namespace serve {

const std::string& page_html();

}  // namespace serve
