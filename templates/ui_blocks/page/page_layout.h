// The layout document of a page's nodes and the document-level checks that decide
// whether the page may be written.
#pragma once

#include <string>
#include <vector>

#include "controls/serialize.h"
#include "rows/row_family.h"

namespace ub {

// The layout file with the index of its records, refused (StopError) on duplicate
// captions, uneven row gaps or characters outside the engine's font; `places` are the
// place lines the nodes index.
LayoutText page_layout(const NodeList& nodes, const LayoutRoot& root, const EmitLayer& required_keys,
                       const std::string& page_name, const std::vector<std::string>& places,
                       const RowFamilyState& rows);

}  // namespace ub
