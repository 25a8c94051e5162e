// Each control type numbers its records within an id range, and the logic file finds
// buttons and edit fields by those ranges: a page that needs more ids of a type than its
// range holds is refused before anything is written, instead of repeating ids or losing
// callbacks.
#pragma once

#include "controls/node.h"

namespace ub {

// Counts the records of each type in the forest; `last_subitem` and `last_radiobutton`
// are the largest shared numbers given to list-item parts and radio buttons. Throws
// InputError naming the type, the count and the limit.
void check_id_capacity(const NodeList& nodes, int last_subitem, int last_radiobutton);

}  // namespace ub
