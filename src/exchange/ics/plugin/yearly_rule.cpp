#include "exchange/ics/plugin/yearly_rule.h"

#include <algorithm>
#include <optional>

namespace orrery::exchange {
namespace {

using Kind = YearlyDay::Kind;

constexpr int kWeek = 7;
constexpr int kLastOrdinal = 5;

/// The one value of a list; `absent` if it is empty, nothing if there are more.
std::optional<int> OneOf(const short* list, int absent)
{
    if (IsEmptyList(list))
        return absent;
    return list[1] == ICAL_RECURRENCE_ARRAY_MAX ? std::optional<int>(list[0]) : std::nullopt;
}

bool HasOnlyDates(const icalrecurrencetype& rule)
{
    return rule.freq == ICAL_YEARLY_RECURRENCE && rule.interval == 1 && rule.rscale == nullptr &&
           IsEmptyList(rule.by_year_day) && IsEmptyList(rule.by_week_no) &&
           IsEmptyList(rule.by_hour) && IsEmptyList(rule.by_minute) && IsEmptyList(rule.by_second);
}

YearlyDay DateIn(const icalrecurrencetype& rule, const icaltimetype& start)
{
    YearlyDay yearly;
    const bool isEveryMonth = IsEmptyList(rule.by_month) && !IsEmptyList(rule.by_month_day);
    if (isEveryMonth || !IsEmptyList(rule.by_set_pos) ||
        OneOf(rule.by_month, start.month) != start.month ||
        OneOf(rule.by_month_day, start.day) != start.day)
        return yearly;
    yearly.kind = start.month == 2 && start.day == 29 ? Kind::LeapDay : Kind::Date;
    yearly.month = start.month;
    yearly.day = start.day;
    return yearly;
}

/// The ordinal that days of a month in a row stand for: 8 to 14 are the second week.
int OrdinalOfDays(const short* days)
{
    for (int i = 0; i < kWeek; ++i) {
        if (days[i] != days[0] + i)
            return 0;
    }
    const bool isWeek = days[kWeek] == ICAL_RECURRENCE_ARRAY_MAX && days[0] % kWeek == 1;
    return isWeek && days[0] > 0 && days[0] <= 22 ? days[0] / kWeek + 1 : 0;
}

/// 1 to 4, -1 for the last, 0 for none of them: the ordinal may be said in three ways.
int OrdinalOf(const icalrecurrencetype& rule)
{
    const int inDay = icalrecurrencetype_day_position(rule.by_day[0]);
    const auto inSet = OneOf(rule.by_set_pos, 0);
    const int inDays = IsEmptyList(rule.by_month_day) ? 0 : OrdinalOfDays(rule.by_month_day);
    if (!inSet || (inDays == 0 && !IsEmptyList(rule.by_month_day)))
        return 0;
    const int ways = (inDay != 0 ? 1 : 0) + (*inSet != 0 ? 1 : 0) + (inDays != 0 ? 1 : 0);
    const int ordinal = inDay + *inSet + inDays;
    return ways == 1 && (ordinal == -1 || (ordinal >= 1 && ordinal < kLastOrdinal)) ? ordinal : 0;
}

YearlyDay WeekdayIn(const icalrecurrencetype& rule, const icaltimetype& start)
{
    YearlyDay yearly;
    const int ordinal = OrdinalOf(rule);
    const int weekday = icalrecurrencetype_day_day_of_week(rule.by_day[0]);
    const bool isInWeek = ordinal == -1
                              ? start.day + kWeek > icaltime_days_in_month(start.month, start.year)
                              : (start.day - 1) / kWeek + 1 == ordinal;
    if (ordinal == 0 || !OneOf(rule.by_day, 0) || OneOf(rule.by_month, 0) != start.month ||
        weekday != icaltime_day_of_week(start) || !isInWeek)
        return yearly;
    yearly.kind = Kind::Weekday;
    yearly.month = start.month;
    yearly.weekday = weekday;
    yearly.ordinal = ordinal == -1 ? kLastOrdinal : ordinal;
    return yearly;
}

bool HasYear(const YearlyDay& yearly, int year)
{
    return yearly.kind != Kind::LeapDay || icaltime_is_leap_year(year) != 0;
}

/// The day of a year that has it.
std::int32_t DayIn(const YearlyDay& yearly, int year)
{
    icaltimetype date = icaltime_null_date();
    date.year = year;
    date.month = yearly.month;
    if (yearly.kind != Kind::Weekday) {
        date.day = yearly.day;
        return DayOf(ClockTimeOf(date));
    }
    const int length = icaltime_days_in_month(yearly.month, year);
    date.day = 1;
    const int first = (yearly.weekday - icaltime_day_of_week(date) + kWeek) % kWeek + 1;
    const int ordinal =
        yearly.ordinal == kLastOrdinal ? (length - first) / kWeek + 1 : yearly.ordinal;
    date.day = first + (ordinal - 1) * kWeek;
    return DayOf(ClockTimeOf(date));
}

int LastYearOf(const YearlyDay& yearly, const Repetition& repetition)
{
    const icalrecurrencetype& rule = repetition.rule;
    const bool isEndless = icaltime_is_null_time(rule.until) != 0;
    const ClockTime end = isEndless ? 0 : ClockTimeOf(rule.until);
    const ClockTime inDay = repetition.start - DayOf(repetition.start) * kDaySeconds;
    int last = yearly.firstYear;
    int count = 0;
    for (int year = yearly.firstYear; year <= kLastYear; ++year) {
        if (!HasYear(yearly, year))
            continue;
        if (!isEndless && DayIn(yearly, year) * kDaySeconds + inDay > end)
            return last;
        if (rule.count > 0 && count++ == rule.count)
            return last;
        last = year;
    }
    return kLastYear;
}

} // namespace

YearlyDay YearlyDayOf(const Repetition& repetition)
{
    const icalrecurrencetype& rule = repetition.rule;
    if (!HasOnlyDates(rule) || (icaltime_is_null_time(rule.until) == 0 && !IsValidTime(rule.until)))
        return {};
    const icaltimetype start = IcalTimeOf(repetition.start, true);
    YearlyDay yearly = IsEmptyList(rule.by_day) ? DateIn(rule, start) : WeekdayIn(rule, start);
    if (yearly.kind == Kind::None)
        return yearly;
    yearly.firstYear = start.year;
    yearly.lastYear = LastYearOf(yearly, repetition);
    return yearly;
}

} // namespace orrery::exchange
