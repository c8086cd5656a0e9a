#pragma once

#include "holidays/holiday_rule.h"
#include "holidays/language/rule.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::holidays {

/// A day that a user adds without writing a rule.
struct OwnDay {
    enum class Kind { EveryYear, Birthday, Weekday, OneDate, Range };

    Kind kind = Kind::EveryYear;
    std::string name;
    MonthDay day;             ///< of a weekday the month alone
    std::int16_t weekday = 1; ///< 1 Sunday to 7 Saturday
    int ordinal = 1;          ///< of the weekday in its month: 1 to 4; 5 is the last
    std::optional<int> year;  ///< of a date, and of a birth if it is known
    MonthDay lastDay;         ///< of a range
    int lastYear = 0;
    friend bool operator==(const OwnDay&, const OwnDay&) = default;
};

/// What is wrong with it, as a sentence; nothing if it can be added.
std::optional<std::string> ProblemOf(const OwnDay& day);

/// The lines of a list that express it. Of a birthday an older program shows the name alone.
std::vector<ListEntry> EntriesOf(const OwnDay& day);

/// What a rule would be as such a day; nothing if the rule says more.
std::optional<OwnDay> OwnDayOf(const Rule& rule);

} // namespace orrery::holidays
