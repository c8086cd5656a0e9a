#pragma once

#include "book/look/chart.h"
#include "look/canvas/canvas.h"
#include "look/chart/chart_values.h"
#include "look/text/text_measure.h"
#include "look/values/geometry.h"

namespace orrery::look {

/// Paints a chart into a box: columns, bars, lines, areas, pies, doughnuts, stock and scatter
/// charts with title, axes, grid lines, legend and labels. Of other kinds only the frame, with
/// title and kind.
void PaintChart(const book::Chart& chart, const Box& box, Canvas& canvas,
                const TextMeasure& measure, const ChartValues& values);

} // namespace orrery::look
