#include "look/shape/shape_table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace orrery::look {

namespace {

/// Signs reach so far from the middle, in the box.
constexpr double kSignReach = 0.36745;
constexpr double kSignThickness = 0.2352;

void DrawBar(ShapeDraft& draft, double y, double thickness)
{
    const double x = draft.width * kSignReach;
    const double middle = draft.width / 2;
    draft.Polygon({{middle - x, y - thickness / 2},
                   {middle + x, y - thickness / 2},
                   {middle + x, y + thickness / 2},
                   {middle - x, y + thickness / 2}});
}

void PlusSign(ShapeDraft& draft)
{
    const double x = draft.width / 2;
    const double y = draft.height / 2;
    const double dx = draft.width * kSignReach;
    const double dy = draft.height * kSignReach;
    const double s =
        std::min(draft.side * draft.Share(0, kSignThickness, 0, 0.7349) / 2, std::min(dx, dy));
    draft.Polygon({{x - dx, y - s},
                   {x - s, y - s},
                   {x - s, y - dy},
                   {x + s, y - dy},
                   {x + s, y - s},
                   {x + dx, y - s},
                   {x + dx, y + s},
                   {x + s, y + s},
                   {x + s, y + dy},
                   {x - s, y + dy},
                   {x - s, y + s},
                   {x - dx, y + s}});
}

void MinusSign(ShapeDraft& draft)
{
    DrawBar(draft, draft.height / 2, draft.height * draft.Share(0, kSignThickness, 0, 1));
}

void EqualSign(ShapeDraft& draft)
{
    const double thickness = draft.height * draft.Share(0, kSignThickness, 0, 0.36745);
    const double gap = draft.height * draft.Share(1, 0.1176, 0, 1);
    const double shift = std::min((thickness + gap) / 2, (draft.height - thickness) / 2);
    DrawBar(draft, draft.height / 2 - shift, thickness);
    DrawBar(draft, draft.height / 2 + shift, thickness);
}

void NotEqualSign(ShapeDraft& draft)
{
    EqualSign(draft);
    const double thickness = draft.height * draft.Share(0, kSignThickness, 0, 0.36745);
    const double angle =
        std::clamp(draft.Raw(1, 6'600'000) / 60'000, 70.0, 110.0) * std::numbers::pi / 180;
    const double slope = std::cos(angle) / std::sin(angle); // x for each y
    const double half = thickness / 2 / std::sin(angle);
    const double reach = draft.height / 2;
    const double x = draft.width / 2;
    draft.Polygon({{x - half - slope * reach, 0},
                   {x + half - slope * reach, 0},
                   {x + half + slope * reach, draft.height},
                   {x - half + slope * reach, draft.height}});
}

void MultiplySign(ShapeDraft& draft)
{
    // Two bars from corner to corner of the middle of the box.
    const Point middle{draft.width / 2, draft.height / 2};
    const double half = draft.side * draft.Share(0, kSignThickness, 0, 0.51965) / 2;
    const double length = std::hypot(draft.width, draft.height);
    if (!(length > 0))
        return;
    const Point along{draft.width / length, draft.height / length};
    const double reach = 0.2563 * length;
    const auto at = [&](double far, double aside, double mirror) {
        return Point{middle.x + mirror * (along.x * far - along.y * aside),
                     middle.y + along.y * far + along.x * aside};
    };
    const double crossX = along.y > 0 ? half / along.y : 0;
    const double crossY = along.x > 0 ? half / along.x : 0;
    draft.Polygon({at(-reach, half, 1),
                   at(-reach, -half, 1),
                   {middle.x, middle.y - crossY},
                   at(-reach, -half, -1),
                   at(-reach, half, -1),
                   {middle.x + crossX, middle.y},
                   at(reach, -half, 1),
                   at(reach, half, 1),
                   {middle.x, middle.y + crossY},
                   at(reach, half, -1),
                   at(reach, -half, -1),
                   {middle.x - crossX, middle.y}});
}

void DivideSign(ShapeDraft& draft)
{
    const double thickness = draft.height * draft.Share(0, kSignThickness, 0.01, 0.36745);
    const double gap = draft.height * draft.Share(1, 0.0588, 0, 0.3);
    const double radius = draft.height * draft.Share(2, 0.1176, 0.01, 0.25);
    DrawBar(draft, draft.height / 2, thickness);
    const double x = draft.width / 2;
    const double shift = thickness / 2 + gap + radius;
    for (const double y : {draft.height / 2 - shift, draft.height / 2 + shift})
        draft.Part().Ellipse({x - radius, y - radius, 2 * radius, 2 * radius});
}

constexpr std::array kMathShapes{
    ShapeRule{"mathPlus", PlusSign},         ShapeRule{"mathMinus", MinusSign},
    ShapeRule{"mathEqual", EqualSign},       ShapeRule{"mathNotEqual", NotEqualSign},
    ShapeRule{"mathMultiply", MultiplySign}, ShapeRule{"mathDivide", DivideSign}};

} // namespace

std::span<const ShapeRule> MathShapes()
{
    return kMathShapes;
}

} // namespace orrery::look
