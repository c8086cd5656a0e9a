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
    bool isSure = true;                ///< false: an empty cell that only looks like a title
    std::optional<double> number = {}; ///< that a format shows, maybe as a date in any language
};

struct Titles {
    std::optional<TitleCell> month;
    std::optional<TitleCell> year;
    std::optional<std::int32_t> shownYear; ///< that the sheet shows anywhere above
    bool isInOrder = true; ///< of a year: the names of months do not contradict the order
    std::vector<std::string> monthTexts; ///< of a year: of every month
};

/// `weekdays` are the cells of weekdays of this month, `rows` all names of weekdays of the sheet.
Titles FindMonthTitles(const SeenSheet& sheet, const DayGrid& grid,
                       const std::optional<book::CellAddress>& weekdays,
                       const std::vector<WeekdayRow>& rows, const KnownNames& names);
Titles FindYearTitles(const SeenSheet& sheet, const YearGrid& year, const KnownNames& names);

} // namespace orrery::look
