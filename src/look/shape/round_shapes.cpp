#include "look/shape/shape_table.h"

#include <array>
#include <cmath>
#include <numbers>

/// Ellipses and their parts.
namespace orrery::look {

namespace {

/// Where the largest upright rectangle in an ellipse begins, in the box.
constexpr double kEllipseInset = 0.5 - std::numbers::sqrt2 / 4;

void EllipseText(ShapeDraft& draft)
{
    draft.Text(draft.width * kEllipseInset, draft.height * kEllipseInset,
               draft.width * (1 - kEllipseInset), draft.height * (1 - kEllipseInset));
}

Point MiddleOf(const ShapeDraft& draft)
{
    return {draft.width / 2, draft.height / 2};
}

double Sweep(double from, double to)
{
    return to > from ? to - from : to - from + 360;
}

void EllipseShape(ShapeDraft& draft)
{
    draft.Part().Ellipse({0, 0, draft.width, draft.height});
    EllipseText(draft);
}

void Donut(ShapeDraft& draft)
{
    const double ring = draft.side * draft.Share(0, 0.25, 0, 0.5);
    const Point middle = MiddleOf(draft);
    draft.Part().Ellipse({0, 0, draft.width, draft.height});
    const double x = middle.x - ring;
    const double y = middle.y - ring;
    if (x > 0 && y > 0) // the other way round, so that it is a hole
        draft.Move(middle.x + x, middle.y).Arc(middle, x, y, 0, -360).Close();
    EllipseText(draft);
}

void NoSmoking(ShapeDraft& draft)
{
    const double ring = draft.side * draft.Share(0, 0.1875, 0, 0.5);
    const Point middle = MiddleOf(draft);
    const double x = middle.x - ring;
    const double y = middle.y - ring;
    draft.Part().Ellipse({0, 0, draft.width, draft.height});
    if (!(x > 0 && y > 0))
        return;
    // Two segments of the inner ellipse are left free, at both sides of the bar.
    const double slope = std::atan2(draft.height, draft.width);
    const double half = std::asin(std::min(1.0, ring / 2 / std::min(x, y)));
    const double degree = 180 / std::numbers::pi;
    for (const double turn : {0.0, 180.0}) {
        const double start = (slope - half) * degree + turn;
        const double sweep = 2 * half * degree - 180; // against the outer one: a hole
        const double angle = start / degree;
        // The point of the ellipse that is seen at the angle.
        const double t = std::atan2(x * std::sin(angle), y * std::cos(angle));
        draft.Move(middle.x + x * std::cos(t), middle.y + y * std::sin(t));
        draft.Arc(middle, x, y, start, sweep).Close();
    }
    EllipseText(draft);
}

void BlockArc(ShapeDraft& draft)
{
    const double start = draft.Degrees(0, 180);
    const double end = draft.Degrees(1, 0);
    const double ring = draft.side * draft.Share(2, 0.25, 0, 0.5);
    const Point middle = MiddleOf(draft);
    const double sweep = Sweep(start, end);
    draft.Part().Arc(middle, middle.x, middle.y, start, sweep);
    draft.Arc(middle, middle.x - ring, middle.y - ring, start + sweep, -sweep).Close();
}

void Pie(ShapeDraft& draft)
{
    const double start = draft.Degrees(0, 0);
    const Point middle = MiddleOf(draft);
    draft.Part().Arc(middle, middle.x, middle.y, start, Sweep(start, draft.Degrees(1, 270)));
    draft.Line(middle.x, middle.y).Close();
    EllipseText(draft);
}

void PieWedge(ShapeDraft& draft)
{
    draft.Part().Arc({draft.width, draft.height}, draft.width, draft.height, 180, 90);
    draft.Line(draft.width, draft.height).Close();
}

void Chord(ShapeDraft& draft)
{
    const double start = draft.Degrees(0, 45);
    const Point middle = MiddleOf(draft);
    draft.Part().Arc(middle, middle.x, middle.y, start, Sweep(start, draft.Degrees(1, 270)));
    draft.Close();
    EllipseText(draft);
}

void ArcShape(ShapeDraft& draft)
{
    const double start = draft.Degrees(0, 270);
    const double sweep = Sweep(start, draft.Degrees(1, 0));
    const Point middle = MiddleOf(draft);
    draft.Part(true, false).Arc(middle, middle.x, middle.y, start, sweep);
    draft.Line(middle.x, middle.y).Close();
    draft.Part(false, true).Arc(middle, middle.x, middle.y, start, sweep);
}

void Teardrop(ShapeDraft& draft)
{
    const double reach = draft.Share(0, 1, 0, 2);
    const Point middle = MiddleOf(draft);
    const Point tip{middle.x * (1 + reach), middle.y * (1 - reach)};
    draft.Part().Arc(middle, middle.x, middle.y, 0, 270);
    const auto towards = [](double from, double to) { return from + (to - from) * 2 / 3; };
    const Point right{draft.width, middle.y};
    const Point top{middle.x, 0};
    const Point before{(middle.x + tip.x) / 2, 0};
    const Point after{draft.width, (middle.y + tip.y) / 2};
    draft.Curve({towards(top.x, before.x), towards(top.y, before.y)},
                {towards(tip.x, before.x), towards(tip.y, before.y)}, tip);
    draft.Curve({towards(tip.x, after.x), towards(tip.y, after.y)},
                {towards(right.x, after.x), towards(right.y, after.y)}, right);
    draft.Close();
    EllipseText(draft);
}

void SmileyFace(ShapeDraft& draft)
{
    const double w = draft.width;
    const double h = draft.height;
    const double bend = draft.Share(0, 0.04653, -0.04653, 0.04653) * h;
    draft.Part().Ellipse({0, 0, w, h});
    for (const double x : {0.344, 0.656}) {
        draft.Part(true, true, -0.2);
        draft.Ellipse({(x - 0.052) * w, (0.35 - 0.052) * h, 0.104 * w, 0.104 * h});
    }
    const double y = 0.765 * h;
    draft.Part(false, true).Move(0.23 * w, y - bend);
    draft.Curve({0.37 * w, y + 1.67 * bend}, {0.63 * w, y + 1.67 * bend}, {0.77 * w, y - bend});
    EllipseText(draft);
}

/// A circle with a cross or an x in it.
void Or(ShapeDraft& draft)
{
    EllipseShape(draft);
    draft.Part(false, true).Move(draft.width / 2, 0).Line(draft.width / 2, draft.height);
    draft.Move(0, draft.height / 2).Line(draft.width, draft.height / 2);
}

void SummingJunction(ShapeDraft& draft)
{
    EllipseShape(draft);
    const double x = draft.width * kEllipseInset;
    const double y = draft.height * kEllipseInset;
    draft.Part(false, true).Move(x, y).Line(draft.width - x, draft.height - y);
    draft.Move(draft.width - x, y).Line(x, draft.height - y);
}

constexpr std::array kRoundShapes{
    ShapeRule{"ellipse", EllipseShape}, ShapeRule{"flowChartConnector", EllipseShape},
    ShapeRule{"flowChartOr", Or},       ShapeRule{"flowChartSummingJunction", SummingJunction},
    ShapeRule{"donut", Donut},          ShapeRule{"noSmoking", NoSmoking},
    ShapeRule{"blockArc", BlockArc},    ShapeRule{"pie", Pie},
    ShapeRule{"pieWedge", PieWedge},    ShapeRule{"chord", Chord},
    ShapeRule{"arc", ArcShape},         ShapeRule{"teardrop", Teardrop},
    ShapeRule{"smileyFace", SmileyFace}};

} // namespace

std::span<const ShapeRule> RoundShapes()
{
    return kRoundShapes;
}

} // namespace orrery::look
