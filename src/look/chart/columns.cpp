#include "look/chart/series_painter.h"

#include <algorithm>
#include <cmath>

namespace orrery::look {
namespace {

/// How the columns of a category share its slot, in shares of the slot.
struct ColumnRoom {
    double width = 0;
    double first = 0; ///< where the first column begins
    double step = 0;
};

/// ECMA-376 21.2.2.75 and 21.2.2.131: the gap and the overlap are percents of a column's width.
ColumnRoom RoomOf(const PlottedGroup& group)
{
    const double columns =
        group.IsStacked() ? 1 : std::max<double>(1, static_cast<double>(group.series.size()));
    const double gap = std::clamp(group.group->gapWidth, 0.0, 500.0) / 100;
    const double overlap = std::clamp(group.group->overlap, -100.0, 100.0) / 100;
    ColumnRoom room;
    room.width = 1 / (columns - (columns - 1) * overlap + gap);
    room.first = room.width * gap / 2;
    room.step = group.IsStacked() ? 0 : room.width * (1 - overlap);
    return room;
}

void PaintLabel(const SeriesPainter& painter, const PlottedGroup& group, const Plot& plot,
                const Box& column, const PlottedSeries& series, double value)
{
    constexpr double kDistance = 2;
    const std::string label = painter.LabelOf(series, value);
    const double half = painter.text.LineHeight(painter.font) / 2 + kDistance;
    Point at = column.Middle();
    auto side = TextSide::Middle;
    if (!group.IsStacked() && plot.isSideways) {
        at.x = value < 0 ? column.x - kDistance : column.Right() + kDistance;
        side = value < 0 ? TextSide::Right : TextSide::Left;
    }
    else if (!group.IsStacked())
        at.y = value < 0 ? column.Bottom() + half : column.y - half;
    painter.text.DrawCentered(label, painter.font, at, side);
}

} // namespace

Pen SeriesPainter::PenOf(const book::Outline& outline, book::Color otherwise) const
{
    Pen pen;
    pen.color = outline.color.value_or(otherwise);
    pen.width = std::clamp(outline.width, 0.1, 100.0) * kPixelsPerPoint;
    if (outline.style == book::LineStyle::Dotted || outline.style == book::LineStyle::Hair)
        pen.dashes = {pen.width, pen.width};
    else if (outline.style == book::LineStyle::Dashed ||
             outline.style == book::LineStyle::MediumDashed)
        pen.dashes = {4 * pen.width, 3 * pen.width};
    else if (outline.style >= book::LineStyle::DashDot)
        pen.dashes = {4 * pen.width, 3 * pen.width, pen.width, 3 * pen.width};
    return pen;
}

std::string SeriesPainter::LabelOf(const PlottedSeries& series, double value) const
{
    return values.Format(value, series.series->values.numberFormat);
}

void SeriesPainter::PaintColumns(const PlottedGroup& group, const Plot& plot) const
{
    const ColumnRoom room = RoomOf(group);
    const AxisScale& scale = plot.ScaleOf(group.group->usesSecondaryAxis);
    const double zero = std::clamp(scale.Share(scale.Crossing()), 0.0, 1.0);
    for (std::size_t i = 0; i < group.series.size(); ++i) {
        const PlottedSeries& series = group.series[i];
        for (std::size_t point = 0; point < series.spans.size(); ++point) {
            const auto& span = series.spans[point];
            if (!span)
                continue;
            const double begin = room.first + room.step * static_cast<double>(i);
            const double from = span->begin == 0 ? zero : scale.Share(span->begin);
            const Box column =
                plot.Between(plot.At(plot.CategoryShare(point, begin), std::clamp(from, 0.0, 1.0)),
                             plot.At(plot.CategoryShare(point, begin + room.width),
                                     std::clamp(scale.Share(span->end), 0.0, 1.0)));
            if (series.series->hasFill)
                canvas.FillBox(column, SolidBrush(series.ColorOfPoint(point)));
            if (series.series->outline.isVisible)
                canvas.DrawPath(PathOfBox(column), std::nullopt,
                                PenOf(series.series->outline, series.color));
            if (series.series->hasLabels)
                PaintLabel(*this, group, plot, column, series, *series.values[point]);
        }
    }
}

} // namespace orrery::look
