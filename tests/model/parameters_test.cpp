#include "model/parameters.h"

#include <gtest/gtest.h>

namespace orrery::model {
namespace {

DefaultParameters SomeDefaults()
{
    DefaultParameters defaults;
    defaults.Monthly.Output = true;
    defaults.Monthly.SheetName = "Sheet2";
    defaults.Monthly.FirstCellOfDay = {9, 2};
    defaults.Monthly.RowIntervalOfDay = 5;
    defaults.Monthly.Holidays.Append({101, 0, "m"});
    defaults.MonthlyHolidayFile = "a.txt";
    defaults.Yearly.SheetName = "Sheet1";
    defaults.Yearly.FirstCellOfDay = {7, 2};
    defaults.Yearly.RowIntervalOfDay = 1;
    defaults.Yearly.MonthLayout = 4;
    defaults.Yearly.Holidays.Append({102, 0, "y"});
    return defaults;
}

TEST(CopyDefaults, CopiesTheYearlySetFieldForField)
{
    const DefaultParameters defaults = SomeDefaults();
    EXPECT_EQ(CopyDefaults(defaults).Yearly, defaults.Yearly);
}

TEST(CopyDefaults, TakesTheMonthlyRowIntervalFromTheFirstDay)
{
    const DefaultParameters defaults = SomeDefaults();
    MonthlyParameters expected = defaults.Monthly;
    expected.RowIntervalOfDay = 9;
    EXPECT_EQ(CopyDefaults(defaults).Monthly, expected);
}

} // namespace
} // namespace orrery::model
