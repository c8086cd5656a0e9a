#pragma once

#include "look/canvas/canvas.h"
#include "look/layout/layout.h"
#include "look/painter/paint_options.h"
#include "look/text/text_measure.h"

namespace orrery::look {

/// Paints the whole sheet in sheet coordinates, which are the canvas's.
void PaintSheet(const Layout& layout, Canvas& canvas, const TextMeasure& measure,
                const PaintOptions& options = {});

/// Paints one printed page on its paper.
void PaintPage(const Layout& layout, const PageBox& page, Canvas& canvas,
               const TextMeasure& measure, const PaintOptions& options = {});

} // namespace orrery::look
