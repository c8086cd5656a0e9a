#pragma once

#include "book/look/drawing.h"
#include "look/canvas/canvas.h"

#include <optional>

namespace orrery::look {

/// The pen of an outline, or nothing if it is not drawn.
std::optional<Pen> OutlinePen(const book::Outline& outline);

/// Paints fill, outline and arrow heads of a shape, not turned, and returns where its text stands.
Box PaintShape(const book::Drawing& drawing, const Box& box, Canvas& canvas);

} // namespace orrery::look
