#pragma once

#include "engines/common/cell_address.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace orrery::xlsx {

inline constexpr std::int32_t kSheetRows = 1048576;
inline constexpr std::int32_t kSheetColumns = 16384; ///< the last is "XFD"

using engines::CellAddress;
using engines::CellRange;
using engines::FormatCellAddress;
using engines::FormatCellRange;

bool IsInsideSheet(std::int32_t row, std::int32_t column);

/// Reads "B6", in letters of either case. Nothing for "$B$6", "B", "6", "XFE1", "A1048577".
std::optional<CellAddress> ParseCellAddress(std::string_view text);

/// Reads "B6:C9" (opposite corners in any order) and "B6", a range of one cell.
std::optional<CellRange> ParseCellRange(std::string_view text);

} // namespace orrery::xlsx
