#pragma once

#include "engines/builtin/xls/sheet/sheet_cells.h"
#include "engines/builtin/xls/sheet/sheet_text.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xls {

/// The records of rows and cells as they are saved, in blocks of 32 rows. [MS-XLS] 2.1.7.20.1
struct CellTable {
    std::string bytes;
    std::vector<std::size_t> blocks; ///< offsets in `bytes` of the DBCELL records, if it has blocks
    std::uint32_t firstRow = 0;      ///< from 0
    std::uint32_t rowsEnd = 0;       ///< after the last row
};

/// Rebuilds the cell table of a sheet with the written cells in it. `base` is the text's bytes,
/// perhaps with changes that move nothing. With `recalculate` no formula keeps its stored result,
/// so that the program that opens the file computes them.
CellTable MakeCellTable(const SheetText& text, std::string_view base,
                        std::span<const SheetCells::Written> written, bool recalculate);

} // namespace orrery::xls
