#pragma once

#include "look/advisor/day_grids.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orrery::look {

/// What stands in the cells of days.
struct DayContents {
    std::int32_t numbers = 0; ///< cells with days that follow each other
    std::int32_t texts = 0;
    bool isCounted = false;            ///< the numbers are the days of months, one after the other
    std::optional<std::int32_t> one;   ///< the column [0:6] of the first day of a month
    std::optional<double> firstSerial; ///< of dates, that of the first cell
};

/// The cell of the day in an area, as that of the first day, and what tells it.
struct DayCell {
    book::CellAddress cell;
    DayContents contents;
    std::string because;
};

/// The cell of holidays of the first day.
struct HolidayCell {
    book::CellAddress cell;
    std::int16_t multiple = 0; ///< 0 overwrite, 1 next row, 2 next column
    std::string because;
};

DayCell FindDayCell(const SeenSheet& sheet, const DayGrid& grid);
std::optional<HolidayCell> FindHolidayCell(const SeenSheet& sheet, const DayGrid& grid,
                                           book::CellAddress day);

/// Names of weekdays, or the cells that are made for them.
struct WeekdayCells {
    WeekdayRow row;
    bool isRead = false; ///< there are names or dates
};
std::optional<WeekdayCells> FindWeekdayCells(const SeenSheet& sheet, const DayGrid& grid,
                                             const std::vector<WeekdayRow>& rows);

/// The first day of the week, from the column of the first day of a month.
std::optional<std::int16_t> FirstDayOfMonth(const DayContents& days, std::int32_t year,
                                            std::int16_t month);

/// The first day of the week, if dates or the looks of the weekend tell it: 0 Sunday, 1 Monday.
std::optional<std::int16_t> FirstDayOfLooks(const SeenSheet& sheet, const DayGrid& grid,
                                            const DayCell& day);

} // namespace orrery::look
