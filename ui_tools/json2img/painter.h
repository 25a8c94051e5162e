// Draws the controls of a layout in definition order (z-order), each by its type.
#pragma once

#include "json2img/canvas.h"
#include "json2img/layout_model.h"
#include "json2img/pictures.h"
#include "json2img/text_painter.h"

namespace j2i {

// Ground of the screen: the root record's backgroundColor, black when not set.
Rgba ground_color(const layout::Layout& lay);

void paint_layout(const layout::Layout& lay, Canvas& cv, TextPainter& tp, Pictures& pics);

}  // namespace j2i
