// Control ids: every record type numbers its records from its own base, so the type of
// a record can be read back from its id (the logic skeleton finds buttons and edit
// fields this way).
#pragma once

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

}  // namespace ub
