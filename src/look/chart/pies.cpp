#include "look/chart/series_painter.h"

#include <algorithm>
#include <cmath>

namespace orrery::look {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kDegree = kPi / 180;

/// A ring, of which a pie is one without a hole.
struct Ring {
    Point middle;
    double outer = 0;
    double inner = 0;
};

/// The point at an angle, clockwise from the top.
Point AtAngle(Point middle, double radius, double angle)
{
    return {middle.x + radius * std::sin(angle), middle.y - radius * std::cos(angle)};
}

/// Adds an arc in pieces of at most a quarter, each a curve that is off by less than 0.03 %.
void AddArc(Path& path, Point middle, double radius, double from, double to)
{
    const int pieces = std::max(1, static_cast<int>(std::ceil(std::abs(to - from) / (kPi / 2))));
    const double step = (to - from) / pieces;
    const double reach = 4.0 / 3 * std::tan(step / 4) * radius;
    for (int i = 0; i < pieces; ++i) {
        const double begin = from + step * i;
        const double end = begin + step;
        const Point first = AtAngle(middle, radius, begin);
        const Point last = AtAngle(middle, radius, end);
        path.push_back({PathStep::Kind::Curve,
                        last,
                        {first.x + reach * std::cos(begin), first.y + reach * std::sin(begin)},
                        {last.x - reach * std::cos(end), last.y - reach * std::sin(end)}});
    }
}

Path SlicePath(const Ring& ring, double from, double to)
{
    using Kind = PathStep::Kind;
    Path path;
    if (ring.inner > 0) {
        path.push_back({Kind::Move, AtAngle(ring.middle, ring.inner, from), {}, {}});
        path.push_back({Kind::Line, AtAngle(ring.middle, ring.outer, from), {}, {}});
        AddArc(path, ring.middle, ring.outer, from, to);
        path.push_back({Kind::Line, AtAngle(ring.middle, ring.inner, to), {}, {}});
        AddArc(path, ring.middle, ring.inner, to, from);
    }
    else {
        path.push_back({Kind::Move, ring.middle, {}, {}});
        path.push_back({Kind::Line, AtAngle(ring.middle, ring.outer, from), {}, {}});
        AddArc(path, ring.middle, ring.outer, from, to);
    }
    path.push_back({Kind::Close, {}, {}, {}});
    return path;
}

std::string LabelOfSlice(const SeriesPainter& painter, const PlottedSeries& series, double value,
                         double share)
{
    std::string label;
    if (series.series->hasLabels)
        label = painter.LabelOf(series, value);
    if (series.series->hasPercents) {
        label += label.empty() ? "" : "; ";
        label += std::to_string(std::lround(share * 100)) + "%";
    }
    return label;
}

void PaintRing(const SeriesPainter& painter, const PlottedSeries& series, const Ring& ring,
               double firstAngle)
{
    double sum = 0;
    for (const auto& value : series.values)
        sum += std::abs(value.value_or(0));
    if (!(sum > 0) || !std::isfinite(sum))
        return;
    double angle = firstAngle * kDegree;
    for (std::size_t i = 0; i < series.values.size(); ++i) {
        const double share = std::abs(series.values[i].value_or(0)) / sum;
        if (share == 0)
            continue;
        const double end = angle + share * 2 * kPi;
        const auto pen = series.series->outline.isVisible
                             ? std::optional(painter.PenOf(series.series->outline, book::kWhite))
                             : std::nullopt;
        painter.canvas.DrawPath(SlicePath(ring, angle, end), SolidBrush(series.ColorOfPoint(i)),
                                pen);
        const double radius = ring.inner > 0 ? (ring.inner + ring.outer) / 2 : ring.outer * 0.75;
        const Point at = AtAngle(ring.middle, radius, (angle + end) / 2);
        painter.text.DrawCentered(LabelOfSlice(painter, series, *series.values[i], share),
                                  painter.font, at, TextSide::Middle);
        angle = end;
    }
}

} // namespace

void SeriesPainter::PaintPies(const PlottedGroup& group, const Box& box) const
{
    const double radius = std::min(box.width, box.height) / 2;
    if (radius <= 0 || group.series.empty())
        return;
    if (group.group->kind == book::ChartKind::Pie) {
        PaintRing(*this, group.series.front(), {box.Middle(), radius, 0}, group.group->firstAngle);
        return;
    }
    const double hole = radius * std::clamp(group.group->holeSize, 1.0, 90.0) / 100;
    const double width = (radius - hole) / static_cast<double>(group.series.size());
    double inner = hole; // the first series is the innermost
    for (const PlottedSeries& series : group.series) {
        PaintRing(*this, series, {box.Middle(), inner + width, inner}, group.group->firstAngle);
        inner += width;
    }
}

} // namespace orrery::look
