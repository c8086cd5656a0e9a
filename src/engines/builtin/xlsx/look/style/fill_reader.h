#pragma once

#include "book/look/cell_style.h"
#include "engines/builtin/xlsx/look/style/color_scheme.h"

#include <optional>

namespace orrery::xlsx {

/// Reads a <fill> of the cells to its end. ECMA-376 18.8.20
book::Fill ReadFill(xml::Scanner& scanner, const ColorScheme& scheme);

/// The same of a conditional format or a table style, where a solid fill has its colour as the
/// background and no pattern means a solid one; nothing if it sets no fill. [MS-OI29500] 2.1.783
std::optional<book::Fill> ReadPartialFill(xml::Scanner& scanner, const ColorScheme& scheme);

} // namespace orrery::xlsx
