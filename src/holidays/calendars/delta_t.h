#pragma once

#include "holidays/calendars/zone.h"

namespace orrery::holidays::calendars {

/// How far dynamical time is ahead of universal time at a moment of either, in days.
double DeltaT(JulianDay moment);

} // namespace orrery::holidays::calendars
