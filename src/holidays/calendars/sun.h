#pragma once

#include "holidays/calendars/zone.h"

namespace orrery::holidays::calendars {

/// The sun's apparent longitude at a moment of dynamical time, in degrees [0:360), within 0.5"
/// from 1900 to 2100.
double SunLongitude(JulianDay dynamicalTime);

/// Which twelfth of its circle the sun is in at a moment: 0 from the March equinox on, 9 from the
/// December solstice on.
int SunTwelfth(JulianDay moment);

/// The moment in a Gregorian year at which the sun's apparent longitude is so many degrees
/// [0:360): 0 is the March equinox, 90 the June solstice.
JulianDay SunMoment(int gregorianYear, double degrees);

/// Likewise from the largest terms alone, thirty times faster and within `kSunRoughness` days.
JulianDay RoughSunMoment(int gregorianYear, double degrees);
inline constexpr double kSunRoughness = 0.015;

} // namespace orrery::holidays::calendars
