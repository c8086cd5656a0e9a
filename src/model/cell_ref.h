#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orrery::model {

inline constexpr std::int32_t kMaxRow = 65536;
inline constexpr std::int32_t kMaxColumn = 256; ///< "IV"

/// A cell of a sheet, counted from 1 as the sheet shows it ("B6" is row 6, column 2).
/// In both numbers 0 means absent and -1 means outside the sheet.
struct CellPosition {
    std::int32_t row = 0;    ///< [1:65536]
    std::int32_t column = 0; ///< [1:256]
    friend bool operator==(const CellPosition&, const CellPosition&) = default;
};

/// Parses "B6", "aa12", "B", "12" or "": at most two letters, then digits. Returns false for any
/// other text; both numbers are then -1. A number out of range is -1 although the result is true.
/// Throws OverflowError for a row beyond 32 bits.
bool ParseCellRef(std::string_view text, CellPosition& cell);

/// "B6" for row 6, column 2; empty if either number is out of range.
std::string FormatCellRef(CellPosition cell);

/// Parses a cell as a parameter needs it: row and column both present and in range. Returns nothing
/// otherwise, also if the row overflows.
std::optional<CellPosition> ReadCell(std::string_view text);

} // namespace orrery::model
