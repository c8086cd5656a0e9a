#pragma once

#include "engines/builtin/xlsx/formula/cell_address.h"
#include "engines/builtin/xlsx/formula/formula.h"
#include "engines/builtin/xml/scanner.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace orrery::xlsx {

/// A cell in the text of a sheet. There may be millions, so it is small.
struct CellPlace {
    enum Flag : std::uint16_t {
        Formula = 1,      ///< has a formula
        SharedString = 2, ///< its value is an index into the shared strings
        ArrayValue = 4,   ///< has no formula, but is in the range of an array formula or data table
    };
    std::uint32_t begin = 0; ///< offset of the start tag
    std::uint16_t column = 0;
    std::uint16_t flags = 0;

    bool Has(Flag flag) const { return (flags & flag) != 0; }
};

/// A row in the text of a sheet.
struct RowPlace {
    std::uint32_t begin = 0;     ///< offset of the start tag
    std::uint32_t firstCell = 0; ///< index of its first cell among all cells
    std::int32_t number = 0;
    bool isCounted = false; ///< the element has no number; it is counted from the row before
};

/// Cells that share one formula: the master has its text, and for the dependents it is moved to
/// their places. Cells are given by their index among all cells.
struct SharedFormula {
    std::uint32_t master = 0;
    std::vector<std::uint32_t> dependents; ///< in file order
};

/// A formula that fills a range of cells.
struct ArrayFormula {
    enum class Kind {
        Fixed,   ///< no cell of the range can be changed on its own
        Dynamic, ///< the range is where the formula last spilled; its cells are free
    };
    Kind kind = Kind::Fixed;
    std::uint32_t anchor = 0; ///< index of the cell that holds the formula
    CellRange range;
};

/// Where rows, cells and formulas are in the text of a sheet. Rows and the cells of a row are in
/// strictly ascending order.
struct SheetIndex {
    std::vector<RowPlace> rows;
    std::vector<CellPlace> cells;
    std::vector<SharedFormula> sharedFormulas; ///< in the order of their masters
    std::vector<ArrayFormula> arrays;          ///< in the order of their anchors
    FormulaFacts facts;                        ///< what all the formulas read
    bool hasFormulas = false;
    std::size_t stringsUsed = 0; ///< one more than the highest index of a shared string

    /// The row, or nullptr if the text has none of that number.
    const RowPlace* FindRow(std::int32_t row) const;
    std::span<const CellPlace> CellsOf(const RowPlace& row) const;
    /// The cell, or nullptr if the text has none there.
    const CellPlace* FindCell(CellAddress address) const;
    std::uint32_t IndexOf(const CellPlace& cell) const;
    CellAddress AddressOf(std::uint32_t cell) const;
    /// The formula whose master is that cell, or nullptr.
    const SharedFormula* FindShared(std::uint32_t master) const;
    /// The array formula whose anchor is that cell, or nullptr.
    const ArrayFormula* FindArray(std::uint32_t anchor) const;
};

/// Reads the sheetData element at whose StartTag the scanner is, up to its end.
/// Throws Error(DamagedWorkbook) if a row or cell has no valid place or is out of order.
SheetIndex ReadSheetIndex(xml::Scanner& scanner, std::string_view partName);

} // namespace orrery::xlsx
