#pragma once

#include "book/look/cell_style.h"
#include "look/canvas/svg_definitions.h"

#include <string>
#include <vector>

namespace orrery::look {

/// What CSS says for a fill: "#fff", "url(#fill-1)", or nothing where nothing is filled. Gradients
/// cover the box around the element; one from the inside outwards is a circle here.
std::string SvgPaint(const book::Fill& fill, SvgDefinitions& definitions);

/// The same for a linear gradient.
std::string SvgLinearGradient(const std::vector<book::GradientStop>& stops, double degree,
                              SvgDefinitions& definitions);

} // namespace orrery::look
