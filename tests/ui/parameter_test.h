#pragma once

#include "book/fake_engines.h"
#include "ui/fake_desktop.h"
#include "ui/parameter_form.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace orrery::ui {

inline const model::WeekdayNameList::Names kEnglishDays{
    "Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
inline const model::WeekdayNameList::Names kShortDays{"Sun", "Mon", "Tue", "Wed",
                                                      "Thu", "Fri", "Sat"};
inline const model::MonthNameList::Names kEnglishMonths{
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};
inline const model::MonthNameList::Names kShortMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                      "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

/// Two lists each of weekdays and months.
inline model::NameTables TwoNameLists()
{
    model::NameTables names;
    names.Weekdays.Add(kEnglishDays);
    names.Weekdays.Add(kShortDays);
    names.Months.Add(kEnglishMonths);
    names.Months.Add(kShortMonths);
    return names;
}

/// Sets that pass every check and in which every field differs from its initial value.
inline model::ParameterSets ValidSets()
{
    model::ParameterSets sets;
    model::CalendarParameters& monthly = sets.Monthly;
    monthly.Output = true;
    monthly.SheetName = "Sheet2";
    monthly.FirstDayOfWeek = 1;
    monthly.ColIntervalOfDay = 1;
    monthly.RowIntervalOfDay = 5;
    monthly.FirstCellOfDay = {5, 2};
    monthly.OutWeekday = monthly.OutMonth = monthly.OutYear = monthly.OutHoliday = true;
    monthly.FirstCellOfWeekday = {4, 3};
    monthly.WeekdayName = 1;
    monthly.FirstCellOfMonth = {3, 4};
    monthly.MonthName = 1;
    monthly.FirstCellOfYear = {1, 27};
    monthly.FirstCellOfHoliday = {6, 2};
    monthly.MultiHolidays = 2;
    monthly.Holidays.Append({101, 0, " New Year"});
    monthly.Holidays.Append({1225, 0, " Christmas"});

    model::YearlyParameters& yearly = sets.Yearly;
    static_cast<model::CalendarParameters&>(yearly) = monthly;
    yearly.SheetName = "Sheet1";
    yearly.RowIntervalOfDay = 1;
    yearly.MonthLayout = 3;
    yearly.ColIntervalOfMonth = 8;
    yearly.RowIntervalOfMonth = 9;
    return sets;
}

/// A dialog for working sets, with a fake desktop.
class ParameterTest : public testing::Test {
protected:
    /// Opens the dialog; the test may change `working` and `names` before.
    ParameterForm& Open()
    {
        form_.emplace(working, names, app::TemplateLocation{"/t/", "/h/", "Desk.xls"}, engines,
                      desktop);
        return *form_;
    }
    ParameterForm& form() { return *form_; }

    model::NameTables names = TwoNameLists();
    app::WorkingSets working{ValidSets(), true, false, false};
    fake::Engines engines;
    FakeDesktop desktop;

private:
    std::optional<ParameterForm> form_;
};

} // namespace orrery::ui
