#pragma once

#include "holidays/calendars/calendar.h"
#include "holidays/calendars/sky_dates.h"
#include "holidays/date.h"
#include "holidays/holiday_rule.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

/// Holiday rules with everything that the language of holiday files can say of them: kinds beyond
/// those of `HolidayDef`, and refinements.
namespace orrery::holidays {

/// A day of a calendar's year.
struct MonthDay {
    int month = 1; ///< from 1
    int day = 1;   ///< from 1
    friend bool operator==(const MonthDay&, const MonthDay&) = default;
};

// Kinds of rules: where in a year a day is.

/// A fixed date, a weekday of a month, days from Easter: as `HolidayDef` stores them.
struct PlainDay {
    std::int16_t dateCode = 0;
    std::int16_t kind = 0;
    friend bool operator==(const PlainDay&, const PlainDay&) = default;
};

/// A weekday close to a date: "1123,WED BEFORE".
struct NearWeekday {
    enum class Relation { OnOrAfter, After, OnOrBefore, Before, Nearest };
    std::int16_t weekday = 1; ///< 1 Sunday to 7 Saturday
    Relation relation = Relation::OnOrAfter;
    MonthDay day;
    friend bool operator==(const NearWeekday&, const NearWeekday&) = default;
};

/// Days from the Easter Sunday of the Orthodox churches.
struct OrthodoxEasterDay {
    int offset = 0;
    friend bool operator==(const OrthodoxEasterDay&, const OrthodoxEasterDay&) = default;
};

inline constexpr std::size_t kMostListedRanges = 1000; ///< in one rule
inline constexpr int kMostListedDays = 366;            ///< from a first to a last day

/// Dates of certain years, each from a first to a last day.
struct ListedDates {
    std::vector<std::pair<Date, Date>> ranges;
    friend bool operator==(const ListedDates&, const ListedDates&) = default;
};

/// 29 February, in leap years only.
struct LeapDay {
    friend bool operator==(const LeapDay&, const LeapDay&) = default;
};

/// A date of another calendar.
struct CalendarDay {
    calendars::Calendar calendar = calendars::Calendar::Julian;
    MonthDay day;
    friend bool operator==(const CalendarDay&, const CalendarDay&) = default;
};

/// Whose clocks tell which day it is.
struct Place {
    enum class Country { None, China, Japan, Korea, Vietnam };
    Country country = Country::None;
    double hours = 0; ///< east of Greenwich, where there is no country
    friend bool operator==(const Place&, const Place&) = default;
};

/// The day on which the sun reaches a longitude.
struct SolarDay {
    int degrees = 0; ///< [0:359]; 0 is the equinox of March
    Place place;
    friend bool operator==(const SolarDay&, const SolarDay&) = default;
};

/// Every day with a phase of the moon.
struct MoonDay {
    calendars::MoonPhaseName phase = calendars::MoonPhaseName::NewMoon;
    Place place;
    friend bool operator==(const MoonDay&, const MoonDay&) = default;
};

/// A day that is no holiday, between two that are.
struct BetweenHolidays {
    friend bool operator==(const BetweenHolidays&, const BetweenHolidays&) = default;
};

using RuleKind = std::variant<PlainDay, NearWeekday, OrthodoxEasterDay, ListedDates, LeapDay,
                              CalendarDay, SolarDay, MoonDay, BetweenHolidays>;

/// A kind, and how many days later the holiday is.
struct RuleDay {
    RuleKind kind;
    int shift = 0;
    friend bool operator==(const RuleDay&, const RuleDay&) = default;
};

// Refinements.

/// Weekdays as bits: 1 << 1 Sunday to 1 << 7 Saturday.
using WeekdaySet = unsigned;
inline constexpr WeekdaySet kEveryWeekday = 0xFE;
constexpr bool Contains(WeekdaySet set, int weekday)
{
    return (set >> static_cast<unsigned>(weekday) & 1U) != 0;
}

struct YearRange {
    int first = std::numeric_limits<int>::min();
    int last = std::numeric_limits<int>::max();
    bool Contains(int year) const { return first <= year && year <= last; }
    friend bool operator==(const YearRange&, const YearRange&) = default;
};

/// "years 1990-1999 2004-", "years even", "years every 4 from 2008", "not years 2020".
struct YearCondition {
    enum class Cycle { None, Even, Odd, Leap, Every };
    std::vector<YearRange> ranges; ///< none: every year
    Cycle cycle = Cycle::None;
    int every = 1; ///< years of a cycle
    int from = 0;  ///< its first year
    bool isNegated = false;
    bool Holds(int year) const;
    friend bool operator==(const YearCondition&, const YearCondition&) = default;
};

/// "in 2018 on 1111 1112".
struct DatesInYear {
    int year = 0;
    std::vector<MonthDay> days;
    friend bool operator==(const DatesInYear&, const DatesInYear&) = default;
};

/// "if Sat or Sun also next workday from 2014 called Substitute".
struct Substitute {
    /// Where the substitute is, from the holiday.
    struct Target {
        enum class Kind { NextWorkday, NextDay, WeekdayBefore, WeekdayAfter, Days };
        Kind kind = Kind::NextWorkday;
        int value = 0; ///< the weekday, or the number of days
        friend bool operator==(const Target&, const Target&) = default;
    };
    WeekdaySet weekdays = 0;
    bool ifHoliday = false; ///< also where a rule above gives the same day
    bool isMove = false;    ///< the holiday itself moves
    Target target;
    YearRange years;
    std::string name; ///< empty: as the file says
    friend bool operator==(const Substitute&, const Substitute&) = default;
};

enum class Category { Public, Bank, School, Optional, Observance, Half };

struct Refinements {
    std::optional<RuleDay> exact; ///< in place of the rule's own day
    std::vector<YearCondition> years;
    std::vector<DatesInYear> inYears;
    WeekdaySet weekdays = kEveryWeekday;
    int days = 1; ///< [1:366]
    std::optional<Category> category;
    std::vector<std::string> onlyIn; ///< regions, in capitals; none: everywhere
    std::vector<std::string> notIn;
    std::optional<int> born;
    std::vector<std::pair<std::string, std::string>> names; ///< language, in small letters; name
    std::vector<Substitute> substitutes;
    friend bool operator==(const Refinements&, const Refinements&) = default;
};

struct Rule {
    RuleDay when;
    std::string name; ///< as written, blanks included
    Refinements refinements;
    std::size_t line = 0; ///< of its file, counted from 1; 0 is unknown
};

} // namespace orrery::holidays
