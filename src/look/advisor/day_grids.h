#pragma once

#include "look/advisor/known_names.h"
#include "look/advisor/seen_sheet.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace orrery::look {

inline constexpr std::int32_t kDays = 7;    ///< of a week
inline constexpr std::int32_t kMonths = 12; ///< of a year

/// Seven names or dates of weekdays in a row.
struct WeekdayRow {
    book::CellAddress first;
    std::int32_t step = 1;
    std::optional<std::int16_t> list;     ///< that the names are of
    std::optional<std::int16_t> firstDay; ///< 0 Sunday, 1 Monday
};

/// Five or six weeks of seven equal areas, each an area of a day.
struct DayGrid {
    book::CellAddress first; ///< the upper left cell of the first area
    std::int32_t width = 1;  ///< columns of an area
    std::int32_t height = 1; ///< rows of an area
    std::int32_t weeks = 6;
    std::vector<book::CellAddress> anchors; ///< cells of the first area that recur in every one
    bool isPart = false; ///< other grids adjoin above or below, so that it is no month alone

    std::int32_t LastRow() const { return first.row + height * weeks - 1; }
    std::int32_t LastColumn() const { return first.column + kDays * width - 1; }
    bool Contains(book::CellAddress cell) const;
};

/// All rows of seven weekdays, from the top.
std::vector<WeekdayRow> FindWeekdayRows(const SeenSheet& sheet, const KnownNames& names);

/// Every grid of days that the looks of the cells allow, the largest first. A grid inside of the
/// columns and rows of a larger one is there, too.
std::vector<DayGrid> FindDayGrids(const SeenSheet& sheet, const std::vector<WeekdayRow>& weekdays);

/// Twelve equal grids at even distances.
struct YearGrid {
    DayGrid january;
    std::int32_t across = 3; ///< months side by side
    std::int32_t down = 4;
    std::int32_t columnInterval = 0; ///< 0 if all stand below each other
    std::int32_t rowInterval = 0;

    /// The grid of a month [0:11].
    DayGrid Month(std::int32_t index) const;
};

std::optional<YearGrid> FindYearGrid(const std::vector<DayGrid>& grids);

} // namespace orrery::look
