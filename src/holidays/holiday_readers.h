#pragma once

#include "holidays/holiday_rule.h"

#include <filesystem>

namespace orrery::holidays {

/// Which calendar of a template: 1 monthly, 2 yearly.
enum class CalendarKind : std::int16_t { Monthly = 1, Yearly = 2 };

/// Replaces the list by the rules of a holiday file. A file that cannot be read, which one beyond
/// `util::kMostText` never is, leaves it empty.
void ReadHolidayFile(const std::filesystem::path& path, HolidayList& list);

/// Replaces the list by the rules of one section of a template's parameter file.
void ReadTemplateHolidays(CalendarKind calendar, const std::filesystem::path& path,
                          HolidayList& list);

} // namespace orrery::holidays
