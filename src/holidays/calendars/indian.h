#pragma once

#include "holidays/calendars/calendar_year.h"

namespace orrery::holidays::calendars {

/// A year of India's national calendar, counted in the Saka era: it begins on 22 March, in
/// Gregorian leap years on 21 March. Month 1 is Chaitra.
CalendarYear IndianYear(int year);

} // namespace orrery::holidays::calendars
