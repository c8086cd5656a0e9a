#pragma once

#include "book/look/drawing.h"
#include "engines/builtin/xlsx/look/drawing/pictures.h"
#include "engines/builtin/xlsx/look/drawing/shapes.h"

#include <string>
#include <vector>

namespace orrery::xlsx::drawing {

/// Reads form controls and embedded objects from a part of VML (ECMA-376-4 19.4):
/// objects are pictures, controls are boxes with their texts. Notes are not
/// listed. Returns the number of pictures of headers and footers, which lie in such parts, too.
/// Throws Error if the part is not well-formed.
std::size_t ReadControls(const Package& package, const std::string& part, Pictures& pictures,
                         ShapeBudget& budget, std::vector<book::Drawing>& drawings);

} // namespace orrery::xlsx::drawing
