#include "look/shape/shape_table.h"

#include <array>
#include <numbers>

/// Rectangles, with corners that are round or cut.
namespace orrery::look {

namespace {

enum class Corner { Sharp, Round, Cut };
struct CornerCut {
    Corner kind = Corner::Sharp;
    double size = 0;
};

constexpr CornerCut kSharp;

/// How far a text keeps from a round corner, in its radius.
constexpr double kRoundInset = 1 - std::numbers::sqrt2 / 2;

/// Clockwise from the upper left corner.
void DrawCorners(ShapeDraft& draft, const std::array<CornerCut, 4>& corners)
{
    const double w = draft.width;
    const double h = draft.height;
    const std::array places{Point{0, 0}, Point{w, 0}, Point{w, h}, Point{0, h}};
    constexpr std::array steps{Point{1, 0}, Point{0, 1}, Point{-1, 0},
                               Point{0, -1}}; // away from each corner
    draft.Part();
    for (std::size_t i = 0; i < 4; ++i) {
        const auto [kind, size] = corners[i];
        const Point& to = steps[i];
        const Point& from = steps[(i + 3) % 4];
        const Point begin{places[i].x - from.x * size, places[i].y - from.y * size};
        if (i == 0)
            draft.Move(begin.x, begin.y);
        else
            draft.Line(begin.x, begin.y);
        if (kind == Corner::Round && size > 0)
            draft.Arc({begin.x + to.x * size, begin.y + to.y * size}, size, size,
                      180 + 90 * static_cast<double>(i), 90);
        else if (kind == Corner::Cut)
            draft.Line(places[i].x + to.x * size, places[i].y + to.y * size);
    }
    draft.Close();
}

CornerCut Rounded(const ShapeDraft& draft, std::size_t index, double fallback)
{
    return {Corner::Round, draft.side * draft.Share(index, fallback, 0, 0.5)};
}
CornerCut Snipped(const ShapeDraft& draft, std::size_t index, double fallback)
{
    return {Corner::Cut, draft.side * draft.Share(index, fallback, 0, 0.5)};
}

constexpr double kUsual = 0.16667;

void Rect(ShapeDraft& draft)
{
    DrawCorners(draft, {});
}

void RoundRect(ShapeDraft& draft)
{
    const auto round = Rounded(draft, 0, kUsual);
    DrawCorners(draft, {round, round, round, round});
    const double inset = round.size * kRoundInset;
    draft.Text(inset, inset, draft.width - inset, draft.height - inset);
}

void Round1Rect(ShapeDraft& draft)
{
    DrawCorners(draft, {kSharp, Rounded(draft, 0, kUsual), kSharp, kSharp});
}

void Round2SameRect(ShapeDraft& draft)
{
    const auto top = Rounded(draft, 0, kUsual);
    const auto bottom = Rounded(draft, 1, 0);
    DrawCorners(draft, {top, top, bottom, bottom});
}

void Round2DiagRect(ShapeDraft& draft)
{
    const auto one = Rounded(draft, 0, kUsual);
    const auto other = Rounded(draft, 1, 0);
    DrawCorners(draft, {one, other, one, other});
}

void Snip1Rect(ShapeDraft& draft)
{
    DrawCorners(draft, {kSharp, Snipped(draft, 0, kUsual), kSharp, kSharp});
}

void Snip2SameRect(ShapeDraft& draft)
{
    const auto top = Snipped(draft, 0, kUsual);
    const auto bottom = Snipped(draft, 1, 0);
    DrawCorners(draft, {top, top, bottom, bottom});
}

void Snip2DiagRect(ShapeDraft& draft)
{
    const auto one = Snipped(draft, 0, 0);
    const auto other = Snipped(draft, 1, kUsual);
    DrawCorners(draft, {one, other, one, other});
}

void SnipRoundRect(ShapeDraft& draft)
{
    DrawCorners(draft, {Rounded(draft, 0, kUsual), Snipped(draft, 1, kUsual), kSharp, kSharp});
}

/// Corners that are hollow.
void Plaque(ShapeDraft& draft)
{
    const double w = draft.width;
    const double h = draft.height;
    const double r = draft.side * draft.Share(0, kUsual, 0, 0.5);
    draft.Part().Move(0, r).Arc({0, 0}, r, r, 90, -90);
    draft.Line(w - r, 0).Arc({w, 0}, r, r, 180, -90);
    draft.Line(w, h - r).Arc({w, h}, r, r, 270, -90);
    draft.Line(r, h).Arc({0, h}, r, r, 0, -90).Close();
    const double inset = r * std::numbers::sqrt2 / 2;
    draft.Text(inset, inset, w - inset, h - inset);
}

constexpr std::array kRectangleShapes{ShapeRule{"rect", Rect},
                                      ShapeRule{"textBox", Rect},
                                      ShapeRule{"flowChartProcess", Rect},
                                      ShapeRule{"roundRect", RoundRect},
                                      ShapeRule{"flowChartAlternateProcess", RoundRect},
                                      ShapeRule{"round1Rect", Round1Rect},
                                      ShapeRule{"round2SameRect", Round2SameRect},
                                      ShapeRule{"round2DiagRect", Round2DiagRect},
                                      ShapeRule{"snip1Rect", Snip1Rect},
                                      ShapeRule{"snip2SameRect", Snip2SameRect},
                                      ShapeRule{"snip2DiagRect", Snip2DiagRect},
                                      ShapeRule{"snipRoundRect", SnipRoundRect},
                                      ShapeRule{"plaque", Plaque}};

} // namespace

std::span<const ShapeRule> RectangleShapes()
{
    return kRectangleShapes;
}

} // namespace orrery::look
