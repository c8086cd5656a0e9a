#include "look/canvas/gradients.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace orrery::look {
namespace {

double Share(double value)
{
    return std::clamp(value, 0.0, 1.0);
}

Path PathOfCorners(const std::array<Point, 4>& corners)
{
    using enum PathStep::Kind;
    return {{Move, corners[0], {}, {}},
            {Line, corners[1], {}, {}},
            {Line, corners[2], {}, {}},
            {Line, corners[3], {}, {}},
            {Close, {}, {}, {}}};
}

} // namespace

GradientLine LineOfGradient(double degree, const Box& box)
{
    // In the unit square the gradient runs by the angle and ends in the corners. Stretching the
    // square to the box turns its lines of one colour, to which the gradient stays upright.
    const double angle = std::fmod(degree, 360) * std::numbers::pi / 180;
    const double unitX = std::cos(angle);
    const double unitY = std::sin(angle);
    const double length = std::abs(unitX) + std::abs(unitY);
    const double slopeX = unitX / length / box.width;
    const double slopeY = unitY / length / box.height;
    const double square = slopeX * slopeX + slopeY * slopeY;
    const Point half{slopeX / square / 2, slopeY / square / 2};
    const Point middle = box.Middle();
    return {{middle.x - half.x, middle.y - half.y}, {middle.x + half.x, middle.y + half.y}};
}

GradientSides SidesOfGradient(const book::Gradient& gradient, const Box& box)
{
    const double left = box.x + Share(gradient.left) * box.width;
    const double right = std::max(left, box.x + Share(gradient.right) * box.width);
    const double top = box.y + Share(gradient.top) * box.height;
    const double bottom = std::max(top, box.y + Share(gradient.bottom) * box.height);
    GradientSides sides;
    sides.inner = {left, top, right - left, bottom - top};
    // A side: its outer edge, its inner edge, the box around both and the way outwards.
    const auto side = [&](const std::array<Point, 4>& corners, const Box& part, double degree) {
        if (part.width > 0 && part.height > 0)
            sides.sides.push_back({PathOfCorners(corners), part, degree});
    };
    const Point outer1{box.x, box.y};
    const Point outer2{box.Right(), box.y};
    const Point outer3{box.Right(), box.Bottom()};
    const Point outer4{box.x, box.Bottom()};
    side({outer1, {left, top}, {left, bottom}, outer4}, {box.x, box.y, left - box.x, box.height},
         180);
    side({outer2, {right, top}, {right, bottom}, outer3},
         {right, box.y, box.Right() - right, box.height}, 0);
    side({outer1, {left, top}, {right, top}, outer2}, {box.x, box.y, box.width, top - box.y}, 270);
    side({outer4, {left, bottom}, {right, bottom}, outer3},
         {box.x, bottom, box.width, box.Bottom() - bottom}, 90);
    return sides;
}

GradientCircle CircleOfGradient(const book::Gradient& gradient)
{
    const double x = Share((gradient.left + gradient.right) / 2);
    const double y = Share((gradient.top + gradient.bottom) / 2);
    return {{x, y}, std::max({x, 1 - x, y, 1 - y})};
}

bool IsFilling(const book::Fill& fill)
{
    return fill.gradient ? !fill.gradient->stops.empty() : fill.pattern != book::FillPattern::None;
}

bool IsFromInside(const book::Fill& fill)
{
    return fill.gradient && fill.gradient->isPath && fill.gradient->stops.size() > 1;
}

} // namespace orrery::look
