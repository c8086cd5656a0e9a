#pragma once

#include "book/cell_address.h"

#include <cstdint>

namespace orrery::engines {

using book::CellAddress;
using book::CellRange;
using book::FormatCellAddress;
using book::FormatCellRange;

/// Throws Error(CellOutsideSheet). Row and column are those of the request.
[[noreturn]] void ThrowOutsideSheet(std::int32_t row, std::int32_t column);

} // namespace orrery::engines
