#pragma once

#include "holidays/date.h"
#include "holidays/language/rule.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// Calendars of other programs: their events as values, and holiday rules made of them.
namespace orrery::exchange {

/// When an event comes again: every year, between two years.
struct Yearly {
    holidays::RuleDay day;     ///< a fixed date, a weekday of a month, 29 February
    holidays::YearRange years; ///< from its first to its last
    friend bool operator==(const Yearly&, const Yearly&) = default;
};

/// An event of a calendar, on whole days.
struct Event {
    std::string name; ///< UTF-8, one line, trimmed, never empty
    /// From a first to a last day, in order. Of an event that comes again, those in the years that
    /// were asked for.
    std::vector<std::pair<holidays::Date, holidays::Date>> days;
    std::optional<Yearly> yearly; ///< where that gives the same days and more
    std::optional<int> born;      ///< of a birthday, if the year is known
    std::size_t line = 0;         ///< of the file, counted from 1
};

/// What is not taken over, and why.
struct PassedOver {
    std::size_t line = 0; ///< of the file, counted from 1
    std::string reason;   ///< a sentence for the user
};

/// What a file says.
struct Calendar {
    std::vector<Event> events;
    std::vector<PassedOver> passedOver;
};

/// The years for which events that come again have their days computed, [1:9999].
struct Years {
    int first = 0;
    int last = 0;
};

} // namespace orrery::exchange
