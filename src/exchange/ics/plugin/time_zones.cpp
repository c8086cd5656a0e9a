#include "exchange/ics/plugin/time_zones.h"

#include "exchange/ics/plugin/repetition.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace orrery::exchange {
namespace {

constexpr std::size_t kMostZones = 100;
constexpr int kMostRules = 20; // of a zone
constexpr int kFirstZoneYear = 1500;
constexpr int kLastZoneYear = 2500; // libical's tables of changes end soon behind it

/// Whether every year has the days of a rule: libical would search for others for thousands of
/// years.
bool HasPlainDays(const icalrecurrencetype& rule)
{
    constexpr int commonYear = 2001;
    constexpr int mostWeeks = 5;
    const short* const days = rule.by_month_day;
    const int dayCount = LengthOfList(days);
    const int longest = icaltime_days_in_month(rule.by_month[0], commonYear);
    const int week = icalrecurrencetype_day_position(rule.by_day[0]);
    const bool hasWeekday = !IsEmptyList(rule.by_day);
    return std::all_of(days, days + dayCount,
                       [&](short day) { return std::abs(day) <= longest; }) &&
           (!hasWeekday || (std::abs(week) <= mostWeeks && (week == 0 || dayCount == 0)));
}

/// Whether a change of the clocks comes a few times a year at most: libical lists all of them.
bool IsModest(icalproperty* property)
{
    const icalrecurrencetype rule = icalproperty_get_rrule(property);
    const bool hasTimes =
        !IsEmptyList(rule.by_hour) || !IsEmptyList(rule.by_minute) || !IsEmptyList(rule.by_second);
    const bool hasOtherDays = !IsEmptyList(rule.by_year_day) || !IsEmptyList(rule.by_week_no) ||
                              !IsEmptyList(rule.by_set_pos);
    return rule.freq == ICAL_YEARLY_RECURRENCE && rule.interval == 1 && rule.rscale == nullptr &&
           !hasTimes && !hasOtherDays && LengthOfList(rule.by_month) == 1 &&
           LengthOfList(rule.by_day) <= 1 && rule.by_month[0] >= 1 && rule.by_month[0] <= 12 &&
           HasPlainDays(rule);
}

bool IsModest(icalcomponent* zone)
{
    int rules = 0;
    bool isModest = true;
    for (icalcomponent* part = icalcomponent_get_first_component(zone, ICAL_ANY_COMPONENT);
         part != nullptr; part = icalcomponent_get_next_component(zone, ICAL_ANY_COMPONENT)) {
        ForEachProperty(part, ICAL_RRULE_PROPERTY, [&](icalproperty* property) {
            isModest = isModest && IsModest(property);
            ++rules;
        });
        ForEachProperty(part, ICAL_XLICERROR_PROPERTY, [&](icalproperty* property) {
            const char* const error = icalproperty_get_xlicerror(property);
            isModest = isModest && (error == nullptr || std::strstr(error, "RRULE") == nullptr);
        });
        ForEachProperty(part, ICAL_DTSTART_PROPERTY, [&](icalproperty* property) {
            const icaltimetype start = icalproperty_get_dtstart(property);
            isModest = isModest && IsValidTime(start) && start.year >= kFirstZoneYear &&
                       start.year <= kLastZoneYear;
        });
    }
    return isModest && rules <= kMostRules;
}

icaltimezone* ZoneOf(const ZonedTime& time)
{
    return time.IsUtc() ? icaltimezone_get_utc_timezone() : time.zone;
}

} // namespace

bool TimeZones::Add(const std::string& text)
{
    IcalOwned<icalcomponent> component(icalparser_parse_string(text.c_str()));
    if (!component || zones_.size() == kMostZones ||
        icalcomponent_isa(component.get()) != ICAL_VTIMEZONE_COMPONENT ||
        !IsModest(component.get()))
        return false;
    IcalOwned<icaltimezone> zone(icaltimezone_new());
    if (!zone || icaltimezone_set_component(zone.get(), component.get()) == 0)
        return false;
    static_cast<void>(component.release()); // the zone owns it now
    const char* const name = icaltimezone_get_tzid(zone.get());
    if (name == nullptr)
        return false;
    zones_.emplace(name, std::move(zone)); // the first of a name counts
    return true;
}

icaltimezone* TimeZones::Find(std::string_view name) const
{
    const auto found = zones_.find(name);
    return found == zones_.end() ? nullptr : found->second.get();
}

ClockTime ClockTimeBeside(const ZonedTime& time, const ZonedTime& other)
{
    icaltimezone* const from = ZoneOf(time);
    icaltimezone* const to = ZoneOf(other);
    icaltimetype shown = time.time;
    if (!time.IsDate() && from != nullptr && to != nullptr && from != to &&
        shown.year <= kLastZoneYear && shown.year >= kFirstZoneYear)
        icaltimezone_convert_time(&shown, from, to);
    return ClockTimeOf(shown);
}

} // namespace orrery::exchange
