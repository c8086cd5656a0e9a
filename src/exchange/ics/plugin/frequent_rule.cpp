#include "exchange/ics/plugin/frequent_rule.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace orrery::exchange {
namespace {

constexpr ClockTime kMinute = 60;
constexpr ClockTime kHour = 3600;
constexpr ClockTime kNever = std::numeric_limits<ClockTime>::max();

/// Whether a list has a value, or its counterpart from the end, which is negative; an empty list
/// has all.
bool Allows(const short* list, int value, int fromEnd = 0)
{
    if (IsEmptyList(list))
        return true;
    for (; *list != ICAL_RECURRENCE_ARRAY_MAX; ++list) {
        if (*list == value || (fromEnd < 0 && *list == fromEnd))
            return true;
    }
    return false;
}

ClockTime UnitOf(icalrecurrencetype_frequency frequency)
{
    switch (frequency) {
    case ICAL_WEEKLY_RECURRENCE:
    case ICAL_DAILY_RECURRENCE:
        return kDaySeconds;
    case ICAL_HOURLY_RECURRENCE:
        return kHour;
    case ICAL_MINUTELY_RECURRENCE:
        return kMinute;
    default:
        return 1;
    }
}

/// The values of a list, or the one that stands for it if it is empty.
std::vector<ClockTime> ValuesOf(const short* list, ClockTime absent)
{
    return IsEmptyList(list) ? std::vector<ClockTime>{absent}
                             : std::vector<ClockTime>(list, list + LengthOfList(list));
}

/// A rule by weeks, days, hours, minutes or seconds.
class FrequentRule {
public:
    FrequentRule(const Repetition& repetition, Effort& effort)
        : rule_(repetition.rule), effort_(effort), start_(repetition.start)
    {
        unit_ = UnitOf(rule_.freq);
        step_ = IsWeekly() ? unit_ : unit_ * rule_.interval;
        // Hours that are listed with minutes begin with the hour.
        anchor_ = IsExpanded() ? start_ - (start_ % unit_ + unit_) % unit_ : start_;
        end_ = icaltime_is_null_time(rule_.until) ? kNever : ClockTimeOf(rule_.until);
    }

    RuleResult AddTo(const DayWindow& window, std::vector<ClockTime>& times);

private:
    bool IsWeekly() const { return rule_.freq == ICAL_WEEKLY_RECURRENCE; }
    bool IsExpanded() const
    {
        return (unit_ > 1 && !IsEmptyList(rule_.by_second)) ||
               (unit_ > kMinute && !IsEmptyList(rule_.by_minute)) ||
               (unit_ > kHour && !IsEmptyList(rule_.by_hour));
    }
    bool HasLists() const
    {
        return IsWeekly() || !IsEmptyList(rule_.by_month) || !IsEmptyList(rule_.by_day) ||
               !IsEmptyList(rule_.by_month_day) || !IsEmptyList(rule_.by_year_day) ||
               !IsEmptyList(rule_.by_hour) || !IsEmptyList(rule_.by_minute) ||
               !IsEmptyList(rule_.by_second);
    }
    bool AllowsWeek(std::int32_t day) const;
    bool AllowsDay(std::int32_t day) const;
    ClockTime FirstTimeIn(ClockTime step) const;
    ClockTime NextStep(ClockTime time) const;
    ClockTime NextAllowed(ClockTime time) const;
    std::optional<ClockTime> FindInDay(ClockTime from, std::int32_t day);
    std::int64_t TimesIn(ClockTime step) const;
    RuleResult FindEnd(const DayWindow& window);

    const icalrecurrencetype& rule_;
    Effort& effort_;
    ClockTime start_;
    ClockTime unit_ = 1;
    ClockTime step_ = 1;
    ClockTime anchor_ = 0; ///< a step
    ClockTime end_ = kNever;
};

/// Whether a day is in a week of the rule, and if no weekdays are listed, on the start's.
bool FrequentRule::AllowsWeek(std::int32_t day) const
{
    constexpr std::int32_t week = 7;
    constexpr std::int32_t sunday = 3; // 4 January 1970, days from the 1st
    const std::int32_t weekStart = sunday + rule_.week_start - 1;
    const auto weekOf = [&](std::int32_t one) {
        const std::int32_t days = one - weekStart;
        return days / week - (days % week < 0 ? 1 : 0);
    };
    const std::int32_t start = DayOf(start_);
    const bool isOnWeekday = !IsEmptyList(rule_.by_day) || (day - start) % week == 0;
    return isOnWeekday && (weekOf(day) - weekOf(start)) % rule_.interval == 0;
}

bool FrequentRule::AllowsDay(std::int32_t day) const
{
    const icaltimetype date = IcalTimeOf(day * kDaySeconds, true);
    const int yearDay = day - FirstDayOfYear(date.year) + 1;
    const int yearLength = icaltime_days_in_year(date.year);
    const int monthLength = icaltime_days_in_month(date.month, date.year);
    return Allows(rule_.by_month, date.month) &&
           Allows(rule_.by_month_day, date.day, date.day - monthLength - 1) &&
           Allows(rule_.by_year_day, yearDay, yearDay - yearLength - 1) &&
           Allows(rule_.by_day, icaltime_day_of_week(date)) && (!IsWeekly() || AllowsWeek(day));
}

/// The first step at or after a time.
ClockTime FrequentRule::NextStep(ClockTime time) const
{
    const ClockTime behind = time - anchor_;
    return behind <= 0 ? anchor_ : anchor_ + (behind + step_ - 1) / step_ * step_;
}

/// The first time at or after one whose hour, minute and second are listed, as far as they limit
/// the rule; it may be no step, or not be allowed yet.
ClockTime FrequentRule::NextAllowed(ClockTime time) const
{
    const ClockTime inDay = time - DayOf(time) * kDaySeconds;
    if (unit_ < kDaySeconds && !Allows(rule_.by_hour, static_cast<int>(inDay / kHour)))
        return time - inDay % kHour + kHour;
    if (unit_ < kHour && !Allows(rule_.by_minute, static_cast<int>(inDay % kHour / kMinute)))
        return time - inDay % kMinute + kMinute;
    if (unit_ < kMinute && !Allows(rule_.by_second, static_cast<int>(inDay % kMinute)))
        return time + 1;
    return time;
}

/// The first step from a time on that is in a day.
std::optional<ClockTime> FrequentRule::FindInDay(ClockTime from, std::int32_t day)
{
    if (!AllowsDay(day))
        return std::nullopt;
    for (ClockTime time = NextStep(from); DayOf(time) == day && effort_.Spend();) {
        const ClockTime allowed = NextAllowed(time);
        if (allowed == time)
            return time;
        time = NextStep(allowed);
    }
    return std::nullopt;
}

/// The first of the times that a step stands for.
ClockTime FrequentRule::FirstTimeIn(ClockTime step) const
{
    if (!IsExpanded())
        return step;
    const auto firstOf = [](const short* list, ClockTime absent) {
        const auto values = ValuesOf(list, absent);
        return *std::min_element(values.begin(), values.end());
    };
    const ClockTime inDay = start_ - DayOf(start_) * kDaySeconds;
    const ClockTime hour = unit_ > kHour ? firstOf(rule_.by_hour, inDay / kHour) : 0;
    const ClockTime minute =
        unit_ > kMinute ? firstOf(rule_.by_minute, inDay % kHour / kMinute) : 0;
    return step + hour * kHour + minute * kMinute + firstOf(rule_.by_second, inDay % kMinute);
}

/// How many times a step stands for, from the start on.
std::int64_t FrequentRule::TimesIn(ClockTime step) const
{
    if (!IsExpanded())
        return 1;
    const ClockTime inDay = start_ - DayOf(start_) * kDaySeconds;
    const ClockTime begin = step - DayOf(step) * kDaySeconds;
    const auto hours = unit_ > kHour ? ValuesOf(rule_.by_hour, inDay / kHour)
                                     : std::vector<ClockTime>{begin / kHour};
    const auto minutes = unit_ > kMinute ? ValuesOf(rule_.by_minute, inDay % kHour / kMinute)
                                         : std::vector<ClockTime>{begin % kHour / kMinute};
    const auto seconds = ValuesOf(rule_.by_second, inDay % kMinute);
    if (step >= start_)
        return static_cast<std::int64_t>(hours.size() * minutes.size() * seconds.size());
    std::int64_t count = 0;
    for (const ClockTime hour : hours) {
        for (const ClockTime minute : minutes)
            count += std::count_if(seconds.begin(), seconds.end(), [&](ClockTime second) {
                return hour * kHour + minute * kMinute + second >= inDay;
            });
    }
    return count;
}

/// Finds where a rule ends that is counted, or passes the window.
RuleResult FrequentRule::FindEnd(const DayWindow& window)
{
    if (rule_.count <= 0)
        return RuleResult::Complete;
    if (!HasLists()) {
        end_ = std::min(end_, start_ + (rule_.count - 1) * step_);
        return RuleResult::Complete;
    }
    const ClockTime behind = std::min(end_, (ClockTime{window.last} + 1) * kDaySeconds - 1);
    std::int64_t left = rule_.count;
    for (ClockTime from = anchor_; from <= behind;) {
        const std::int32_t day = DayOf(from);
        const auto step = FindInDay(from, day);
        if (!effort_.Spend())
            return RuleResult::TooMany;
        if (!step) {
            from = NextStep((ClockTime{day} + 1) * kDaySeconds);
            continue;
        }
        left -= TimesIn(*step);
        if (left <= 0) {
            end_ = std::min(end_, *step + unit_ - 1);
            break;
        }
        from = *step + step_;
    }
    return RuleResult::Complete;
}

RuleResult FrequentRule::AddTo(const DayWindow& window, std::vector<ClockTime>& times)
{
    if (!IsEmptyList(rule_.by_set_pos) || !IsEmptyList(rule_.by_week_no))
        return RuleResult::NotUnderstood;
    if (const auto result = FindEnd(window); result != RuleResult::Complete)
        return result;
    const std::int32_t first = std::max(window.first, DayOf(anchor_));
    const std::int32_t last = std::min(window.last, end_ == kNever ? window.last : DayOf(end_));
    for (ClockTime day = first; day <= last;) {
        const auto time = FindInDay(day * kDaySeconds, static_cast<std::int32_t>(day));
        if (!effort_.Spend() || times.size() == kMostTimes)
            return RuleResult::TooMany;
        if (time && FirstTimeIn(*time) <= end_)
            times.push_back(FirstTimeIn(*time));
        day = std::max<ClockTime>(day + 1, DayOf(NextStep((day + 1) * kDaySeconds)));
    }
    return RuleResult::Complete;
}

} // namespace

RuleResult AddFrequentTimes(const Repetition& repetition, const DayWindow& window, Effort& effort,
                            std::vector<ClockTime>& times)
{
    return FrequentRule(repetition, effort).AddTo(window, times);
}

} // namespace orrery::exchange
