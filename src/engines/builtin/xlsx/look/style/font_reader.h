#pragma once

#include "book/look/cell_style.h"
#include "engines/builtin/xlsx/look/style/color_scheme.h"

#include <string_view>

namespace orrery::xlsx {

/// Reads a font of the styles or of a run to its end: the elements font and rPr. What it leaves
/// open is as in `base`. ECMA-376 18.8.22, 18.4.7
book::Font ReadFont(xml::Scanner& scanner, const ColorScheme& scheme, const book::Font& base);

/// Whether a toggle such as <b/> is on: it is unless its value says otherwise.
bool ReadToggle(const xml::Scanner& scanner);
/// The kind of <u/>.
book::Underline ReadUnderline(const xml::Scanner& scanner);

} // namespace orrery::xlsx
