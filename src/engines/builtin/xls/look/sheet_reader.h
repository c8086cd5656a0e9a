#pragma once

#include "book/look/sheet_look.h"
#include "engines/builtin/xls/look/look_source.h"

#include <cstddef>

namespace orrery::xls {

/// Reads the look of the sheet at a position from 0. What is damaged is left out; that of a sheet
/// which is no worksheet is empty.
book::SheetLook ReadSheetLook(LookSource& source, std::size_t sheet);

} // namespace orrery::xls
