#pragma once

#include "holidays/calendars/zone.h"

namespace orrery::holidays::calendars {

/// The moment of a phase, within 20 s from 1900 to 2100. Phases are counted in quarters from the
/// new moon of 6 January 2000: 0 is that one, 1 the first quarter after it, 4 the next new moon.
JulianDay MoonPhase(int quarters);

/// The moment of a new moon from its largest terms alone, five times faster than `MoonPhase` and
/// within `kNewMoonRoughness` days of it.
JulianDay RoughNewMoon(int quarters);
inline constexpr double kNewMoonRoughness = 0.006;

/// The last new moon whose mean moment is not after a moment, counted as `MoonPhase` does. The
/// real one differs from the mean one by up to 14 hours.
int NewMoonBefore(JulianDay moment);

} // namespace orrery::holidays::calendars
