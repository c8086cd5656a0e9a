#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orrery::xlsx {

inline constexpr std::int32_t kSheetRows = 1048576;
inline constexpr std::int32_t kSheetColumns = 16384; ///< the last is "XFD"

/// A cell of a sheet in a file of this format, counted from 1: "B6" is row 6, column 2. Ordered as
/// the cells stand in the file, row by row.
struct CellAddress {
    std::int32_t row = 0;    ///< [1:kSheetRows]
    std::int32_t column = 0; ///< [1:kSheetColumns]
    friend auto operator<=>(const CellAddress&, const CellAddress&) = default;
};

/// A rectangle of cells, both corners included.
struct CellRange {
    CellAddress first; ///< upper left
    CellAddress last;  ///< lower right
    friend bool operator==(const CellRange&, const CellRange&) = default;

    bool Contains(CellAddress cell) const;
    bool IsOneCell() const { return first == last; }
    /// Makes the rectangle as large as it must be to hold the cell too.
    void Widen(CellAddress cell);
};

bool IsInsideSheet(std::int32_t row, std::int32_t column);

/// Reads "B6"; letters of either case. Nothing for "$B$6", "B", "6", "XFE1", "A1048577".
std::optional<CellAddress> ParseCellAddress(std::string_view text);
/// "B6". The cell lies inside the sheet.
std::string FormatCellAddress(CellAddress cell);

/// Reads "B6:C9" (opposite corners in any order) and "B6", a range of one cell.
std::optional<CellRange> ParseCellRange(std::string_view text);
/// "B6:C9", or "B6" for one cell.
std::string FormatCellRange(const CellRange& range);

} // namespace orrery::xlsx
