#pragma once

#include "book/look/cell_style.h"
#include "engines/builtin/xlsx/look/style/color_scheme.h"

namespace orrery::xlsx {

/// Reads a <border> of the cells to its end. ECMA-376 18.8.4
book::Border ReadBorder(xml::Scanner& scanner, const ColorScheme& scheme);

/// Reads a <border> of a conditional format or a table style, into `style`.
void ReadPartialBorder(xml::Scanner& scanner, const ColorScheme& scheme, book::PartialStyle& style);

} // namespace orrery::xlsx
