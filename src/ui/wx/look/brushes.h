#pragma once

#include "look/canvas/canvas.h"

#include <wx/graphics.h>

#include <vector>

namespace orrery::ui::wx {

wxColour ToColour(const book::Color& color, double opacity);

/// A gradient between the corners of a box where its lines begin and end. Degrees as
/// `book::Gradient`.
wxGraphicsBrush LinearBrush(wxGraphicsContext& context,
                            const std::vector<book::GradientStop>& stops, double degree,
                            const look::Box& box, double opacity);

/// A gradient from the inside outwards, as a circle in the unit square.
wxGraphicsBrush RadialBrush(wxGraphicsContext& context, const book::Gradient& gradient,
                            double opacity);

/// Any other fill. The box is that of a linear gradient.
wxGraphicsBrush PlainBrush(wxGraphicsContext& context, const look::Brush& brush,
                           const look::Box& box);

} // namespace orrery::ui::wx
