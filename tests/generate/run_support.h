#pragma once

#include "book/fake_spreadsheet.h"
#include "generate/context.h"
#include "holidays/holiday_rule.h"
#include "model/name_lists.h"
#include "model/parameters.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace orrery::fake {

/// Collects events and runs a test's own action on them.
class ListObserver : public generate::RunObserver {
public:
    void Report(const std::string& text) override { reports.push_back(text); }
    void Warn(const std::string& text) override { warnings.push_back(text); }
    void ShowProblem(const generate::RequestProblem& problem) override
    {
        problems.push_back(problem.message);
    }
    void SetHourglass(bool on) override { hourglass = on; }
    void MonthDone(generate::CalendarKind kind, std::int16_t month) override
    {
        if (monthDone)
            monthDone(kind, month);
    }
    void Saving() override
    {
        if (saving)
            saving();
    }
    void Printing(const std::string& path) override { printed.push_back(path); }

    std::vector<std::string> reports;
    std::vector<std::string> warnings;
    std::vector<std::string> problems;
    std::vector<std::string> printed;
    bool hourglass = false;
    std::function<void(generate::CalendarKind, std::int16_t month)> monthDone;
    std::function<void()> saving;
};

/// List 0 is English, list 1 "M1" to "M12" and "W0" (Sunday) to "W6".
inline model::NameTables TestNames()
{
    model::NameTables names;
    names.Months.Store(0, {"January", "February", "March", "April", "May", "June", "July", "August",
                           "September", "October", "November", "December"});
    names.Months.Store(1,
                       {"M1", "M2", "M3", "M4", "M5", "M6", "M7", "M8", "M9", "M10", "M11", "M12"});
    names.Weekdays.Store(
        0, {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"});
    names.Weekdays.Store(1, {"W0", "W1", "W2", "W3", "W4", "W5", "W6"});
    return names;
}

/// Writes only days, from B5 on, one column and two rows apart.
inline model::MonthlyParameters DaysOnly()
{
    model::MonthlyParameters set;
    set.Output = true;
    set.SheetName = "Sheet2";
    set.ColIntervalOfDay = 1;
    set.RowIntervalOfDay = 2;
    set.FirstCellOfDay = {5, 2};
    set.FirstCellOfWeekday = {4, 2};
    set.FirstCellOfMonth = {3, 2};
    set.FirstCellOfYear = {1, 2};
    set.FirstCellOfHoliday = {6, 2};
    return set;
}

/// The same on one sheet, with three months side by side.
inline model::YearlyParameters YearOfDays()
{
    model::YearlyParameters set;
    static_cast<model::CalendarParameters&>(set) = DaysOnly();
    set.SheetName = "Sheet1";
    set.MonthLayout = 3;
    set.ColIntervalOfMonth = 9;
    set.RowIntervalOfMonth = 20;
    return set;
}

inline holidays::HolidayList FixedDays(const std::vector<std::pair<int, std::string>>& days)
{
    holidays::HolidayList list;
    for (const auto& [code, name] : days)
        list.Append({static_cast<std::int16_t>(code), holidays::kFixedDay, name});
    return list;
}

} // namespace orrery::fake
