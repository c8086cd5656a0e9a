#pragma once

#include "look/shape/outline.h"

#include <string_view>
#include <vector>

namespace orrery::look {

/// The outline of a preset geometry of ECMA-376 20.1.10.56 in a box; of an unknown one a rectangle.
/// Adjustments are as the files have them, mostly in 1/100,000; those that are missing have their
/// defaults, and those that are out of range are moved into it.
Shape MakeShape(std::string_view geometry, const Box& box, const std::vector<double>& adjustments);

/// Whether the geometry is known.
bool IsKnownShape(std::string_view geometry);

} // namespace orrery::look
