#pragma once

#include <compare>
#include <cstdint>
#include <string>

namespace orrery::book {

/// A cell of a sheet, counted from 1: "B6" is row 6, column 2. Ordered row by row, as in the file.
struct CellAddress {
    std::int32_t row = 0;    ///< from 1
    std::int32_t column = 0; ///< from 1
    friend auto operator<=>(const CellAddress&, const CellAddress&) = default;
};

/// A rectangle of cells, both corners included.
struct CellRange {
    CellAddress first; ///< upper left
    CellAddress last;  ///< lower right
    friend bool operator==(const CellRange&, const CellRange&) = default;

    bool Contains(CellAddress cell) const;
    bool IsOneCell() const { return first == last; }
    /// Extends the rectangle to include the cell.
    void Widen(CellAddress cell);
};

/// "B6". Row and column are positive.
std::string FormatCellAddress(CellAddress cell);
/// "B6:C9", or "B6" for one cell.
std::string FormatCellRange(const CellRange& range);

} // namespace orrery::book
