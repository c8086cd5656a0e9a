#pragma once

#include "book/error.h"
#include "engines/common/cell_address.h"
#include "util/error.h"

namespace orrery::builtin {

/// Checks that a cell inside the sheet may be changed on its own. `formats` says which formats are
/// locked. Throws Error (CellLocked, PartOfArray).
template <class SheetText, class Formats>
void CheckChangeable(const SheetText& text, engines::CellAddress cell, const Formats& formats)
{
    if (text.IsProtected(cell) && formats.IsLocked(text.FormatOf(cell)))
        throw util::Error(book::ErrorKind::CellLocked, engines::FormatCellAddress(cell));
    if (text.IsPartOfArray(cell))
        throw util::Error(book::ErrorKind::PartOfArray, engines::FormatCellAddress(cell));
}

} // namespace orrery::builtin
