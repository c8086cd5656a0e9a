#pragma once

#include "book/look/cell_style.h"
#include "engines/builtin/xls/look/styles/look_colors.h"

#include <cstdint>
#include <string_view>

namespace orrery::xls {

/// Reads alignment, border and fill from the data of an XF record. Throws Error(DamagedWorkbook) if
/// it is too short. [MS-XLS] 2.4.353, 2.5.20
void ReadFormatFields(std::string_view data, const LookColors& colors, book::CellStyle& style);

/// [MS-XLS] 2.5.11
book::LineStyle LineStyleOf(std::uint32_t value);
/// A line with a colour of the palette; without one if there is no line.
book::BorderLine LineOf(std::uint32_t style, std::uint32_t color, const LookColors& colors);
/// [MS-XLS] 2.5.66
book::FillPattern PatternOf(std::uint32_t value);

} // namespace orrery::xls
