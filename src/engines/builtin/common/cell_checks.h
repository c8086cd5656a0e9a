#pragma once

#include "engines/builtin/common/cell_address.h"
#include "util/error.h"

#include <cstdint>
#include <string>

namespace orrery::builtin {

/// Throws Error(CellOutsideSheet). Row and column are as they were asked for.
[[noreturn]] inline void ThrowOutsideSheet(std::int32_t row, std::int32_t column)
{
    throw util::Error(util::ErrorKind::CellOutsideSheet,
                      "row " + std::to_string(row) + ", column " + std::to_string(column));
}

/// Whether a cell inside the sheet may be changed alone. `formats` tells which are locked.
/// Throws Error (CellLocked, PartOfArray).
template <class SheetText, class Formats>
void CheckChangeable(const SheetText& text, CellAddress cell, const Formats& formats)
{
    if (text.IsProtected(cell) && formats.IsLocked(text.FormatOf(cell)))
        throw util::Error(util::ErrorKind::CellLocked, FormatCellAddress(cell));
    if (text.IsPartOfArray(cell))
        throw util::Error(util::ErrorKind::PartOfArray, FormatCellAddress(cell));
}

} // namespace orrery::builtin
