#include "look/chart/series_painter.h"

#include <algorithm>
#include <cmath>

namespace orrery::look {
namespace {

using StepKind = PathStep::Kind;

/// A line through points; a smooth one leaves each point in the direction of its neighbours.
Path PathThrough(const std::vector<Point>& points, bool isSmooth)
{
    Path path;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (i == 0 || !isSmooth) {
            path.push_back({i == 0 ? StepKind::Move : StepKind::Line, points[i], {}, {}});
            continue;
        }
        const Point before = points[i >= 2 ? i - 2 : 0];
        const Point from = points[i - 1];
        const Point to = points[i];
        const Point after = points[std::min(i + 1, points.size() - 1)];
        path.push_back({StepKind::Curve,
                        to,
                        {from.x + (to.x - before.x) / 6, from.y + (to.y - before.y) / 6},
                        {to.x - (after.x - from.x) / 6, to.y - (after.y - from.y) / 6}});
    }
    return path;
}

/// The pieces of a line between its missing points.
using Pieces = std::vector<std::vector<Point>>;

Pieces PiecesOf(const PlottedSeries& series, const Plot& plot, const AxisScale& scale)
{
    Pieces pieces(1);
    for (std::size_t i = 0; i < series.spans.size(); ++i) {
        if (series.spans[i])
            pieces.back().push_back(
                plot.At(plot.CategoryShare(i, 0.5), scale.Share(series.spans[i]->end)));
        else if (!pieces.back().empty())
            pieces.emplace_back();
    }
    return pieces;
}

Pieces PiecesOfScatter(const PlottedSeries& series, const Plot& plot, const AxisScale& scale)
{
    Pieces pieces(1);
    for (std::size_t i = 0; i < series.values.size(); ++i) {
        if (series.values[i] && plot.x)
            pieces.back().push_back(
                plot.At(plot.x->Share(series.x[i]), scale.Share(*series.values[i])));
        else if (!pieces.back().empty())
            pieces.emplace_back();
    }
    return pieces;
}

void PaintLabels(const SeriesPainter& painter, const PlottedSeries& series, const Pieces& pieces)
{
    constexpr double kDistance = 6;
    std::size_t at = 0;
    for (const auto& piece : pieces) {
        for (const Point point : piece) {
            while (at < series.values.size() && !series.values[at])
                ++at;
            if (at < series.values.size())
                painter.text.DrawCentered(painter.LabelOf(series, *series.values[at]), painter.font,
                                          {point.x + kDistance, point.y}, TextSide::Left);
            ++at;
        }
    }
}

void PaintPieces(const SeriesPainter& painter, const PlottedSeries& series, const Pieces& pieces)
{
    const book::ChartSeries& look = *series.series;
    for (const auto& piece : pieces) {
        if (look.outline.isVisible && piece.size() > 1)
            painter.canvas.DrawPath(PathThrough(piece, look.isSmooth), std::nullopt,
                                    painter.PenOf(look.outline, series.color));
        for (const Point point : piece) {
            if (look.hasMarkers)
                painter.PaintMarker(series.number, point, series.color);
        }
    }
    if (look.hasLabels)
        PaintLabels(painter, series, pieces);
}

/// An area's points at its upper edge, then back along its lower one.
Path AreaPath(const PlottedSeries& series, const Plot& plot, const AxisScale& scale)
{
    const double zero = std::clamp(scale.Share(scale.Crossing()), 0.0, 1.0);
    std::vector<Point> upper;
    std::vector<Point> lower;
    for (std::size_t i = 0; i < series.spans.size(); ++i) {
        const ValueSpan span = series.spans[i].value_or(ValueSpan());
        const double category = plot.CategoryShare(i, 0.5);
        upper.push_back(plot.At(category, scale.Share(span.end)));
        lower.push_back(plot.At(category, span.begin == 0 ? zero : scale.Share(span.begin)));
    }
    upper.insert(upper.end(), lower.rbegin(), lower.rend());
    Path path = PathThrough(upper, false);
    path.push_back({StepKind::Close, {}, {}, {}});
    return path;
}

Path Polygon(std::initializer_list<Point> points)
{
    Path path = PathThrough(points, false);
    path.push_back({StepKind::Close, {}, {}, {}});
    return path;
}

} // namespace

void SeriesPainter::PaintMarker(std::size_t series, Point middle, book::Color color) const
{
    constexpr double kHalf = 3.5;
    const auto [x, y] = middle;
    Path path;
    switch (series % 3) {
    case 0:
        path = Polygon({{x, y - kHalf}, {x + kHalf, y}, {x, y + kHalf}, {x - kHalf, y}});
        break;
    case 1:
        path = PathOfBox({x - kHalf, y - kHalf, 2 * kHalf, 2 * kHalf});
        break;
    default:
        path = Polygon({{x, y - kHalf}, {x + kHalf, y + kHalf}, {x - kHalf, y + kHalf}});
        break;
    }
    canvas.DrawPath(path, SolidBrush(color), std::nullopt);
}

void SeriesPainter::PaintLines(const PlottedGroup& group, const Plot& plot) const
{
    const AxisScale& scale = plot.ScaleOf(group.group->usesSecondaryAxis);
    for (const PlottedSeries& series : group.series)
        PaintPieces(*this, series, PiecesOf(series, plot, scale));
}

void SeriesPainter::PaintScatter(const PlottedGroup& group, const Plot& plot) const
{
    const AxisScale& scale = plot.ScaleOf(group.group->usesSecondaryAxis);
    for (const PlottedSeries& series : group.series)
        PaintPieces(*this, series, PiecesOfScatter(series, plot, scale));
}

void SeriesPainter::PaintStock(const PlottedGroup& group, const Plot& plot) const
{
    constexpr double kTick = 4;
    constexpr std::size_t kWithOpening = 4; // opening, highest, lowest, closing
    const AxisScale& scale = plot.ScaleOf(group.group->usesSecondaryAxis);
    const auto place = [&](std::size_t point, double value) {
        return plot.At(plot.CategoryShare(point, 0.5), scale.Share(value));
    };
    for (std::size_t point = 0; point < plot.categories; ++point) {
        ValueRange range;
        for (const PlottedSeries& series : group.series) {
            if (point < series.values.size() && series.values[point])
                range.Add(*series.values[point]);
        }
        if (range.isEmpty)
            continue;
        canvas.DrawLine(place(point, range.low), place(point, range.high), Pen());
        const auto tick = [&](const PlottedSeries& series, double length) {
            if (point >= series.values.size() || !series.values[point])
                return;
            const Point at = place(point, *series.values[point]);
            canvas.DrawLine(at, {at.x + length, at.y}, Pen());
        };
        if (group.series.size() >= kWithOpening)
            tick(group.series.front(), -kTick);
        tick(group.series.back(), kTick);
    }
}

void SeriesPainter::PaintAreas(const PlottedGroup& group, const Plot& plot) const
{
    const AxisScale& scale = plot.ScaleOf(group.group->usesSecondaryAxis);
    for (const PlottedSeries& series : group.series) {
        const book::ChartSeries& look = *series.series;
        const Path path = AreaPath(series, plot, scale);
        if (look.hasFill)
            canvas.DrawPath(path, SolidBrush(series.color), std::nullopt);
        if (look.outline.isVisible)
            canvas.DrawPath(path, std::nullopt, PenOf(look.outline, series.color));
    }
}

} // namespace orrery::look
