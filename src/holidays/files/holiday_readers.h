#pragma once

#include "holidays/error.h"
#include "holidays/holiday_rule.h"

#include <cstdint>
#include <filesystem>
#include <vector>

namespace orrery::holidays {

/// The calendars of a template.
enum class CalendarKind : std::int16_t { Monthly = 1, Yearly = 2 };

/// Replaces the list with the rules of a holiday file and the lines that refine them. The list is
/// empty if the file cannot be read or is larger than `util::kMaxTextFileSize`. Returns the lines
/// that look like rules but are not read; every other line that is not a rule is a comment.
std::vector<LineProblem> ReadHolidayFile(const std::filesystem::path& path, HolidayList& list);

/// Replaces the list with the rules of one section of a template's parameter file. Returns the
/// lines of rules that are not read.
std::vector<LineProblem> ReadTemplateHolidays(CalendarKind calendar,
                                              const std::filesystem::path& path, HolidayList& list);

} // namespace orrery::holidays
