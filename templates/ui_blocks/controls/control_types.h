// The control types of a layout: the ids each numbers its records from, and the fields
// every record of the type states, in record order, with the value it takes when the
// control's payload does not set it. The layout writer, the factories of list-item parts
// and radio buttons, and the logic skeleton (which finds buttons and edit fields by id)
// all read them here.
#pragma once

#include <span>
#include <string_view>

#include "base/values.h"

namespace ub {

struct IdRange {
  int base;  // first id of the type, minus one: record n of the type has id base + n
  int end;   // ids of the type stay below this
};

constexpr IdRange kButtonIds{20000, 30000};
constexpr IdRange kTextviewIds{50000, 51000};
constexpr IdRange kEdittextIds{51000, 52000};
constexpr IdRange kListviewIds{80000, 90000};
constexpr IdRange kSeekbarIds{91000, 92000};
constexpr IdRange kRadiogroupIds{94000, 94100};
constexpr IdRange kCheckboxIds{94500, 95000};
constexpr IdRange kWindowIds{110000, 120000};
constexpr IdRange kScrollwindowIds{120000, 130000};
// List-item parts and radio buttons share one counter per page, each from its own base.
constexpr int kSubitemIdBase = 24000;
constexpr int kRadiobuttonIdBase = 94100;

// A default value. Position: the control's own box in a record's head, else an empty box.
struct DefaultValue {
  enum Kind : unsigned char { Int, Bool, Str, Position, Colors, Thumb, EmptyObject, EmptyArray } kind = Int;
  long long a = 0, b = -1;  // Int, Bool: a; Colors: color0 and color1 (color2..4 are -1)
  std::string_view s = {};  // Str
  Json to_json() const;
};

struct DefaultField {
  std::string_view key;
  DefaultValue v;
};

struct ControlType {
  std::string_view name;
  IdRange ids;
  std::span<const DefaultField> fields;  // after id, caption and position
};

// The type of that name; null for a type whose records carry their payload alone.
const ControlType* control_type(std::string_view name);

// The fields of a list-item part or a radio button in record order (id, caption and
// position first), with their defaults.
std::span<const DefaultField> subitem_fields();
std::span<const DefaultField> radiobutton_fields();

// A record of `fields`: each value from `given` when it holds the key, else the default.
// Every key of `given` must be one of the fields (std::logic_error otherwise).
Json record_from(std::span<const DefaultField> fields, Json given);

}  // namespace ub
