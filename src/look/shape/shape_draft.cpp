#include "look/shape/shape_draft.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace orrery::look {

namespace {

constexpr double kShareUnit = 100'000;
constexpr double kDegreeUnit = 60'000;
constexpr double kFullCircle = 2 * std::numbers::pi;

/// The parameter of an ellipse's point that is seen at an angle.
double EllipseParameter(double degrees, double radiusX, double radiusY)
{
    const double angle = degrees * std::numbers::pi / 180;
    const double parameter = std::atan2(radiusX * std::sin(angle), radiusY * std::cos(angle));
    return parameter + kFullCircle * std::round((angle - parameter) / kFullCircle);
}

} // namespace

ShapeDraft::ShapeDraft(double boxWidth, double boxHeight, const std::vector<double>& adjustments)
    : width(boxWidth), height(boxHeight), side(std::min(boxWidth, boxHeight)),
      adjustments_(adjustments)
{
    shape.textBox = {0, 0, boxWidth, boxHeight};
}

double ShapeDraft::Raw(std::size_t index, double fallback) const
{
    const bool isGiven = index < adjustments_.size() && std::isfinite(adjustments_[index]);
    return isGiven ? adjustments_[index] : fallback;
}

double ShapeDraft::Share(std::size_t index, double fallback, double low, double high) const
{
    const double share = Raw(index, fallback * kShareUnit) / kShareUnit;
    return std::max(low, std::min(share, high));
}

double ShapeDraft::Degrees(std::size_t index, double fallback) const
{
    return std::clamp(Raw(index, fallback * kDegreeUnit) / kDegreeUnit, 0.0, 360.0);
}

ShapeDraft& ShapeDraft::Part(bool isFilled, bool isStroked, double shade)
{
    shape.parts.push_back({{}, isFilled, isStroked, shade});
    return *this;
}

void ShapeDraft::Add(PathStep step)
{
    if (shape.parts.empty())
        Part();
    shape.parts.back().path.push_back(step);
}

ShapeDraft& ShapeDraft::Move(double x, double y)
{
    Add({PathStep::Kind::Move, {x, y}, {}, {}});
    return *this;
}

ShapeDraft& ShapeDraft::Line(double x, double y)
{
    Add({PathStep::Kind::Line, {x, y}, {}, {}});
    return *this;
}

ShapeDraft& ShapeDraft::Curve(Point control1, Point control2, Point end)
{
    Add({PathStep::Kind::Curve, end, control1, control2});
    return *this;
}

ShapeDraft& ShapeDraft::Arc(Point middle, double radiusX, double radiusY, double start,
                            double sweep)
{
    const double first = EllipseParameter(start, radiusX, radiusY);
    const double last = EllipseParameter(start + sweep, radiusX, radiusY);
    const int pieces = std::max(1, static_cast<int>(std::ceil(std::abs(sweep) / 90 - 1e-9)));
    const double step = (last - first) / pieces;
    const double handle = 4.0 / 3 * std::tan(step / 4);
    const auto at = [&](double angle, double along) {
        return Point{middle.x + radiusX * (std::cos(angle) - along * std::sin(angle)),
                     middle.y + radiusY * (std::sin(angle) + along * std::cos(angle))};
    };
    const Point begin = at(first, 0);
    if (shape.parts.empty() || shape.parts.back().path.empty())
        Move(begin.x, begin.y);
    else
        Line(begin.x, begin.y);
    for (int i = 0; i < pieces; ++i) {
        const double from = first + i * step;
        Curve(at(from, handle), at(from + step, -handle), at(from + step, 0));
    }
    return *this;
}

ShapeDraft& ShapeDraft::Close()
{
    Add({PathStep::Kind::Close, {}, {}, {}});
    return *this;
}

ShapeDraft& ShapeDraft::Polygon(std::initializer_list<Point> points)
{
    Part();
    for (const auto& point : points) {
        const bool isFirst = &point == points.begin();
        Add({isFirst ? PathStep::Kind::Move : PathStep::Kind::Line, point, {}, {}});
    }
    return Close();
}

ShapeDraft& ShapeDraft::Ellipse(const Box& box)
{
    const Point middle = box.Middle();
    Move(box.Right(), middle.y);
    Arc(middle, box.width / 2, box.height / 2, 0, 360);
    return Close();
}

ShapeDraft& ShapeDraft::Text(double left, double top, double right, double bottom)
{
    shape.textBox = {left, top, std::max(right - left, 0.0), std::max(bottom - top, 0.0)};
    return *this;
}

template <typename Change> void ShapeDraft::ChangePoints(Change change)
{
    for (auto& part : shape.parts) {
        for (auto& step : part.path) {
            step.point = change(step.point);
            step.control1 = change(step.control1);
            step.control2 = change(step.control2);
        }
    }
}

void ShapeDraft::MirrorX()
{
    ChangePoints([this](Point point) { return Point{width - point.x, point.y}; });
    shape.textBox.x = width - shape.textBox.Right();
}

void ShapeDraft::MirrorY()
{
    ChangePoints([this](Point point) { return Point{point.x, height - point.y}; });
    shape.textBox.y = height - shape.textBox.Bottom();
}

void ShapeDraft::Transpose()
{
    ChangePoints([](Point point) { return Point{point.y, point.x}; });
    const Box text = shape.textBox;
    shape.textBox = {text.y, text.x, text.height, text.width};
}

} // namespace orrery::look
