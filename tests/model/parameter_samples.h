#pragma once

#include "model/parameter_file.h"

#include <gtest/gtest.h>

namespace orrery::model::samples {

inline constexpr const char* kWeekdays = "Sun,Mon,Tue,Wed,Thu,Fri,Sat";
inline constexpr const char* kMonths = "Jan,Feb,Mar,Apr,May,Jun,Jul,Aug,Sep,Oct,Nov,Dec";

inline NameTables SomeNames()
{
    NameTables names;
    names.Weekdays.Add(*SplitNames<7>("S,M,T,W,T,F,S"));
    names.Weekdays.Add(*SplitNames<7>(kWeekdays));
    names.Months.Add(*SplitNames<12>("1,2,3,4,5,6,7,8,9,10,11,12"));
    names.Months.Add(*SplitNames<12>(kMonths));
    return names;
}

inline void SetCommon(CalendarParameters& set)
{
    set.Output = true;
    set.FirstCellOfDay = {5, 2};
    set.FirstCellOfWeekday = {4, 2};
    set.FirstCellOfMonth = {3, 2};
    set.FirstCellOfYear = {1, 2};
    set.FirstCellOfHoliday = {6, 2};
    set.RowIntervalOfDay = 5;
    set.Holidays.Append({1231, 0, "default"});
}

inline ParameterSets SomeDefaults()
{
    ParameterSets sets;
    SetCommon(sets.Monthly);
    SetCommon(sets.Yearly);
    sets.Monthly.SheetName = "Sheet2";
    sets.Yearly.SheetName = "Sheet1";
    return sets;
}

/// Sets in which every field differs from the defaults.
inline ParameterSets FullSets()
{
    ParameterSets sets;
    MonthlyParameters& monthly = sets.Monthly;
    monthly.SheetName = "Month \xC3\xA4";
    monthly.FirstDayOfWeek = 1;
    monthly.ColIntervalOfDay = 2;
    monthly.RowIntervalOfDay = 3;
    monthly.FirstCellOfDay = {10, 1};
    monthly.OutWeekday = monthly.OutMonth = monthly.OutYear = monthly.OutHoliday = true;
    monthly.FirstCellOfWeekday = {11, 26};
    monthly.WeekdayName = 1;
    monthly.FirstCellOfMonth = {12, 27};
    monthly.MonthName = 1;
    monthly.FirstCellOfYear = {13, 256};
    monthly.FirstCellOfHoliday = {65536, 4};
    monthly.MultiHolidays = 2;
    monthly.Holidays.Append({704, 0, " Independence Day"});
    monthly.Holidays.Append({5, 7, "x, y"});
    monthly.Holidays.Append({-2, 8, "Good Friday"});
    static_cast<CalendarParameters&>(sets.Yearly) = monthly;
    sets.Yearly.Holidays.Clear();
    for (std::int16_t kind = 1; kind <= 6; ++kind)
        sets.Yearly.Holidays.Append({1250, kind, std::to_string(kind)});
    sets.Yearly.SheetName = "Year";
    sets.Yearly.MonthLayout = 4;
    sets.Yearly.ColIntervalOfMonth = 9;
    sets.Yearly.RowIntervalOfMonth = 10;
    return sets;
}

inline void ExpectSets(const ParameterSets& sets, const ParameterSets& expected)
{
    EXPECT_TRUE(sets.Monthly == expected.Monthly);
    EXPECT_TRUE(sets.Yearly == expected.Yearly);
}

} // namespace orrery::model::samples
