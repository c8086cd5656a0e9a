#pragma once

#include "exchange/ics/plugin/clock_time.h"

#include <map>
#include <string>
#include <string_view>

namespace orrery::exchange {

/// The time zones of a file.
class TimeZones {
public:
    /// Takes a VTIMEZONE. False if it is not understood, if its changes are no yearly ones, or if
    /// there are 100 already.
    bool Add(const std::string& text);
    /// Null if the name is unknown.
    icaltimezone* Find(std::string_view name) const;

private:
    std::map<std::string, IcalOwned<icaltimezone>, std::less<>> zones_;
};

/// A time of a property, such as DTSTART, and the zone in which it is written.
struct ZonedTime {
    icaltimetype time{};
    icaltimezone* zone = nullptr; ///< none: the user's own, or unknown
    bool IsUtc() const { return icaltime_is_utc(time) != 0; }
    bool IsDate() const { return time.is_date != 0; }
};

/// A time as the clocks of another time's zone show it. Where a zone is unknown, and behind the
/// year 2500, as it is written.
ClockTime ClockTimeBeside(const ZonedTime& time, const ZonedTime& other);

} // namespace orrery::exchange
