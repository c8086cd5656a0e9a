#include "look/shape/cloud.h"
#include "look/shape/shape_table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace orrery::look {

namespace {

/// Adjustments of callouts may lie far from the shape, but not at the end of the world.
constexpr double kFar = 100;

Point TipOf(const ShapeDraft& draft)
{
    return {draft.width * (0.5 + draft.Share(0, -0.20833, -kFar, kFar)),
            draft.height * (0.5 + draft.Share(1, 0.625, -kFar, kFar))};
}

/// A rectangle whose outline goes by the tip, from the side that is nearest to it.
void DrawWedge(ShapeDraft& draft, double radius)
{
    const double w = draft.width;
    const double h = draft.height;
    const Point tip = TipOf(draft);
    const double x = tip.x - w / 2;
    const double y = tip.y - h / 2;
    const bool isUpright = std::abs(y) * w > std::abs(x) * h;
    const double from = (isUpright ? x : y) > 0 ? 7.0 / 12 : 2.0 / 12;
    const double to = from + 3.0 / 12;
    const auto side = [&](bool isHere, Point begin, Point end) {
        if (isHere)
            draft.Line(begin.x, begin.y).Line(tip.x, tip.y).Line(end.x, end.y);
    };
    draft.Part().Move(radius, 0);
    side(isUpright && y <= 0, {w * from, 0}, {w * to, 0});
    draft.Arc({w - radius, radius}, radius, radius, 270, 90);
    side(!isUpright && x > 0, {w, h * from}, {w, h * to});
    draft.Arc({w - radius, h - radius}, radius, radius, 0, 90);
    side(isUpright && y > 0, {w * to, h}, {w * from, h});
    draft.Arc({radius, h - radius}, radius, radius, 90, 90);
    side(!isUpright && x <= 0, {0, h * to}, {0, h * from});
    draft.Arc({radius, radius}, radius, radius, 180, 90).Close();
}

void WedgeRect(ShapeDraft& draft)
{
    DrawWedge(draft, 0);
}

void WedgeRoundRect(ShapeDraft& draft)
{
    const double radius = draft.side * draft.Share(2, 0.16667, 0, 0.5);
    DrawWedge(draft, radius);
    const double inset = radius * (1 - std::numbers::sqrt2 / 2);
    draft.Text(inset, inset, draft.width - inset, draft.height - inset);
}

void WedgeEllipse(ShapeDraft& draft)
{
    constexpr double kHalfWedge = 11; // degrees
    const double x = draft.width / 2;
    const double y = draft.height / 2;
    const Point tip = TipOf(draft);
    const double angle = std::atan2(tip.y - y, tip.x - x) * 180 / std::numbers::pi;
    draft.Part().Move(tip.x, tip.y);
    draft.Arc({x, y}, x, y, angle + kHalfWedge, 360 - 2 * kHalfWedge).Close();
    const double inset = 1 - std::numbers::sqrt2 / 2;
    draft.Text(x * inset, y * inset, x * (2 - inset), y * (2 - inset));
}

void CloudCallout(ShapeDraft& draft)
{
    DrawCloud(draft);
    // Three bubbles on the way to the tip.
    const Point middle{draft.width / 2, draft.height / 2};
    const Point tip = TipOf(draft);
    const std::array size{draft.side / 12, draft.side / 18, draft.side / 36};
    constexpr std::array place{0.72, 0.87, 0.97};
    for (std::size_t i = 0; i < 3; ++i) {
        const Point at{middle.x + (tip.x - middle.x) * place[i],
                       middle.y + (tip.y - middle.y) * place[i]};
        draft.Part().Ellipse({at.x - size[i], at.y - size[i], 2 * size[i], 2 * size[i]});
    }
}

/// A box with a line of one to three pieces, whose points are pairs of adjustments, y before x.
void DrawLineCallout(ShapeDraft& draft, std::initializer_list<Point> points, bool hasBorder,
                     bool hasAccent)
{
    const double w = draft.width;
    const double h = draft.height;
    draft.Part(true, hasBorder).Move(0, 0).Line(w, 0).Line(w, h).Line(0, h).Close();
    draft.Part(false, true);
    std::size_t index = 0;
    double first = 0;
    for (const auto& fallback : points) {
        const double y = h * draft.Share(index, fallback.y, -kFar, kFar);
        const double x = w * draft.Share(index + 1, fallback.x, -kFar, kFar);
        if (index == 0) {
            draft.Move(x, y);
            first = x;
        }
        else {
            draft.Line(x, y);
        }
        index += 2;
    }
    if (hasAccent)
        draft.Part(false, true).Move(first, 0).Line(first, h);
}

template <int kPieces, bool kHasBorder, bool kHasAccent> void LineCallout(ShapeDraft& draft)
{
    if constexpr (kPieces == 1)
        DrawLineCallout(draft, {{-0.08333, 0.1875}, {-0.38333, 1.125}}, kHasBorder, kHasAccent);
    else if constexpr (kPieces == 2)
        DrawLineCallout(draft, {{-0.08333, 0.1875}, {-0.16667, 0.1875}, {-0.46667, 1.125}},
                        kHasBorder, kHasAccent);
    else
        DrawLineCallout(
            draft, {{-0.08333, 0.1875}, {-0.16667, 0.1875}, {-0.16667, 1}, {-0.08333, 1.12963}},
            kHasBorder, kHasAccent);
}

constexpr std::array kCalloutShapes{ShapeRule{"wedgeRectCallout", WedgeRect},
                                    ShapeRule{"wedgeRoundRectCallout", WedgeRoundRect},
                                    ShapeRule{"wedgeEllipseCallout", WedgeEllipse},
                                    ShapeRule{"cloudCallout", CloudCallout},
                                    ShapeRule{"borderCallout1", LineCallout<1, true, false>},
                                    ShapeRule{"borderCallout2", LineCallout<2, true, false>},
                                    ShapeRule{"borderCallout3", LineCallout<3, true, false>},
                                    ShapeRule{"callout1", LineCallout<1, false, false>},
                                    ShapeRule{"callout2", LineCallout<2, false, false>},
                                    ShapeRule{"callout3", LineCallout<3, false, false>},
                                    ShapeRule{"accentCallout1", LineCallout<1, false, true>},
                                    ShapeRule{"accentCallout2", LineCallout<2, false, true>},
                                    ShapeRule{"accentCallout3", LineCallout<3, false, true>},
                                    ShapeRule{"accentBorderCallout1", LineCallout<1, true, true>},
                                    ShapeRule{"accentBorderCallout2", LineCallout<2, true, true>},
                                    ShapeRule{"accentBorderCallout3", LineCallout<3, true, true>}};

} // namespace

std::span<const ShapeRule> CalloutShapes()
{
    return kCalloutShapes;
}

} // namespace orrery::look
