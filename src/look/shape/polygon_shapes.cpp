#include "look/shape/shape_table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <vector>

/// Shapes of straight lines.
namespace orrery::look {

namespace {

void Triangle(ShapeDraft& draft)
{
    const double x = draft.width * draft.Share(0, 0.5, 0, 1);
    draft.Polygon({{0, draft.height}, {x, 0}, {draft.width, draft.height}});
    draft.Text(x / 2, draft.height / 2, (x + draft.width) / 2, draft.height);
}

void RightTriangle(ShapeDraft& draft)
{
    draft.Polygon({{0, draft.height}, {0, 0}, {draft.width, draft.height}});
    draft.Text(draft.width / 12, draft.height * 7 / 12, draft.width * 7 / 12,
               draft.height * 11 / 12);
}

void Diamond(ShapeDraft& draft)
{
    const double w = draft.width;
    const double h = draft.height;
    draft.Polygon({{0, h / 2}, {w / 2, 0}, {w, h / 2}, {w / 2, h}});
    draft.Text(w / 4, h / 4, w * 3 / 4, h * 3 / 4);
}

void DrawParallelogram(ShapeDraft& draft, double x)
{
    const double w = draft.width;
    const double h = draft.height;
    draft.Polygon({{0, h}, {x, 0}, {w, 0}, {w - x, h}});
    draft.Text(x / 2 + w / 12, h / 12, w - x / 2 - w / 12, h * 11 / 12);
}

void Parallelogram(ShapeDraft& draft)
{
    DrawParallelogram(draft, std::min(draft.side * draft.Share(0, 0.25, 0, 1e6), draft.width));
}

void InputOutput(ShapeDraft& draft)
{
    DrawParallelogram(draft, draft.width / 5);
}

void DrawTrapezoid(ShapeDraft& draft, double x)
{
    draft.Polygon({{0, draft.height}, {x, 0}, {draft.width - x, 0}, {draft.width, draft.height}});
    draft.Text(x * 2 / 3, draft.height / 6, draft.width - x * 2 / 3, draft.height);
}

void Trapezoid(ShapeDraft& draft)
{
    DrawTrapezoid(draft, std::min(draft.side * draft.Share(0, 0.25, 0, 1e6), draft.width / 2));
}

void ManualOperation(ShapeDraft& draft)
{
    DrawTrapezoid(draft, draft.width / 5);
}

/// A regular one, with a corner at the top or, turned by half a corner, an edge; it fills the box.
void DrawRegular(ShapeDraft& draft, int corners, bool hasEdgeAtTop)
{
    std::vector<Point> points;
    Point low{1, 1};
    Point high{-1, -1};
    for (int i = 0; i < corners; ++i) {
        const double turn = (i + (hasEdgeAtTop ? 0.5 : 0)) * 2 * std::numbers::pi / corners;
        const Point point{std::sin(turn), -std::cos(turn)};
        low = {std::min(low.x, point.x), std::min(low.y, point.y)};
        high = {std::max(high.x, point.x), std::max(high.y, point.y)};
        points.push_back(point);
    }
    draft.Part();
    for (const auto& point : points) {
        const double x = (point.x - low.x) / (high.x - low.x) * draft.width;
        const double y = (point.y - low.y) / (high.y - low.y) * draft.height;
        if (&point == points.data())
            draft.Move(x, y);
        else
            draft.Line(x, y);
    }
    draft.Close();
    draft.Text(draft.width * 0.15, draft.height * 0.15, draft.width * 0.85, draft.height * 0.85);
}

void Pentagon(ShapeDraft& draft)
{
    DrawRegular(draft, 5, false);
}
void Heptagon(ShapeDraft& draft)
{
    DrawRegular(draft, 7, false);
}
void Decagon(ShapeDraft& draft)
{
    DrawRegular(draft, 10, true);
}
void Dodecagon(ShapeDraft& draft)
{
    DrawRegular(draft, 12, true);
}

void DrawHexagon(ShapeDraft& draft, double x)
{
    const double w = draft.width;
    const double h = draft.height;
    draft.Polygon({{0, h / 2}, {x, 0}, {w - x, 0}, {w, h / 2}, {w - x, h}, {x, h}});
    draft.Text(x * 0.6, h * 0.1, w - x * 0.6, h * 0.9);
}

void Hexagon(ShapeDraft& draft)
{
    DrawHexagon(draft, std::min(draft.side * draft.Share(0, 0.25, 0, 1e6), draft.width / 2));
}

void Preparation(ShapeDraft& draft)
{
    DrawHexagon(draft, draft.width / 5);
}

void Octagon(ShapeDraft& draft)
{
    const double w = draft.width;
    const double h = draft.height;
    const double c = draft.side * draft.Share(0, 0.29289, 0, 0.5);
    draft.Polygon({{0, c}, {c, 0}, {w - c, 0}, {w, c}, {w, h - c}, {w - c, h}, {c, h}, {0, h - c}});
    draft.Text(c / 2, c / 2, w - c / 2, h - c / 2);
}

void Plus(ShapeDraft& draft)
{
    const double w = draft.width;
    const double h = draft.height;
    const double c = draft.side * draft.Share(0, 0.25, 0, 0.5);
    draft.Polygon({{0, c},
                   {c, c},
                   {c, 0},
                   {w - c, 0},
                   {w - c, c},
                   {w, c},
                   {w, h - c},
                   {w - c, h - c},
                   {w - c, h},
                   {c, h},
                   {c, h - c},
                   {0, h - c}});
    if (w > h)
        draft.Text(0, c, w, h - c);
    else
        draft.Text(c, 0, w - c, h);
}

double PointLength(const ShapeDraft& draft)
{
    return std::min(draft.side * draft.Share(0, 0.5, 0, 1e6), draft.width);
}

void HomePlate(ShapeDraft& draft)
{
    const double x = draft.width - PointLength(draft);
    const double h = draft.height;
    draft.Polygon({{0, 0}, {x, 0}, {draft.width, h / 2}, {x, h}, {0, h}});
    draft.Text(0, 0, (x + draft.width) / 2, h);
}

void Chevron(ShapeDraft& draft)
{
    const double point = PointLength(draft);
    const double x = draft.width - point;
    const double h = draft.height;
    draft.Polygon({{0, 0}, {x, 0}, {draft.width, h / 2}, {x, h}, {0, h}, {point, h / 2}});
    if (x > point)
        draft.Text(point, 0, x, h);
}

void LShape(ShapeDraft& draft)
{
    const double w = draft.width;
    const double h = draft.height;
    const double y = h - std::min(draft.side * draft.Share(0, 0.5, 0, 1e6), h);
    const double x = std::min(draft.side * draft.Share(1, 0.5, 0, 1e6), w);
    draft.Polygon({{0, 0}, {x, 0}, {x, y}, {w, y}, {w, h}, {0, h}});
    draft.Text(0, y, w, h);
}

void HalfFrame(ShapeDraft& draft)
{
    const double w = draft.width;
    const double h = draft.height;
    const double x = std::min(draft.side * draft.Share(1, 0.33333, 0, 1e6), w);
    const double most = w > 0 ? h - h * x / w : 0;
    const double y = std::min(draft.side * draft.Share(0, 0.33333, 0, 1e6), most);
    const double slope = h > 0 ? w / h : 0;
    draft.Polygon(
        {{0, 0}, {w, 0}, {w - y * slope, y}, {x, y}, {x, h - (slope > 0 ? x / slope : 0)}, {0, h}});
}

void DiagonalStripe(ShapeDraft& draft)
{
    const double share = draft.Share(0, 0.5, 0, 1);
    const double x = draft.width * share;
    const double y = draft.height * share;
    draft.Polygon({{0, y}, {x, 0}, {draft.width, 0}, {0, draft.height}});
}

void Frame(ShapeDraft& draft)
{
    const double w = draft.width;
    const double h = draft.height;
    const double c = draft.side * draft.Share(0, 0.125, 0, 0.5);
    draft.Polygon({{0, 0}, {w, 0}, {w, h}, {0, h}});
    // Counterclockwise, so that it is a hole.
    draft.Move(c, c).Line(c, h - c).Line(w - c, h - c).Line(w - c, c).Close();
    draft.Text(c, c, w - c, h - c);
}

constexpr std::array kPolygonShapes{
    ShapeRule{"triangle", Triangle},
    ShapeRule{"flowChartExtract", Triangle},
    ShapeRule{"flowChartMerge", Triangle, ShapeTurn::MirrorY},
    ShapeRule{"rtTriangle", RightTriangle},
    ShapeRule{"diamond", Diamond},
    ShapeRule{"flowChartDecision", Diamond},
    ShapeRule{"parallelogram", Parallelogram},
    ShapeRule{"flowChartInputOutput", InputOutput},
    ShapeRule{"trapezoid", Trapezoid},
    ShapeRule{"flowChartManualOperation", ManualOperation, ShapeTurn::MirrorY},
    ShapeRule{"pentagon", Pentagon},
    ShapeRule{"hexagon", Hexagon},
    ShapeRule{"flowChartPreparation", Preparation},
    ShapeRule{"heptagon", Heptagon},
    ShapeRule{"octagon", Octagon},
    ShapeRule{"decagon", Decagon},
    ShapeRule{"dodecagon", Dodecagon},
    ShapeRule{"plus", Plus},
    ShapeRule{"homePlate", HomePlate},
    ShapeRule{"chevron", Chevron},
    ShapeRule{"corner", LShape},
    ShapeRule{"halfFrame", HalfFrame},
    ShapeRule{"diagStripe", DiagonalStripe},
    ShapeRule{"frame", Frame}};

} // namespace

std::span<const ShapeRule> PolygonShapes()
{
    return kPolygonShapes;
}

} // namespace orrery::look
