#pragma once

#include "look/canvas/canvas.h"
#include "look/layout/layout.h"
#include "look/painter/paint_options.h"

namespace orrery::look {

/// Paints the lines around and through cells. Lines of one style that follow each other are one
/// line, so that their dashes do not begin again in each cell.
void PaintBorders(const Layout& layout, const Box& visible, Canvas& canvas,
                  LinesLie lie = LinesLie::BeforeEdges);

} // namespace orrery::look
