#pragma once

#include "engines/builtin/xlsx/look/cells/sheet_context.h"

#include <vector>

namespace orrery::xlsx {

/// Reads <mergeCells> to its end. Of ranges that overlap, the first one row by row stays.
void ReadMerges(xml::Scanner& scanner, SheetContext& context);

/// Sorts ranges row by row and takes those out that overlap an earlier one; these are returned.
std::vector<book::CellRange> RemoveOverlaps(std::vector<book::CellRange>& ranges);

} // namespace orrery::xlsx
