#pragma once

#include "book/look/sheet_look.h"
#include "engines/builtin/xlsx/look/drawing/pictures.h"
#include "engines/builtin/xlsx/look/drawing/shapes.h"

#include <string>

namespace orrery::xlsx::drawing {

/// Reads form controls and embedded objects from a part of VML (ECMA-376-4 19.4):
/// objects are pictures, controls are boxes with their texts. Notes are not
/// listed. The pictures of headers and footers lie in such parts, too. Throws Error if the part is
/// not well-formed.
void ReadControls(const Package& package, const std::string& part, Pictures& pictures,
                  ShapeBudget& budget, book::SheetLook& look);

} // namespace orrery::xlsx::drawing
