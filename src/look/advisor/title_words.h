#pragma once

#include "look/advisor/known_names.h"
#include "look/advisor/seen_sheet.h"

#include <cstdint>

namespace orrery::look {

/// What a cell shows of a date.
enum class TitleKind : std::uint8_t {
    None,
    Month,
    Year,
    Both,       ///< "May 2027"
    MonthLabel, ///< "Month:"; its value is beside it
    YearLabel
};

TitleKind KindOfTitle(const SeenSheet& sheet, book::CellAddress cell, const KnownNames& names);

} // namespace orrery::look
