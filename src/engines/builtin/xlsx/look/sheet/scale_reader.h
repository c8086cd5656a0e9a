#pragma once

#include "book/look/conditional_format.h"
#include "engines/builtin/xlsx/look/style/color_scheme.h"

#include <vector>

namespace orrery::xlsx {

// The elements of conditional formats that draw by value, in their first form and in that of the
// extension lists, each read to its end.

/// <colorScale>
std::vector<book::ScalePoint> ReadColorScale(xml::Scanner& scanner, const ColorScheme& colors);
/// <dataBar>. In the extension's form, what it does not tell is as Excel takes it there.
book::DataBar ReadDataBar(xml::Scanner& scanner, const ColorScheme& colors, bool isExtension);
/// <iconSet>
book::IconSet ReadIconSet(xml::Scanner& scanner);

} // namespace orrery::xlsx
