#include "generate/block_cells.h"

#include "util/checked.h"
#include "util/error.h"

namespace orrery::generate {
namespace {

using model::CellPosition;
using util::Add32;
using util::Multiply32;

constexpr std::int16_t kSunday = 1;

} // namespace

bool WeeksBeginOnMonday(const model::CalendarParameters& parameters)
{
    return parameters.FirstDayOfWeek != 0;
}

GridPosition PlaceInGrid(std::int16_t day, std::int16_t firstWeekday, bool mondayFirst)
{
    const int offset = day + firstWeekday - 2;
    int week = offset / kDaysPerWeek;
    int column = offset % kDaysPerWeek;
    if (mondayFirst) {
        if (column != 0) {
            --column;
            if (firstWeekday == kSunday)
                ++week;
        }
        else {
            column = kDaysPerWeek - 1;
            if (firstWeekday != kSunday)
                --week;
        }
    }
    return {static_cast<std::int16_t>(week), static_cast<std::int16_t>(column)};
}

CellPosition CellInGrid(CellPosition origin, GridPosition place,
                        const model::CalendarParameters& parameters)
{
    return {Add32(origin.row, Multiply32(place.week, parameters.RowIntervalOfDay)),
            Add32(origin.column, Multiply32(place.column, parameters.ColIntervalOfDay))};
}

BlockOrigins OriginsOf(const model::YearlyParameters& parameters)
{
    return {parameters.FirstCellOfDay, parameters.FirstCellOfWeekday, parameters.FirstCellOfMonth,
            parameters.FirstCellOfHoliday};
}

void RestoreOrigins(const BlockOrigins& origins, model::YearlyParameters& parameters)
{
    parameters.FirstCellOfDay = origins.day;
    parameters.FirstCellOfWeekday = origins.weekday;
    parameters.FirstCellOfMonth = origins.month;
    parameters.FirstCellOfHoliday = origins.holiday;
}

void ShiftToBlock(const BlockOrigins& origins, std::int16_t month,
                  model::YearlyParameters& parameters)
{
    if (parameters.MonthLayout < 1)
        throw util::OutOfRangeError();
    const std::int32_t across = (month - 1) % parameters.MonthLayout;
    const std::int32_t down = (month - 1) / parameters.MonthLayout;
    const std::int32_t rows = Multiply32(down, parameters.RowIntervalOfMonth);
    const std::int32_t columns = Multiply32(across, parameters.ColIntervalOfMonth);
    const auto shifted = [&](CellPosition origin) {
        return CellPosition{Add32(origin.row, rows), Add32(origin.column, columns)};
    };
    parameters.FirstCellOfDay = shifted(origins.day);
    parameters.FirstCellOfWeekday = shifted(origins.weekday);
    parameters.FirstCellOfMonth = shifted(origins.month);
    parameters.FirstCellOfHoliday = shifted(origins.holiday);
}

} // namespace orrery::generate
