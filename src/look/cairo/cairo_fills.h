#pragma once

#include "look/cairo/owned.h"
#include "look/canvas/canvas.h"

#include <vector>

namespace orrery::look {

void SetColor(cairo_t* cairo, const book::Color& color, double opacity);

/// A gradient between the corners of a box. Degrees as `book::Gradient`.
CairoOwned<cairo_pattern_t> LinearPattern(const std::vector<book::GradientStop>& stops,
                                          double degree, const Box& box, double opacity);

/// What fills, but for gradients from the inside outwards, which become the circle that stands for
/// them. The box is that of a gradient.
CairoOwned<cairo_pattern_t> FillPattern(const Brush& brush, const Box& box);

} // namespace orrery::look
