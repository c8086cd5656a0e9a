#pragma once

#include "holidays/calendars/calendar_year.h"

namespace orrery::holidays::calendars {

/// A year of the Hebrew calendar, which begins with Tishri. Its months are counted from Nisan, so
/// that the first one is 7. A leap year has Adar I, the leap month 12, before Adar.
CalendarYear HebrewYear(int year);

} // namespace orrery::holidays::calendars
