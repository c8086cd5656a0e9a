#pragma once

#include "exchange/ics/plugin/owned.h"

#include <cstdint>

namespace orrery::exchange {

/// What a clock and a calendar on the wall show, as seconds since 1970 began on them.
using ClockTime = std::int64_t;
inline constexpr ClockTime kDaySeconds = 86'400;

inline constexpr int kFirstYear = 1;
inline constexpr int kLastYear = 9999;

/// Days since 1 January 1970; they may be in any year.
std::int32_t DayOf(ClockTime time);
std::int32_t FirstDayOfYear(int year);
int YearOf(std::int32_t day);

/// Whether it is a time of the years [1:9999].
bool IsValidTime(const icaltimetype& time);
/// Of a day without a time, its beginning. The time is valid.
ClockTime ClockTimeOf(const icaltimetype& time);
/// The same for libical, in no zone.
icaltimetype IcalTimeOf(ClockTime time, bool isDate);

/// The user's own day at a time in UTC.
std::int32_t LocalDayOf(ClockTime utc);

} // namespace orrery::exchange
