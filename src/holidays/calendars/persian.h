#pragma once

#include "holidays/calendars/calendar_year.h"

namespace orrery::holidays::calendars {

/// A year of the Persian calendar, month 1 is Farvardin. It begins on the day of the March equinox,
/// or on the next one if the equinox is not before noon of 52.5 degrees east.
CalendarYear PersianYear(int year);

} // namespace orrery::holidays::calendars
