#include "look/shape/shape_table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace orrery::look {

namespace {

constexpr double kAny = 1e6;

/// The length of an arrow's head, at most `most`.
double HeadLength(const ShapeDraft& draft, std::size_t index, double fallback, double most)
{
    return std::min(draft.side * draft.Share(index, fallback, 0, kAny), most);
}

/// To the right; `notch` is how deep its tail is cut, in heads.
void DrawArrow(ShapeDraft& draft, double tail, double notch)
{
    const double w = draft.width;
    const double middle = draft.height / 2;
    const double x = w - HeadLength(draft, 1, 0.5, w - tail);
    const double dy = middle * draft.Share(0, 0.5, 0, 1);
    const double cut = middle > 0 ? notch * dy * (w - x) / middle : 0;
    draft.Polygon({{tail, middle - dy},
                   {x, middle - dy},
                   {x, 0},
                   {w, middle},
                   {x, draft.height},
                   {x, middle + dy},
                   {tail, middle + dy},
                   {tail + cut, middle}});
    const double end = middle > 0 ? x + (w - x) * dy / middle : x;
    draft.Text(tail + cut, middle - dy, end, middle + dy);
}

void RightArrow(ShapeDraft& draft)
{
    DrawArrow(draft, 0, 0);
}

void NotchedArrow(ShapeDraft& draft)
{
    DrawArrow(draft, 0, 1);
}

void StripedArrow(ShapeDraft& draft)
{
    const double stripe = draft.side / 32;
    DrawArrow(draft, std::min(stripe * 5, draft.width), 0);
    const double middle = draft.height / 2;
    const double dy = middle * draft.Share(0, 0.5, 0, 1);
    draft.Polygon(
        {{0, middle - dy}, {stripe, middle - dy}, {stripe, middle + dy}, {0, middle + dy}});
    draft.Polygon({{stripe * 2, middle - dy},
                   {stripe * 4, middle - dy},
                   {stripe * 4, middle + dy},
                   {stripe * 2, middle + dy}});
}

void LeftRightArrow(ShapeDraft& draft)
{
    const double w = draft.width;
    const double h = draft.height;
    const double x = HeadLength(draft, 1, 0.5, w / 2);
    const double dy = h / 2 * draft.Share(0, 0.5, 0, 1);
    const double top = h / 2 - dy;
    const double bottom = h / 2 + dy;
    draft.Polygon({{0, h / 2},
                   {x, 0},
                   {x, top},
                   {w - x, top},
                   {w - x, 0},
                   {w, h / 2},
                   {w - x, h},
                   {w - x, bottom},
                   {x, bottom},
                   {x, h}});
    draft.Text(x / 2, top, w - x / 2, bottom);
}

/// What the arrows with several heads have: half a shaft's and half a head's width, and the head's
/// length.
struct ArrowSizes {
    double shaft = 0;
    double head = 0;
    double length = 0;
};

ArrowSizes SizesOf(const ShapeDraft& draft, double fallback)
{
    const double head = draft.Share(1, fallback, 0, 0.5);
    const double shaft = draft.Share(0, fallback, 0, 2 * head) / 2;
    const double length = draft.Share(2, fallback, 0, std::max(0.0, 1 - 2 * head));
    return {draft.side * shaft, draft.side * head, draft.side * length};
}

void QuadArrow(ShapeDraft& draft)
{
    const double w = draft.width;
    const double h = draft.height;
    const double x = w / 2;
    const double y = h / 2;
    auto [s, a, l] = SizesOf(draft, 0.225);
    l = std::min(l, draft.side / 2 - a);
    draft.Polygon({{0, y},         {l, y - a},     {l, y - s},     {x - s, y - s}, {x - s, l},
                   {x - a, l},     {x, 0},         {x + a, l},     {x + s, l},     {x + s, y - s},
                   {w - l, y - s}, {w - l, y - a}, {w, y},         {w - l, y + a}, {w - l, y + s},
                   {x + s, y + s}, {x + s, h - l}, {x + a, h - l}, {x, h},         {x - a, h - l},
                   {x - s, h - l}, {x - s, y + s}, {l, y + s},     {l, y + a}});
    draft.Text(l, y - s, w - l, y + s);
}

void LeftRightUpArrow(ShapeDraft& draft)
{
    const double w = draft.width;
    const double h = draft.height;
    const double x = w / 2;
    const auto [s, a, l] = SizesOf(draft, 0.25);
    const double y = h - a;
    draft.Polygon({{0, y},
                   {l, y - a},
                   {l, y - s},
                   {x - s, y - s},
                   {x - s, l},
                   {x - a, l},
                   {x, 0},
                   {x + a, l},
                   {x + s, l},
                   {x + s, y - s},
                   {w - l, y - s},
                   {w - l, y - a},
                   {w, y},
                   {w - l, h},
                   {w - l, y + s},
                   {l, y + s},
                   {l, h}});
    draft.Text(l, y - s, w - l, y + s);
}

void LeftUpArrow(ShapeDraft& draft)
{
    const double w = draft.width;
    const double h = draft.height;
    const auto [s, a, l] = SizesOf(draft, 0.25);
    const double x = w - a;
    const double y = h - a;
    draft.Polygon({{0, y},
                   {l, y - a},
                   {l, y - s},
                   {x - s, y - s},
                   {x - s, l},
                   {x - a, l},
                   {x, 0},
                   {w, l},
                   {x + s, l},
                   {x + s, y + s},
                   {l, y + s},
                   {l, h}});
    draft.Text(l / 2, y - s, x + s, y + s);
}

void BentUpArrow(ShapeDraft& draft)
{
    const double w = draft.width;
    const double h = draft.height;
    const double thick = draft.side * draft.Share(0, 0.25, 0, 0.5);
    const double a = draft.side * draft.Share(1, 0.25, 0, 0.5);
    const double l = draft.side * draft.Share(2, 0.25, 0, 0.5);
    const double x = w - a;
    const double s = std::min(thick / 2, a);
    draft.Polygon({{0, h - thick},
                   {x - s, h - thick},
                   {x - s, l},
                   {x - a, l},
                   {x, 0},
                   {w, l},
                   {x + s, l},
                   {x + s, h},
                   {0, h}});
    draft.Text(0, h - thick, x + s, h);
}

void BentArrow(ShapeDraft& draft)
{
    const double w = draft.width;
    const double h = draft.height;
    const double head = draft.side * draft.Share(1, 0.25, 0, 0.5);
    const double thick = std::min(draft.side * draft.Share(0, 0.25, 0, 1), 2 * head);
    const double length = draft.side * draft.Share(2, 0.25, 0, 0.5);
    const double top = head - thick / 2;
    const double x = w - length;
    const double bend =
        std::min(draft.side * draft.Share(3, 0.4375, 0, kAny), std::min(x, h - top));
    const double inner = std::max(bend - thick, 0.0);
    draft.Part().Move(0, h).Arc({bend, top + bend}, bend, bend, 180, 90);
    draft.Line(x, top).Line(x, 0).Line(w, head).Line(x, 2 * head).Line(x, top + thick);
    draft.Arc({thick + inner, top + thick + inner}, inner, inner, 270, -90);
    draft.Line(thick, h).Close();
}

void UTurnArrow(ShapeDraft& draft)
{
    const double w = draft.width;
    const double h = draft.height;
    const double head = draft.side * draft.Share(1, 0.25, 0, 0.25);
    const double thick = std::min(draft.side * draft.Share(0, 0.25, 0, 1), 2 * head);
    const double tip = h * draft.Share(4, 0.75, 0.25, 1);
    const double base = tip - std::min(draft.side * draft.Share(2, 0.25, 0, 1), tip);
    const double right = w - head + thick / 2;
    const double bend =
        std::min(draft.side * draft.Share(3, 0.4375, 0, kAny), std::min(right / 2, base));
    const double inner = std::max(bend - thick, 0.0);
    draft.Part().Move(0, h).Arc({bend, bend}, bend, bend, 180, 90);
    draft.Arc({right - bend, bend}, bend, bend, 270, 90);
    draft.Line(right, base).Line(w, base).Line(w - head, tip).Line(w - 2 * head, base);
    draft.Line(right - thick, base);
    draft.Arc({right - thick - inner, thick + inner}, inner, inner, 0, -90);
    draft.Arc({thick + inner, thick + inner}, inner, inner, 270, -90);
    draft.Line(thick, h).Close();
}

/// From the upper right around the left to the lower right. The band is as thick everywhere when
/// it is measured upright.
void CurvedRightArrow(ShapeDraft& draft)
{
    const double w = draft.width;
    const double h = draft.height;
    const double head = std::min(draft.side * draft.Share(1, 0.5, 0, kAny), h / 2);
    const double thick = std::min(draft.side * draft.Share(0, 0.25, 0, 1), head);
    const double length = HeadLength(draft, 2, 0.25, w);
    const double radius = h / 2 - (thick + head) / 4;
    const double drop = w > 0 ? radius * std::sqrt(1 - std::pow(length / w, 2)) : 0;
    const double x = w - length;
    const double angle = std::atan2(drop, -length) * 180 / std::numbers::pi;
    const Point upper{w, radius};
    const Point lower{w, radius + thick};
    draft.Part(true, true, -0.2).Arc(upper, w, radius, 270, -90);
    draft.Arc(lower, w, radius, 180, 90).Close();
    const double middle = radius + thick / 2 + drop;
    draft.Part().Arc(upper, w, radius, 180, angle - 180);
    draft.Line(x, middle - head / 2).Line(w, h - head / 2).Line(x, middle + head / 2);
    draft.Arc(lower, w, radius, angle, 180 - angle).Close();
}

constexpr std::array kArrowShapes{
    ShapeRule{"rightArrow", RightArrow},
    ShapeRule{"leftArrow", RightArrow, ShapeTurn::MirrorX},
    ShapeRule{"downArrow", RightArrow, ShapeTurn::Transpose},
    ShapeRule{"upArrow", RightArrow, ShapeTurn::TransposeMirrorY},
    ShapeRule{"notchedRightArrow", NotchedArrow},
    ShapeRule{"stripedRightArrow", StripedArrow},
    ShapeRule{"leftRightArrow", LeftRightArrow},
    ShapeRule{"upDownArrow", LeftRightArrow, ShapeTurn::Transpose},
    ShapeRule{"quadArrow", QuadArrow},
    ShapeRule{"leftRightUpArrow", LeftRightUpArrow},
    ShapeRule{"leftUpArrow", LeftUpArrow},
    ShapeRule{"bentUpArrow", BentUpArrow},
    ShapeRule{"bentArrow", BentArrow},
    ShapeRule{"uturnArrow", UTurnArrow},
    ShapeRule{"curvedRightArrow", CurvedRightArrow},
    ShapeRule{"curvedLeftArrow", CurvedRightArrow, ShapeTurn::MirrorX},
    ShapeRule{"curvedDownArrow", CurvedRightArrow, ShapeTurn::Transpose},
    ShapeRule{"curvedUpArrow", CurvedRightArrow, ShapeTurn::TransposeMirrorY}};

} // namespace

std::span<const ShapeRule> ArrowShapes()
{
    return kArrowShapes;
}

} // namespace orrery::look
