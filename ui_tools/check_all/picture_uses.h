// Every picture a control names, with the box the picture must fill.
#pragma once

#include <string>
#include <vector>

#include "check_all/project.h"

namespace check {

struct PictureUse {
  std::string what;  // where the reference stands
  std::string ref;   // "images/x.png"
  int w, h;          // the box it must fill
};

// The pictures of a control and of its list template, subitems and radio buttons.
std::vector<PictureUse> picture_uses(const LayoutFile& lf, const layout::Control& c);

}  // namespace check
