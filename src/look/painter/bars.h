#pragma once

#include "look/canvas/canvas.h"
#include "look/values/cell_display.h"

namespace orrery::look {

/// Paints a data bar into its cell.
void PaintBar(const BarDisplay& bar, const Box& cell, Canvas& canvas);

} // namespace orrery::look
