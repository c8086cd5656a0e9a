#pragma once

#include "holidays/calendars/zone.h"

namespace orrery::holidays::calendars {

enum class MoonPhaseName { NewMoon, FirstQuarter, FullMoon, LastQuarter };

/// The date in a Gregorian year on which the sun reaches a longitude, in degrees [0:360): 0 is the
/// March equinox, 90 the June solstice, 180 the September equinox, 270 the December solstice; 15 is
/// the solar term Qingming.
Date SunDate(int gregorianYear, double degrees, const Zone& zone);

/// The dates of a phase in a Gregorian year, 12 or 13.
Dates MoonDates(int gregorianYear, MoonPhaseName phase, const Zone& zone);

} // namespace orrery::holidays::calendars
