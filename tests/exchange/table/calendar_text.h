#pragma once

#include "exchange/event.h"

#include <cstdio>
#include <string>
#include <vector>

namespace orrery::exchange::sample {

/// "2027-05-01".
inline std::string TextOf(holidays::Date date)
{
    const std::chrono::year_month_day day(date);
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u", static_cast<int>(day.year()),
                  static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()));
    return text;
}

/// "2027-05-01 May Day" or "2027-05-14..2027-05-17 Fair" for each event.
inline std::vector<std::string> EventsOf(const Calendar& calendar)
{
    std::vector<std::string> events;
    for (const Event& event : calendar.events) {
        std::string text;
        for (const auto& [first, last] : event.days)
            text += TextOf(first) + (last == first ? "" : ".." + TextOf(last)) + ' ';
        events.push_back(text + event.name);
    }
    return events;
}

/// "3: The name is missing." for each line that is passed over.
inline std::vector<std::string> PassedOverOf(const Calendar& calendar)
{
    std::vector<std::string> lines;
    for (const PassedOver& line : calendar.passedOver)
        lines.push_back(std::to_string(line.line) + ": " + line.reason);
    return lines;
}

} // namespace orrery::exchange::sample
