#pragma once

#include "holidays/calendars/calendar_year.h"

#include <span>

namespace orrery::holidays::calendars {

/// A moment as Julian days; of universal time unless its name says dynamical time.
using JulianDay = double;

/// From this date on a zone is so far east of Greenwich.
struct ZoneChange {
    Date from;
    int seconds;
};

/// Which day it is somewhere: a time east of Greenwich, which may have changed in history.
class Zone {
public:
    /// The changes are in their order and outlive the zone; before the first one `seconds` holds.
    constexpr explicit Zone(int seconds, std::span<const ZoneChange> changes = {})
        : seconds_(seconds), changes_(changes)
    {
    }

    /// The local date at a moment.
    Date DateAt(JulianDay moment) const;
    /// The moment at which a local date begins.
    JulianDay StartOf(Date date) const;

private:
    int SecondsOn(Date date) const;

    int seconds_;
    std::span<const ZoneChange> changes_;
};

/// A zone without changes, hours east of Greenwich.
constexpr Zone ZoneOfHours(double hours)
{
    return Zone(static_cast<int>(hours * 3600));
}

// The times that the calendars of these countries went by. They are those of the clocks but for the
// years before 1912, and in Vietnam before 1968.

/// UTC+8, from 1912 to 1928 Beijing's mean time.
const Zone& China();
/// UTC+9, from 1954 to 1961 UTC+8:30; as China before 1912.
const Zone& Korea();
/// UTC+7 since 1968, as the North decided in 1967; before that as China.
const Zone& Vietnam();
/// UTC+9.
const Zone& Japan();
const Zone& Greenwich();

} // namespace orrery::holidays::calendars
