#include "holidays/language/own_day.h"

#include "holidays/date.h"
#include "holidays/language/rule_words.h"
#include "util/text.h"

#include <array>
#include <cstdio>
#include <utility>

namespace orrery::holidays {
namespace {

using OwnKind = OwnDay::Kind;

constexpr int kFebruary = 2;
constexpr int kLeapDay = 29;
constexpr int kHundred = 100; ///< a date code is the month times it, and the day
constexpr int kLastOrdinal = 5;
constexpr int kMostYear = 9999;
constexpr int kMostRangeDays = 366;
/// The day before a leap day. Counted from there, it is 1 March in other years.
constexpr PlainDay kBeforeLeapDay{228, kFixedDay};

template <typename... Numbers> std::string Format(const char* pattern, Numbers... numbers)
{
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), pattern, numbers...);
    return text.data();
}

bool HasDate(const OwnDay& day)
{
    return day.kind == OwnKind::OneDate || day.kind == OwnKind::Range;
}

bool IsYear(std::optional<int> year)
{
    return year && *year >= 1 && *year <= kMostYear;
}

/// The days of a month, of any year or of one.
int DaysOf(int month, std::optional<int> year)
{
    const auto narrow = static_cast<std::int16_t>(month);
    if (year)
        return DaysInMonth(static_cast<std::int16_t>(*year), narrow);
    return month == kFebruary ? kLeapDay : TableDaysInMonth(narrow);
}

std::optional<std::string> ProblemOf(const MonthDay& day, std::optional<int> year)
{
    if (day.day >= 1 && day.day <= DaysOf(day.month, year))
        return std::nullopt;
    const std::string month(MonthInWords(day.month));
    return month + (year ? ' ' + std::to_string(*year) : "") + " has no day " +
           std::to_string(day.day) + '.';
}

Date DateOf(int year, const MonthDay& day)
{
    return MakeDate(static_cast<std::int16_t>(year), static_cast<std::int16_t>(day.month),
                    static_cast<std::int16_t>(day.day));
}

std::optional<std::string> ProblemOfRange(const OwnDay& day)
{
    if (!IsYear(day.lastYear))
        return "Type the year of the last day, such as 2027.";
    if (auto problem = ProblemOf(day.lastDay, day.lastYear))
        return problem;
    const auto days = (DateOf(day.lastYear, day.lastDay) - DateOf(*day.year, day.day)).count() + 1;
    if (days < 1)
        return "The last day is before the first one.";
    if (days > kMostRangeDays)
        return "These are more than 366 days.";
    return std::nullopt;
}

std::string DateText(int year, const MonthDay& day)
{
    return Format("%04d%02d%02d", year, day.month, day.day);
}

/// "20270514,DATE,Tournament".
std::string DateLine(const OwnDay& day)
{
    std::string line = DateText(*day.year, day.day);
    if (day.kind == OwnKind::Range)
        line += '-' + DateText(day.lastYear, day.lastDay);
    return line + ",DATE," + day.name;
}

bool IsLeapDay(const MonthDay& day)
{
    return day == MonthDay{kFebruary, kLeapDay};
}

/// The day of every year, or the birthday, of a rule without a name.
std::optional<OwnDay> DayOfEveryYear(const RuleDay& when)
{
    const auto* const plain = std::get_if<PlainDay>(&when.kind);
    OwnDay day;
    if (plain != nullptr && *plain == kBeforeLeapDay && when.shift == 1) {
        day.day = {kFebruary, kLeapDay};
        return day;
    }
    if (plain == nullptr || when.shift != 0 || plain->kind > kLastWeekday || plain->dateCode < 0)
        return std::nullopt;
    day.day = {plain->dateCode / kHundred, plain->dateCode % kHundred};
    if (day.day.month < 1 || day.day.day < 1)
        return std::nullopt;
    if (plain->kind != kFixedDay) {
        day.kind = OwnKind::Weekday;
        day.weekday = plain->kind;
        day.ordinal = std::exchange(day.day.day, 1);
    }
    return day.ordinal > kLastOrdinal ? std::nullopt : std::optional(day);
}

MonthDay MonthDayOf(const std::chrono::year_month_day& date)
{
    return {static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day()))};
}

std::optional<OwnDay> DayOfDates(const ListedDates& dates)
{
    if (dates.ranges.size() != 1)
        return std::nullopt;
    const std::chrono::year_month_day first(dates.ranges.front().first);
    const std::chrono::year_month_day last(dates.ranges.front().second);
    OwnDay day;
    day.kind = first == last ? OwnKind::OneDate : OwnKind::Range;
    day.day = MonthDayOf(first);
    day.year = static_cast<int>(first.year());
    if (first != last) {
        day.lastDay = MonthDayOf(last);
        day.lastYear = static_cast<int>(last.year());
    }
    return day;
}

} // namespace

std::optional<std::string> ProblemOf(const OwnDay& day)
{
    if (util::Trim(day.name).empty())
        return "Type the name of the day.";
    if (day.kind == OwnKind::Weekday)
        return std::nullopt;
    if (HasDate(day) && !IsYear(day.year))
        return "Type the year, such as 2027.";
    if (day.kind == OwnKind::Birthday && day.year && !IsYear(day.year))
        return "Type the year of birth, such as 1984, or leave it empty.";
    if (auto problem = ProblemOf(day.day, HasDate(day) ? day.year : std::nullopt))
        return problem;
    if (day.kind == OwnKind::Birthday && day.year && IsLeapDay(day.day) &&
        DaysOf(kFebruary, day.year) < kLeapDay)
        return ProblemOf(day.day, day.year);
    return day.kind == OwnKind::Range ? ProblemOfRange(day) : std::nullopt;
}

std::vector<ListEntry> EntriesOf(const OwnDay& day)
{
    if (HasDate(day))
        return {DateLine(day)};
    const int place = day.kind == OwnKind::Weekday ? day.ordinal : day.day.day;
    const std::int16_t kind = day.kind == OwnKind::Weekday ? day.weekday : kFixedDay;
    std::vector<ListEntry> entries;
    if (kind == kFixedDay && IsLeapDay(day.day))
        entries.emplace_back("0228,DAY +1," + day.name);
    else
        entries.emplace_back(HolidayDef{static_cast<std::int16_t>(day.day.month * kHundred + place),
                                        kind, day.name});
    if (day.kind == OwnKind::Birthday && day.year)
        entries.emplace_back("> born " + std::to_string(*day.year));
    return entries;
}

std::optional<OwnDay> OwnDayOf(const Rule& rule)
{
    Refinements more = rule.refinements;
    const auto born = std::exchange(more.born, std::nullopt);
    if (more != Refinements{})
        return std::nullopt;
    const auto* const dates = std::get_if<ListedDates>(&rule.when.kind);
    auto day =
        dates != nullptr && rule.when.shift == 0 ? DayOfDates(*dates) : DayOfEveryYear(rule.when);
    if (!day || (born && day->kind != OwnKind::EveryYear))
        return std::nullopt;
    if (born) {
        day->kind = OwnKind::Birthday;
        day->year = born;
    }
    day->name = rule.name;
    return day;
}

} // namespace orrery::holidays
