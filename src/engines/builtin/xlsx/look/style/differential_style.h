#pragma once

#include "book/look/cell_style.h"
#include "engines/builtin/xlsx/look/style/color_scheme.h"

#include <cstddef>

namespace orrery::xlsx {

/// A longer code is damaged; Excel's are at most 255 characters long.
inline constexpr std::size_t kMaxFormatCode = 1000;

/// Reads a <dxf> to its end: what a conditional format or a part of a table style sets. ECMA-376
/// 18.8.14
book::PartialStyle ReadDifferentialStyle(xml::Scanner& scanner, const ColorScheme& scheme);

} // namespace orrery::xlsx
