#pragma once

#include "exchange/event.h"

#include <string>
#include <utility>

namespace orrery::exchange::sample {

inline holidays::Date Day(int year, unsigned month, unsigned day)
{
    return std::chrono::sys_days(std::chrono::year(year) / std::chrono::month(month) /
                                 std::chrono::day(day));
}

/// An event on one day or, with another date, until that.
inline Event Dated(std::string name, holidays::Date first, holidays::Date last = {})
{
    Event event;
    event.name = std::move(name);
    event.days = {{first, last == holidays::Date() ? first : last}};
    return event;
}

/// An event of every year; the kind is that of a plain rule.
inline Event EveryYear(std::string name, std::int16_t dateCode, std::int16_t kind = 0,
                       holidays::YearRange years = {})
{
    Event event;
    event.name = std::move(name);
    event.yearly = Yearly{{holidays::PlainDay{dateCode, kind}}, years};
    return event;
}

} // namespace orrery::exchange::sample
