#pragma once

#include "book/look/drawing.h"
#include "look/shape/outline.h"

namespace orrery::look {

/// The outline of a freeform in a box. What lies far outside of the box is moved nearer.
Shape MakeFreeform(const book::Freeform& freeform, const Box& box);

} // namespace orrery::look
