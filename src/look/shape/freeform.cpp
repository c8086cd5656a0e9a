#include "look/shape/freeform.h"

#include <algorithm>
#include <cmath>

namespace orrery::look {

namespace {

constexpr double kFurthest = 1000; // boxes

double Within(double share)
{
    return std::isfinite(share) ? std::clamp(share, -kFurthest, kFurthest) : 0;
}

Point PointIn(const Box& box, book::SharePoint point)
{
    return {box.x + Within(point.x) * box.width, box.y + Within(point.y) * box.height};
}

PathStep::Kind KindOf(book::FreeformStep::Kind kind)
{
    switch (kind) {
    case book::FreeformStep::Kind::Move:
        return PathStep::Kind::Move;
    case book::FreeformStep::Kind::Line:
        return PathStep::Kind::Line;
    case book::FreeformStep::Kind::Curve:
        return PathStep::Kind::Curve;
    case book::FreeformStep::Kind::Close:
        break;
    }
    return PathStep::Kind::Close;
}

} // namespace

Shape MakeFreeform(const book::Freeform& freeform, const Box& box)
{
    Shape shape;
    for (const book::FreeformPart& part : freeform.parts) {
        ShapePart made{{}, part.isFilled, part.isStroked, std::clamp(part.shade, -1.0, 1.0)};
        made.isEvenOdd = true;
        made.path.reserve(part.steps.size());
        for (const book::FreeformStep& step : part.steps)
            made.path.push_back({KindOf(step.kind), PointIn(box, step.point),
                                 PointIn(box, step.control1), PointIn(box, step.control2)});
        shape.parts.push_back(std::move(made));
    }
    const Point first = PointIn(box, {freeform.text.left, freeform.text.top});
    const Point last = PointIn(box, {freeform.text.right, freeform.text.bottom});
    shape.textBox = {first.x, first.y, std::max(last.x - first.x, 0.0),
                     std::max(last.y - first.y, 0.0)};
    return shape;
}

} // namespace orrery::look
