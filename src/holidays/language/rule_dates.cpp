#include "holidays/language/rule_dates.h"

#include "holidays/calendars/julian.h"
#include "holidays/holiday_dates.h"
#include "util/checked.h"
#include "util/error.h"

#include <algorithm>

namespace orrery::holidays {
namespace {

using Dates = std::vector<Date>;

Date WeekdayFrom(Date date, std::int16_t weekday, NearWeekday::Relation relation)
{
    using Relation = NearWeekday::Relation;
    constexpr int week = 7;
    const int after = (weekday - WeekdayOf(date) + week) % week; // days on, if not the day itself
    switch (relation) {
    case Relation::OnOrAfter:
        return date + std::chrono::days(after);
    case Relation::After:
        return date + std::chrono::days(after == 0 ? week : after);
    case Relation::OnOrBefore:
        return date - std::chrono::days((week - after) % week);
    case Relation::Before:
        return date - std::chrono::days(week - after);
    case Relation::Nearest:
        return date + std::chrono::days(after <= week / 2 ? after : after - week);
    }
    return date;
}

calendars::Zone ZoneOf(const Place& place)
{
    switch (place.country) {
    case Place::Country::China:
        return calendars::China();
    case Place::Country::Japan:
        return calendars::Japan();
    case Place::Country::Korea:
        return calendars::Korea();
    case Place::Country::Vietnam:
        return calendars::Vietnam();
    case Place::Country::None:
        break;
    }
    return calendars::ZoneOfHours(place.hours);
}

} // namespace

/// The dates of each kind whose own day is in a year.
class DatesOfKind {
public:
    DatesOfKind(DateFinder& finder, std::int16_t year) : finder_(finder), year_(year) {}

    Dates operator()(const PlainDay& day) const
    {
        const Date easter = day.kind >= kEaster ? EasterDate(year_) : Date();
        return {DateOfRule(year_, {day.dateCode, day.kind, {}}, easter)};
    }
    Dates operator()(const NearWeekday& day) const
    {
        const Date date =
            MakeDate(year_, util::Narrow16(day.day.month), util::Narrow16(day.day.day));
        return {WeekdayFrom(date, day.weekday, day.relation)};
    }
    Dates operator()(const OrthodoxEasterDay& day) const
    {
        return {calendars::OrthodoxEaster(year_) + std::chrono::days(day.offset)};
    }
    Dates operator()(const ListedDates& listed) const
    {
        const Date newYear = std::chrono::year(year_) / 1 / 1;
        const Date yearsEnd = std::chrono::year(year_) / 12 / 31;
        Dates dates;
        for (const auto& [first, last] : listed.ranges) {
            for (Date date = std::max(first, newYear); date <= std::min(last, yearsEnd);
                 date += std::chrono::days(1))
                dates.push_back(date);
        }
        return dates;
    }
    Dates operator()(const LeapDay& /*day*/) const
    {
        return std::chrono::year(year_).is_leap() ? Dates{MakeDate(year_, 2, 29)} : Dates();
    }
    Dates operator()(const CalendarDay& day) const
    {
        Dates dates = Listed(finder_.SpanOf(day.calendar).Find(day.day.month, day.day.day));
        std::erase_if(dates, [this](Date date) { return calendars::GregorianYear(date) != year_; });
        return dates;
    }
    Dates operator()(const SolarDay& day) const
    {
        return {calendars::SunDate(year_, day.degrees, ZoneOf(day.place))};
    }
    Dates operator()(const MoonDay& day) const
    {
        return Listed(calendars::MoonDates(year_, day.phase, ZoneOf(day.place)));
    }
    Dates operator()(const BetweenHolidays& /*day*/) const { return {}; }

private:
    static Dates Listed(const calendars::Dates& dates) { return {dates.begin(), dates.end()}; }

    DateFinder& finder_;
    std::int16_t year_;
};

const calendars::CalendarSpan& DateFinder::SpanOf(calendars::Calendar calendar)
{
    return spans_.try_emplace(calendar, calendar, firstYear_, lastYear_).first->second;
}

std::vector<Date> DateFinder::DatesOf(const RuleDay& day, int year)
{
    try {
        Dates dates = std::visit(DatesOfKind(*this, util::Narrow16(year)), day.kind);
        for (Date& date : dates)
            date += std::chrono::days(day.shift);
        return dates;
    }
    catch (const util::Error&) {
        return {}; // no such date in that year
    }
}

bool IsEstimate(const RuleKind& kind)
{
    const auto* const day = std::get_if<CalendarDay>(&kind);
    return day != nullptr && (day->calendar == calendars::Calendar::UmmAlQura ||
                              day->calendar == calendars::Calendar::IslamicCivil);
}

} // namespace orrery::holidays
