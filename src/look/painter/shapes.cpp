#include "look/painter/shapes.h"

#include "look/painter/border_lines.h"
#include "look/shape/freeform.h"
#include "look/shape/shape.h"

#include <algorithm>
#include <cmath>

namespace orrery::look {

namespace {

/// Heads are so many times as long and wide as their line, which counts as two pixels at least.
constexpr double kHeadSize = 3;
constexpr double kLeastHeadLine = 2;
constexpr double kMostLineWidth = 200;

book::Color Shaded(book::Color color, double shade)
{
    const auto part = [shade](std::uint8_t value) {
        const double to = shade > 0 ? 255 : 0;
        return static_cast<std::uint8_t>(std::lround(value + (to - value) * std::abs(shade)));
    };
    return {part(color.red), part(color.green), part(color.blue)};
}

std::optional<Brush> PartBrush(const book::Drawing& drawing, const ShapePart& part)
{
    if (!drawing.fill || !part.isFilled)
        return std::nullopt;
    Brush brush{*drawing.fill, std::clamp(drawing.fillOpacity, 0.0, 1.0), part.isEvenOdd};
    if (part.shade != 0 && !brush.fill.gradient)
        brush.fill.foreground = Shaded(brush.fill.foreground.value_or(book::kWhite), part.shade);
    return brush;
}

/// A triangle with its tip at the end of a line that comes from another point.
void PaintHead(Point tip, Point from, const Pen& pen, Canvas& canvas)
{
    const double length = std::hypot(tip.x - from.x, tip.y - from.y);
    if (!(length > 0))
        return;
    const double size = kHeadSize * std::max(pen.width, kLeastHeadLine);
    const Point back{(from.x - tip.x) / length * size, (from.y - tip.y) / length * size};
    const Point left{tip.x + back.x - back.y / 2, tip.y + back.y + back.x / 2};
    const Point right{tip.x + back.x + back.y / 2, tip.y + back.y - back.x / 2};
    using enum PathStep::Kind;
    canvas.DrawPath(
        {{Move, tip, {}, {}}, {Line, left, {}, {}}, {Line, right, {}, {}}, {Close, {}, {}, {}}},
        SolidBrush(pen.color), {});
}

/// The points that tell from where a line arrives at its ends.
void PaintHeads(const book::Drawing& drawing, const Path& path, const Pen& pen, Canvas& canvas)
{
    if (path.size() < 2 || path.back().kind == PathStep::Kind::Close)
        return;
    const auto& second = path[1];
    const auto& last = path.back();
    const bool isCurve = last.kind == PathStep::Kind::Curve;
    if (drawing.hasArrowAtStart)
        PaintHead(path.front().point,
                  second.kind == PathStep::Kind::Curve ? second.control1 : second.point, pen,
                  canvas);
    if (drawing.hasArrowAtEnd)
        PaintHead(last.point, isCurve ? last.control2 : path[path.size() - 2].point, pen, canvas);
}

Shape ShapeOf(const book::Drawing& drawing, const Box& box)
{
    if (drawing.freeform)
        return MakeFreeform(*drawing.freeform, box);
    const bool isPlainLine =
        drawing.kind == book::DrawingKind::Line && !IsKnownShape(drawing.geometry);
    const bool isBoxOfLine = drawing.kind == book::DrawingKind::Line && drawing.geometry == "rect";
    return MakeShape(isPlainLine || isBoxOfLine ? "line" : drawing.geometry, box,
                     drawing.adjustments);
}

} // namespace

std::optional<Pen> OutlinePen(const book::Outline& outline)
{
    if (!outline.isVisible || outline.style == book::LineStyle::None || !(outline.width >= 0))
        return std::nullopt;
    Pen pen;
    pen.color = outline.color.value_or(book::kBlack);
    pen.width = std::min(outline.width * kPixelsPerPoint, kMostLineWidth);
    if (pen.width == 0) // as thin as can be drawn
        pen.width = 1;
    const auto strokes = StrokesOf(outline.style);
    for (const double dash : strokes.front().dashes)
        pen.dashes.push_back(dash * std::max(pen.width, 1.0));
    return pen;
}

Box PaintShape(const book::Drawing& drawing, const Box& box, Canvas& canvas)
{
    const Shape shape = ShapeOf(drawing, box);
    const auto pen = OutlinePen(drawing.outline);
    for (const auto& part : shape.parts) {
        canvas.DrawPath(part.path, PartBrush(drawing, part),
                        part.isStroked ? pen : std::optional<Pen>());
        const bool hasEnds = drawing.freeform ? part.isStroked : !part.isFilled;
        if (pen && hasEnds && (drawing.hasArrowAtStart || drawing.hasArrowAtEnd))
            PaintHeads(drawing, part.path, *pen, canvas);
    }
    return shape.textBox;
}

} // namespace orrery::look
