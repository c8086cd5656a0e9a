#pragma once

#include "holidays/calendars/calendar_year.h"

namespace orrery::holidays::calendars {

/// A year of the tabular Islamic calendar: cycles of 30 years with 11 leap years, 2, 5, 7, 10, 13,
/// 16, 18, 21, 24, 26 and 29; year 1 began on 16 July 622 of the Julian calendar.
CalendarYear IslamicCivilYear(int year);

/// A year of the Umm al-Qura calendar of Saudi Arabia: as published for 1318 to 1500 (1900 to
/// 2077), by the calendar's rule until 1525, and tabular outside.
CalendarYear UmmAlQuraYear(int year);

} // namespace orrery::holidays::calendars
