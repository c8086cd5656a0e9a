#pragma once

#include "engines/builtin/xlsx/look/cells/cell_formulas.h"
#include "engines/builtin/xlsx/look/cells/cell_values.h"
#include "engines/builtin/xlsx/look/cells/sheet_context.h"

#include <cstdint>

namespace orrery::xlsx {

/// Reads the rows and cells of a sheet.
class CellReader {
public:
    explicit CellReader(SheetContext& context)
        : context_(context), values_(context), formulas_(context)
    {
    }
    /// Reads <sheetData> to its end.
    void Read(xml::Scanner& scanner);

private:
    void ReadRow(xml::Scanner& scanner);
    void ReadCell(xml::Scanner& scanner);
    void ReadCellAttributes(const xml::Scanner& scanner, book::Cell& cell, ValueType& type);
    void ReadContent(xml::Scanner& scanner, book::Cell& cell, ValueType type);
    void Sort();

    SheetContext& context_;
    CellValues values_;
    CellFormulas formulas_;
    std::int32_t row_ = 0;    ///< of the last row
    std::int32_t column_ = 0; ///< of the last cell of it
    bool isSorted_ = true;
};

} // namespace orrery::xlsx
