#pragma once

#include "look/advisor/day_grids.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orrery::look {

/// A cell for the name of a month or for a year.
struct TitleCell {
    book::CellAddress cell;
    std::string text; ///< what it shows now
    std::string because;
    bool isSure = true; ///< false: an empty cell that only looks like a title
};

struct Titles {
    std::optional<TitleCell> month;
    std::optional<TitleCell> year;
    bool isInOrder = true; ///< of a year: the names of months do not contradict the order
    std::vector<std::string> monthTexts; ///< of a year: of every month
};

Titles FindMonthTitles(const SeenSheet& sheet, const DayGrid& grid,
                       const std::optional<book::CellAddress>& weekdays, const KnownNames& names);
Titles FindYearTitles(const SeenSheet& sheet, const YearGrid& year, const KnownNames& names);

} // namespace orrery::look
