#include "exchange/ics/plugin/recurrence.h"

#include "exchange/ics/plugin/frequent_rule.h"

#include <algorithm>
#include <cstring>

namespace orrery::exchange {
namespace {

bool IsOtherCalendar(const icalrecurrencetype& rule)
{
    return rule.rscale != nullptr && std::strcmp(rule.rscale, "GREGORIAN") != 0;
}

/// Times of the day that change no day: each would be another step.
void DropTimesOfDay(const Repetition& repetition, icalrecurrencetype& rule)
{
    const bool isCounted =
        rule.count > 0 || !IsEmptyList(rule.by_set_pos) || !icaltime_is_null_time(rule.until);
    if (isCounted && !repetition.isDate)
        return;
    rule.by_hour[0] = ICAL_RECURRENCE_ARRAY_MAX;
    rule.by_minute[0] = ICAL_RECURRENCE_ARRAY_MAX;
    rule.by_second[0] = ICAL_RECURRENCE_ARRAY_MAX;
}

/// Days of a month without a month are those of every month; libical takes the start's month alone.
void NameAllMonths(icalrecurrencetype& rule)
{
    constexpr short months = 12;
    if (rule.freq != ICAL_YEARLY_RECURRENCE || IsEmptyList(rule.by_month_day) ||
        !IsEmptyList(rule.by_month) || !IsEmptyList(rule.by_week_no) ||
        !IsEmptyList(rule.by_year_day))
        return;
    for (short month = 1; month <= months; ++month)
        rule.by_month[month - 1] = month;
    rule.by_month[months] = ICAL_RECURRENCE_ARRAY_MAX;
}

/// libical searches up to the rule's end, so the rule ends with the window.
void EndWith(const DayWindow& window, const Repetition& repetition, icalrecurrencetype& rule)
{
    const ClockTime end = (ClockTime{window.last} + 1) * kDaySeconds - 1;
    if (icaltime_is_null_time(rule.until) || ClockTimeOf(rule.until) > end)
        rule.until = IcalTimeOf(end, repetition.isDate);
}

/// Begins in the year before the window where nothing has to be counted from the start.
void SkipToWindow(const DayWindow& window, const Repetition& repetition,
                  icalrecur_iterator* iterator)
{
    const int year = YearOf(window.first) - 1;
    if (repetition.rule.count > 0 || year < 1)
        return;
    const ClockTime begin = ClockTime{FirstDayOfYear(year)} * kDaySeconds +
                            (repetition.start - DayOf(repetition.start) * kDaySeconds);
    if (begin > repetition.start)
        icalrecur_iterator_set_start(iterator, IcalTimeOf(begin, repetition.isDate));
}

} // namespace

RuleResult AddTimes(const Repetition& repetition, const DayWindow& window, Effort& effort,
                    std::vector<ClockTime>& times)
{
    icalrecurrencetype rule = repetition.rule;
    if (IsOtherCalendar(rule) || rule.interval < 1 || rule.count < 0 ||
        (!icaltime_is_null_time(rule.until) && !IsValidTime(rule.until)))
        return RuleResult::NotUnderstood;
    rule.rscale = nullptr;
    if (rule.freq < ICAL_DAILY_RECURRENCE ||
        (rule.freq <= ICAL_WEEKLY_RECURRENCE && IsEmptyList(rule.by_set_pos)))
        return AddFrequentTimes(repetition, window, effort, times);
    if (effort.IsSpent())
        return RuleResult::TooMany;
    DropTimesOfDay(repetition, rule);
    NameAllMonths(rule);
    EndWith(window, repetition, rule);
    const IcalOwned<icalrecur_iterator> iterator(
        icalrecur_iterator_new(rule, IcalTimeOf(repetition.start, repetition.isDate)));
    effort.Look();
    if (!iterator)
        return RuleResult::NotUnderstood;
    SkipToWindow(window, repetition, iterator.get());
    while (effort.Spend() && times.size() < kMostTimes) {
        const icaltimetype next = icalrecur_iterator_next(iterator.get());
        if (icaltime_is_null_time(next) || !IsValidTime(next))
            return RuleResult::Complete;
        const ClockTime time = ClockTimeOf(next);
        if (DayOf(time) > window.last)
            return RuleResult::Complete;
        if (DayOf(time) >= window.first)
            times.push_back(time);
    }
    return RuleResult::TooMany;
}

} // namespace orrery::exchange
