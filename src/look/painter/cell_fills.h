#pragma once

#include "look/canvas/canvas.h"
#include "look/layout/layout.h"
#include "look/text/text_measure.h"

namespace orrery::look {

/// Whether something is filled, and with what.
bool IsFilled(const book::Fill& fill);

/// Paints the grid lines over the visible part, and takes them away again inside of merged cells
/// and below texts that overflow their cell.
void PaintGridLines(const Layout& layout, const Box& visible, Canvas& canvas);

/// Paints the fills of the cells. Where the grid is shown, a fill also covers the lines at its left
/// and above it.
void PaintFills(const Layout& layout, const Box& visible, bool hasGrid, Canvas& canvas);

} // namespace orrery::look
