#pragma once

#include "exchange/ics/plugin/owned.h"

namespace orrery::exchange {

/// The year of birth, if the program that made the event says it; else 0. `start` is the first day
/// of the event.
int BirthYearOf(icalcomponent* event, const icaltimetype& start);

} // namespace orrery::exchange
