#pragma once

#include "holidays/holiday_rule.h"
#include "holidays/language/holiday_choice.h"
#include "model/cell_ref.h"

#include <cstdint>
#include <string>

namespace orrery::model {

/// The parameters that both calendars have; fields are spelled like their keys.
struct CalendarParameters {
    bool Output = false;
    std::string SheetName;
    std::int16_t FirstDayOfWeek = 0;   ///< 0 Sunday, 1 Monday
    std::int32_t ColIntervalOfDay = 1; ///< [1:36]
    std::int32_t RowIntervalOfDay = 1; ///< [1:10000]
    CellPosition FirstCellOfDay;
    bool OutWeekday = false;
    CellPosition FirstCellOfWeekday;
    std::int16_t WeekdayName = 0; ///< index of the weekday-name list
    bool OutMonth = false;
    CellPosition FirstCellOfMonth;
    std::int16_t MonthName = 0; ///< index of the month-name list
    bool OutYear = false;
    CellPosition FirstCellOfYear;
    bool OutHoliday = false;
    CellPosition FirstCellOfHoliday;
    std::int16_t MultiHolidays = 0; ///< 0 overwrite, 1 next row, 2 next column
    holidays::HolidayList Holidays;
    holidays::HolidayChoice ShownHolidays; ///< which of them are shown, and how
    friend bool operator==(const CalendarParameters&, const CalendarParameters&) = default;
};

/// How a month is written to its own sheet.
struct MonthlyParameters : CalendarParameters {
    friend bool operator==(const MonthlyParameters&, const MonthlyParameters&) = default;
};

/// How twelve months are written to one sheet, as a grid of months.
struct YearlyParameters : CalendarParameters {
    std::int16_t MonthLayout = 3; ///< months side by side [1:12]
    std::int32_t ColIntervalOfMonth = 8;
    std::int32_t RowIntervalOfMonth = 9;
    friend bool operator==(const YearlyParameters&, const YearlyParameters&) = default;
};

/// A template's two sets.
struct ParameterSets {
    MonthlyParameters Monthly;
    YearlyParameters Yearly;
    friend bool operator==(const ParameterSets&, const ParameterSets&) = default;
};

/// The default sets of the settings file, each with its holiday file.
struct DefaultParameters {
    MonthlyParameters Monthly;
    std::string MonthlyHolidayFile;
    YearlyParameters Yearly;
    std::string YearlyHolidayFile;
};

/// The working sets of a template before its parameter file is read: a copy of the defaults, except
/// that the monthly `RowIntervalOfDay` gets the row of the default first day.
ParameterSets CopyDefaults(const DefaultParameters& defaults);

} // namespace orrery::model
