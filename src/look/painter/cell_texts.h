#pragma once

#include "look/canvas/canvas.h"
#include "look/layout/layout.h"
#include "look/text/text_measure.h"

#include <optional>

namespace orrery::look {

/// Paints a line of text with its underlines and strikes. `across` is what accounting underlines
/// span, as x and width; without it they are as wide as the text. `color` is that of all pieces;
/// without it each has its own.
void PaintLine(const TextLine& line, Canvas& canvas, const std::optional<book::Color>& color = {},
               const std::optional<Box>& across = {});

/// Paints the lines of a cell, turned and cut as it says.
void PaintCellText(const CellBox& cell, const TextMeasure& measure, Canvas& canvas);

} // namespace orrery::look
