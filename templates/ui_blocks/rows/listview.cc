#include "rows/listview.h"

namespace ub {

Json listview_payload(int rows, int row_spacing, bool cycle, int drag_max, Json item) {
  Json payload = Json::object();
  payload["rows"] = rows;
  payload["rowSpacing"] = row_spacing;
  payload["cols"] = 1;
  payload["cycleEnable"] = cycle;
  payload["edgeEffect"] = 1;
  payload["autoRollback"] = true;
  payload["hasScrollbar"] = false;
  payload["dragMaxDis"] = drag_max;
  payload["orientation"] = 1;
  payload["item"] = std::move(item);
  return payload;
}

}  // namespace ub
