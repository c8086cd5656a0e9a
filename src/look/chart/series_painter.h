#pragma once

#include "look/chart/chart_values.h"
#include "look/chart/plot.h"
#include "look/chart/text_painter.h"

#include <string>

namespace orrery::look {

/// What the series of all kinds are painted with.
struct SeriesPainter {
    Canvas& canvas;
    const TextPainter& text;
    const ChartValues& values;
    const book::Font& font;

    // By kind, into the plot.
    void PaintColumns(const PlottedGroup& group, const Plot& plot) const;
    void PaintAreas(const PlottedGroup& group, const Plot& plot) const;
    void PaintLines(const PlottedGroup& group, const Plot& plot) const;
    void PaintScatter(const PlottedGroup& group, const Plot& plot) const;
    /// A line from the lowest to the highest value of each category, with the first and the last of
    /// the four as short lines beside it.
    void PaintStock(const PlottedGroup& group, const Plot& plot) const;
    /// A pie, or the rings of a doughnut, in the middle of a box.
    void PaintPies(const PlottedGroup& group, const Box& box) const;

    /// The sample of a marker, as legends and lines show it.
    void PaintMarker(std::size_t series, Point middle, book::Color color) const;
    /// What the label of a value says.
    std::string LabelOf(const PlottedSeries& series, double value) const;
    Pen PenOf(const book::Outline& outline, book::Color otherwise) const;
};

} // namespace orrery::look
