#pragma once

#include "holidays/date.h"
#include "holidays/language/rule.h"

#include <string>
#include <vector>

namespace orrery::exchange {

/// A day for a calendar program.
struct IcsHoliday {
    holidays::Date date;
    std::string name;   ///< UTF-8
    std::string source; ///< the holiday file without its folder: holidays of a name differ by it
    holidays::Category category = holidays::Category::Public;
};

/// The days, in any order, as an iCalendar file (RFC 5545): an event for each, one for days in a
/// row of one name and source. An event keeps its UID as long as its source, name and first day
/// stay, so that a program that imports the file again replaces it; the same days give the same
/// bytes.
std::string IcsText(const std::string& calendarName, std::vector<IcsHoliday> days);

} // namespace orrery::exchange
