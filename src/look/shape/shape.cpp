#include "look/shape/shape.h"

#include "look/shape/shape_draft.h"
#include "look/shape/shape_table.h"

#include <algorithm>
#include <cmath>

namespace orrery::look {

namespace {

const ShapeRule* FindShape(std::string_view name)
{
    for (const auto list :
         {RectangleShapes, RoundShapes, PolygonShapes, LineShapes, ArrowShapes, BlockShapes,
          CalloutShapes, FlowChartShapes, MathShapes, StarShapes, SymbolShapes}) {
        for (const auto& rule : list()) {
            if (rule.name == name)
                return &rule;
        }
    }
    return nullptr;
}

/// Makes the shape in a box at the origin.
Shape Draw(const ShapeRule& rule, double width, double height,
           const std::vector<double>& adjustments)
{
    const bool isTransposed = rule.turn == ShapeTurn::Transpose ||
                              rule.turn == ShapeTurn::TransposeMirrorX ||
                              rule.turn == ShapeTurn::TransposeMirrorY;
    ShapeDraft draft(isTransposed ? height : width, isTransposed ? width : height, adjustments);
    rule.make(draft);
    // Mirrored before it is transposed: what was x is y afterwards.
    if (rule.turn == ShapeTurn::MirrorX || rule.turn == ShapeTurn::TransposeMirrorY)
        draft.MirrorX();
    if (rule.turn == ShapeTurn::MirrorY || rule.turn == ShapeTurn::TransposeMirrorX)
        draft.MirrorY();
    if (isTransposed)
        draft.Transpose();
    return std::move(draft.shape);
}

double Bounded(double length)
{
    return std::isfinite(length) ? std::clamp(length, 0.0, 1e6) : 0;
}

} // namespace

Shape MakeShape(std::string_view geometry, const Box& box, const std::vector<double>& adjustments)
{
    const ShapeRule* rule = FindShape(geometry);
    if (!rule)
        rule = FindShape("rect");
    Shape shape = Draw(*rule, Bounded(box.width), Bounded(box.height), adjustments);
    for (auto& part : shape.parts) {
        for (auto& step : part.path) {
            for (Point* point : {&step.point, &step.control1, &step.control2}) {
                point->x += box.x;
                point->y += box.y;
            }
        }
    }
    shape.textBox.x += box.x;
    shape.textBox.y += box.y;
    return shape;
}

bool IsKnownShape(std::string_view geometry)
{
    return FindShape(geometry) != nullptr;
}

} // namespace orrery::look
