#pragma once

#include "model/parameters.h"

#include <cstdint>

/// Which cells a month is written to: a grid of seven weekdays and six weeks, and on the yearly
/// sheet twelve of them.
namespace orrery::generate {

inline constexpr std::int16_t kDaysPerWeek = 7;
inline constexpr std::int16_t kWeeksPerMonth = 6; ///< that a month touches at most
inline constexpr std::int16_t kMonthsPerYear = 12;

/// A position in the grid of days, counted from 0.
struct GridPosition {
    std::int16_t week = 0;   ///< [0:5]
    std::int16_t column = 0; ///< [0:6]
    friend bool operator==(const GridPosition&, const GridPosition&) = default;
};

bool WeeksBeginOnMonday(const model::CalendarParameters& parameters);

/// Where a day of a month [1:31] stands. `firstWeekday` is the weekday of the 1st, 1 Sunday to 7
/// Saturday.
GridPosition PlaceInGrid(std::int16_t day, std::int16_t firstWeekday, bool mondayFirst);

/// The cell at a position of the grid that begins at `origin`. Throws OverflowError.
model::CellPosition CellInGrid(model::CellPosition origin, GridPosition place,
                               const model::CalendarParameters& parameters);

/// The cells that move with each month block. The year's cell does not, which is kept on purpose:
/// it is written twelve times to the same place.
struct BlockOrigins {
    model::CellPosition day;
    model::CellPosition weekday;
    model::CellPosition month;
    model::CellPosition holiday;
};

BlockOrigins OriginsOf(const model::YearlyParameters& parameters);
void RestoreOrigins(const BlockOrigins& origins, model::YearlyParameters& parameters);

/// Moves the positions to a month's [1:12] block; `MonthLayout` blocks stand side by side. Throws
/// OverflowError, and OutOfRangeError without a layout.
void ShiftToBlock(const BlockOrigins& origins, std::int16_t month,
                  model::YearlyParameters& parameters);

} // namespace orrery::generate
