#pragma once

#include "holidays/calendars/calendar_year.h"

namespace orrery::holidays::calendars {

/// A year of the Julian calendar: every fourth year is a leap year.
CalendarYear JulianYear(int year);

/// Easter Sunday of the Orthodox churches, who count it by the Julian calendar, in a Gregorian
/// year.
Date OrthodoxEaster(int gregorianYear);

/// A year of the Coptic calendar, which begins at the end of August or in September: twelve months
/// of 30 days, and a thirteenth of 5 or 6. Year 1 began in 284.
CalendarYear CopticYear(int year);

/// A year of the Ethiopic calendar: the months are the Coptic ones, year 1 began in 8.
CalendarYear EthiopicYear(int year);

} // namespace orrery::holidays::calendars
