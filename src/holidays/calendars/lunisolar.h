#pragma once

#include "holidays/calendars/zone.h"

namespace orrery::holidays::calendars {

/// A year of the Chinese calendar, or of one that has its rules in another zone. It begins in
/// January or February of the Gregorian year of its number. A month begins on the day of the new
/// moon, and the one with the December solstice is month 11. Where 13 months lie from one month 11
/// to the next, the first of them in which the sun enters no new twelfth of its circle is the leap
/// month, and has the number of the month before it.
CalendarYear LunisolarYear(int gregorianYear, const Zone& zone);

} // namespace orrery::holidays::calendars
