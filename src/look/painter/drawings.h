#pragma once

#include "look/layout/layout.h"
#include "look/painter/paint_options.h"
#include "look/text/text_measure.h"

namespace orrery::look {

/// Paints what lies above the cells, in its order.
void PaintDrawings(const Layout& layout, const Box& visible, Canvas& canvas,
                   const TextMeasure& measure, const PaintOptions& options);

/// Paints one drawing into a box.
void PaintDrawing(const DrawingBox& placed, Canvas& canvas, const TextMeasure& measure,
                  const PaintOptions& options);

} // namespace orrery::look
