#pragma once

#include "holidays/holiday_dates.h"
#include "holidays/language/holiday_choice.h"
#include "holidays/language/rule_set.h"

#include <string>
#include <vector>

namespace orrery::holidays {

struct Holiday {
    Date date;
    std::string name;
    Category category = Category::Public;
    std::size_t rule = 0; ///< index among all rules of the set
    bool isSubstitute = false;
    bool isEstimated = false; ///< computed for a calendar whose days are announced
};

/// Whether a rule holds in a region; without one, in the whole country.
bool IsInRegion(const Refinements& refinements, const std::string& region);

/// The name of a rule in a language, or its own name if it has none there.
const std::string& NameOf(const Rule& rule, const std::string& language);

/// The holidays of a year [1:9999], by date, equal dates in the order of the rules. The years
/// before and after count too: 31 December may be the substitute of 1 January. The days of one file
/// do not move those of another.
std::vector<Holiday> HolidaysOf(const RuleSet& set, int year, const HolidayChoice& choice);

/// Fills `out` with the list's dates in that year, as `ComputeHolidayDates` does for a list without
/// extra lines; with them, with those that the choice shows, as many as there is room for.
void FillHolidayDates(std::int16_t year, const HolidayList& list, const HolidayChoice& choice,
                      Date easter, HolidayDateList& out);

} // namespace orrery::holidays
