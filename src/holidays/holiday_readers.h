#pragma once

#include "holidays/holiday_rule.h"

#include <filesystem>

namespace orrery::holidays {

/// The calendars of a template.
enum class CalendarKind : std::int16_t { Monthly = 1, Yearly = 2 };

/// Replaces the list with the rules of a holiday file. The list is empty if the file cannot be read
/// or is larger than `util::kMaxTextFileSize`.
void ReadHolidayFile(const std::filesystem::path& path, HolidayList& list);

/// Replaces the list with the rules of one section of a template's parameter file.
void ReadTemplateHolidays(CalendarKind calendar, const std::filesystem::path& path,
                          HolidayList& list);

} // namespace orrery::holidays
