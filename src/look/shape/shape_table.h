#pragma once

#include "look/shape/shape_draft.h"
#include "util/fixed_text.h"

#include <cstdint>
#include <span>

namespace orrery::look {

/// How a shape comes from the one that its function makes.
enum class ShapeTurn : std::uint8_t {
    None,
    MirrorX,
    MirrorY,
    Transpose,
    TransposeMirrorY,
    TransposeMirrorX
};

struct ShapeRule {
    util::FixedText<26> name;
    void (*make)(ShapeDraft& draft);
    ShapeTurn turn = ShapeTurn::None;
};

// The shapes of each kind.
std::span<const ShapeRule> ArrowShapes();
std::span<const ShapeRule> BlockShapes();
std::span<const ShapeRule> CalloutShapes();
std::span<const ShapeRule> FlowChartShapes();
std::span<const ShapeRule> LineShapes();
std::span<const ShapeRule> MathShapes();
std::span<const ShapeRule> PolygonShapes();
std::span<const ShapeRule> RectangleShapes();
std::span<const ShapeRule> RoundShapes();
std::span<const ShapeRule> StarShapes();
std::span<const ShapeRule> SymbolShapes();

} // namespace orrery::look
