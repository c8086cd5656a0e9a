#pragma once

#include "book/look/chart.h"
#include "book/look/table.h"
#include "look/canvas/canvas.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orrery::look {

/// Where lines lie. On a screen the last pixels before an edge belong to its line, as spreadsheets
/// draw their grid; on paper, which has no such pixels, the edge is the line's middle.
enum class LinesLie { BeforeEdges, OnEdges };

/// What a page shows beside what its layout holds. What is empty is left out.
struct PaintOptions {
    /// The part of the sheet that is asked for; what lies outside is not painted.
    std::optional<Box> visible;
    /// Draws a chart into its box; without it charts are placeholders.
    std::function<void(const book::Chart&, const Box&, Canvas&)> chart;
    /// The sheet's sparklines, and the values of a sparkline's formula: nothing for cells without
    /// a number.
    const std::vector<book::SparklineGroup>* sparklines = nullptr;
    std::function<std::vector<std::optional<double>>(const std::string& formula)> sparklineValues;
    /// Marks cells whose formulas cannot be computed in their upper right corner.
    bool marksNotComputed = true;
    /// Of pages: grid lines are printed only if the sheet says so.
    bool printsGridLines = false;
    /// Of the borders of a page.
    LinesLie linesLie = LinesLie::BeforeEdges;
};

} // namespace orrery::look
