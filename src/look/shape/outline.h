#pragma once

#include "look/canvas/canvas.h"

#include <vector>

namespace orrery::look {

/// A part of a shape's outline.
struct ShapePart {
    Path path;
    bool isFilled = true;
    bool isStroked = true;
    double shade = 0; ///< of its fill: towards black [-1:0] or white [0:1]
    bool isEvenOdd = false;
};

struct Shape {
    std::vector<ShapePart> parts; ///< in the order of painting
    Box textBox;                  ///< where its text stands, before the insets
};

} // namespace orrery::look
