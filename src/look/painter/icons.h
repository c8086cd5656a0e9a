#pragma once

#include "look/canvas/canvas.h"
#include "look/values/cell_display.h"

namespace orrery::look {

/// Paints the icon of a set of ECMA-376 18.18.42 into a box; nothing for an unknown set.
void PaintIcon(const IconDisplay& icon, const Box& box, Canvas& canvas);

} // namespace orrery::look
