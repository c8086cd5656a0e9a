#pragma once

#include "look/canvas/canvas.h"

#include <vector>

namespace orrery::look {

/// Where a linear gradient over a box begins and ends. Degrees as `book::Gradient`.
struct GradientLine {
    Point from;
    Point to;
};
GradientLine LineOfGradient(double degree, const Box& box);

/// A gradient from the inside outwards, in linear ones: the four sides around the inner rectangle,
/// each with the box and the degrees of its own gradient. Sides without an area are left out.
struct GradientSide {
    Path path;
    Box box;
    double degree = 0;
};
struct GradientSides {
    std::vector<GradientSide> sides;
    Box inner; ///< has the first colour
};
GradientSides SidesOfGradient(const book::Gradient& gradient, const Box& box);

/// The circle that stands for such a gradient in a shape, in the unit square.
struct GradientCircle {
    Point middle;
    double radius = 0;
};
GradientCircle CircleOfGradient(const book::Gradient& gradient);

/// Whether anything is filled.
bool IsFilling(const book::Fill& fill);
/// Whether it is a gradient from the inside outwards.
bool IsFromInside(const book::Fill& fill);

} // namespace orrery::look
