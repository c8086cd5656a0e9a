#pragma once

#include "holidays/error.h"
#include "holidays/holiday_rule.h"
#include "holidays/language/rule_set.h"

#include <cstdint>
#include <filesystem>
#include <vector>

namespace orrery::holidays {

/// The calendars of a template.
enum class CalendarKind : std::int16_t { Monthly = 1, Yearly = 2 };

/// What a file says of holidays.
struct HolidayFile {
    HolidayList list;
    RuleSet rules;                     ///< of the list; lines are those of the file, counted from 1
    std::vector<LineProblem> problems; ///< lines that look like rules but are not read
};

/// The same as below, with the rules of the language.
HolidayFile LoadHolidayFile(const std::filesystem::path& path);
HolidayFile LoadTemplateHolidays(CalendarKind calendar, const std::filesystem::path& path);

/// Replaces the list with the rules of a holiday file and the lines that refine them. The list is
/// empty if the file cannot be read or is larger than `util::kMaxTextFileSize`. Returns the lines
/// that look like rules but are not read; every other line that is not a rule is a comment.
std::vector<LineProblem> ReadHolidayFile(const std::filesystem::path& path, HolidayList& list);

/// Replaces the list with the rules of one section of a template's parameter file. Returns the
/// lines of rules that are not read.
std::vector<LineProblem> ReadTemplateHolidays(CalendarKind calendar,
                                              const std::filesystem::path& path, HolidayList& list);

} // namespace orrery::holidays
