#include "exchange/ics/plugin/event_parser.h"

#include "exchange/ics/plugin/birth_year.h"
#include "exchange/ics/plugin/rule_text.h"
#include "exchange/ics/plugin/yearly_rule.h"

#include <algorithm>
#include <exception>

namespace orrery::exchange {
namespace {

constexpr ClockTime kMostLength = ClockTime{kLastYear} * 366 * kDaySeconds;
constexpr const char* kNoMemory = "There is not enough memory for the event.";

/// Takes a repeated event apart where its rule is wrong.
constexpr const char* kWrongRule =
    "The repetition of the event (RRULE) is not understood. Only its first day is taken over.";
constexpr const char* kExceptionRule =
    "The rule of exceptions (EXRULE) is not taken over: the event has its days, too.";
constexpr const char* kTooMany =
    "The events of the file come again too often. Not all days of this one are taken over.";

ClockTime LengthOf(const icaldurationtype& duration)
{
    const std::int64_t days = std::int64_t{duration.weeks} * 7 + duration.days;
    const ClockTime seconds = days * kDaySeconds + std::int64_t{duration.hours} * 3600 +
                              std::int64_t{duration.minutes} * 60 + duration.seconds;
    return duration.is_neg != 0 ? 0 : std::min(seconds, kMostLength);
}

icalproperty* PropertyOf(icalcomponent* component, icalproperty_kind kind)
{
    return icalcomponent_get_first_property(component, kind);
}

int CountOf(icalcomponent* component, icalproperty_kind kind)
{
    return icalcomponent_count_properties(component, kind);
}

std::string TextOf(const char* text)
{
    return text == nullptr ? std::string() : std::string(text);
}

bool IsCancelled(icalcomponent* component)
{
    icalproperty* const status = PropertyOf(component, ICAL_STATUS_PROPERTY);
    return status != nullptr && icalproperty_get_status(status) == ICAL_STATUS_CANCELLED;
}

/// Whether a line of the component was not understood that says when the event is.
bool HasWrongTimes(icalcomponent* component)
{
    bool isWrong = false;
    ForEachProperty(component, ICAL_XLICERROR_PROPERTY, [&](icalproperty* property) {
        const std::string text = TextOf(icalproperty_get_xlicerror(property));
        for (const char* const name : {"RRULE", "RDATE", "EXDATE"})
            isWrong = isWrong || text.find(name) != std::string::npos;
    });
    return isWrong;
}

} // namespace

EventParser::EventParser(int firstYear, int lastYear)
    : years_{FirstDayOfYear(std::clamp(firstYear, kFirstYear, kLastYear)),
             FirstDayOfYear(std::clamp(lastYear, kFirstYear, kLastYear) + 1) - 1}
{
    icalerror_set_errors_are_fatal(0);
}

EventParser::~EventParser()
{
    icalmemory_free_ring();
}

bool EventParser::AddZone(std::string_view text)
{
    try {
        std::string lines;
        return !DropRulesOutOfBounds(text, lines) && zones_.Add(lines);
    }
    catch (const std::exception&) { // no memory
        return false;
    }
}

const ParsedEvent& EventParser::Parse(std::string_view text)
{
    event_ = {};
    try {
        problem_.clear();
        loss_.clear();
        times_.clear();
        extraDays_.clear();
        days_.clear();
        std::string lines;
        const bool isWrongRule = DropRulesOutOfBounds(text, lines);
        const IcalOwned<icalcomponent> component(icalparser_parse_string(lines.c_str()));
        if (component && icalcomponent_isa(component.get()) == ICAL_VEVENT_COMPONENT)
            ParseComponent(component.get(), isWrongRule);
        else
            problem_ = "The event is not understood.";
        event_.problem = problem_;
        event_.loss = loss_;
        event_.name = name_;
        event_.uid = uid_;
        event_.days = days_.data();
        event_.dayCount = days_.size();
    }
    catch (const std::exception&) {
        event_ = {};
        event_.problem = kNoMemory;
    }
    return event_;
}

void EventParser::ParseComponent(icalcomponent* component, bool isWrongRule)
{
    name_ = TextOf(icalcomponent_get_summary(component));
    uid_ = TextOf(icalcomponent_get_uid(component));
    Parts parts;
    parts.component = component;
    parts.isWrongRule = isWrongRule || HasWrongTimes(component);
    if (!ReadStart(parts))
        return;
    ReadOverride(parts);
    event_.isRepeated =
        CountOf(component, ICAL_RRULE_PROPERTY) > 0 || CountOf(component, ICAL_RDATE_PROPERTY) > 0;
    if (IsCancelled(component)) {
        problem_ = "The event is cancelled.";
        return;
    }
    ReadLength(parts);
    if (RangeOf(parts, parts.startTime, parts.length).last >= FirstDayOfYear(kLastYear + 1)) {
        problem_ = "The event ends behind the year 9999.";
        return;
    }
    if (parts.isWrongRule)
        loss_ = kWrongRule;
    ReadDays(parts);
    ReadYearly(parts);
    event_.born = BirthYearOf(component, IcalTimeOf(parts.startTime, true));
}

ZonedTime EventParser::TimeOf(icalproperty* property, const icaltimetype& time) const
{
    ZonedTime zoned{time, nullptr};
    icalparameter* const name = icalproperty_get_first_parameter(property, ICAL_TZID_PARAMETER);
    if (name != nullptr && !zoned.IsUtc() && !zoned.IsDate())
        zoned.zone = zones_.Find(TextOf(icalparameter_get_tzid(name)));
    return zoned;
}

bool EventParser::ReadStart(Parts& parts)
{
    icalproperty* const property = PropertyOf(parts.component, ICAL_DTSTART_PROPERTY);
    if (property == nullptr) {
        problem_ = "The event has no start (DTSTART) that is understood.";
        return false;
    }
    parts.start = TimeOf(property, icalproperty_get_dtstart(property));
    if (!IsValidTime(parts.start.time)) {
        problem_ = "The start of the event (DTSTART) is no date of the years 1 to 9999.";
        return false;
    }
    parts.startTime = ClockTimeOf(parts.start.time);
    return true;
}

void EventParser::ReadLength(Parts& parts)
{
    if (icalproperty* const end = PropertyOf(parts.component, ICAL_DTEND_PROPERTY)) {
        const ZonedTime time = TimeOf(end, icalproperty_get_dtend(end));
        if (IsValidTime(time.time))
            parts.length = ClockTimeBeside(time, parts.start) - parts.startTime;
        else
            loss_ = "The end of the event (DTEND) is not understood. It has one day.";
    }
    else if (icalproperty* const duration = PropertyOf(parts.component, ICAL_DURATION_PROPERTY)) {
        parts.length = LengthOf(icalproperty_get_duration(duration));
    }
    parts.length = std::clamp<ClockTime>(parts.length, 0, kMostLength);
}

/// The day of a time of the event: for one in UTC the user's own.
std::int32_t EventParser::DayOfStart(const Parts& parts, ClockTime time) const
{
    return parts.start.IsUtc() ? LocalDayOf(time) : DayOf(time);
}

/// An end is the first moment that does not belong to the event.
DayRange EventParser::RangeOf(const Parts& parts, ClockTime time, ClockTime length) const
{
    const std::int32_t first = DayOfStart(parts, time);
    return {first, length == 0 ? first : std::max(first, DayOfStart(parts, time + length - 1))};
}

void EventParser::ReadOverride(const Parts& parts)
{
    icalproperty* const property = PropertyOf(parts.component, ICAL_RECURRENCEID_PROPERTY);
    if (property == nullptr)
        return;
    const ZonedTime replaced = TimeOf(property, icalproperty_get_recurrenceid(property));
    if (!IsValidTime(replaced.time))
        return;
    const bool isUtcDay = parts.start.IsUtc() && !replaced.IsDate();
    const ClockTime time = ClockTimeBeside(replaced, parts.start);
    event_.isOverride = true;
    event_.replacedDay = isUtcDay ? LocalDayOf(time) : DayOf(time);
    if (icalproperty_get_first_parameter(property, ICAL_RANGE_PARAMETER) != nullptr)
        loss_ = "The change of all later days (RANGE) is not taken over, only that of this day.";
}

Repetition EventParser::RepetitionOf(const Parts& parts, icalproperty* property) const
{
    Repetition repetition{icalproperty_get_rrule(property), parts.startTime, parts.start.IsDate()};
    icaltimetype& until = repetition.rule.until;
    if (icaltime_is_null_time(until) || !IsValidTime(until))
        return repetition;
    if (until.is_date != 0)
        until = IcalTimeOf(ClockTimeOf(until) + kDaySeconds - 1, parts.start.IsDate());
    else
        until = IcalTimeOf(ClockTimeBeside({until, parts.start.zone}, parts.start),
                           parts.start.IsDate());
    return repetition;
}

void EventParser::AddRuleTimes(const Parts& parts)
{
    const auto margin = static_cast<std::int32_t>(parts.length / kDaySeconds + 2);
    const DayWindow window{std::max(years_.first - margin, FirstDayOfYear(kFirstYear)),
                           std::min(years_.last + 1, FirstDayOfYear(kLastYear + 1) - 1)};
    ForEachProperty(parts.component, ICAL_RRULE_PROPERTY, [&](icalproperty* property) {
        const auto result = AddTimes(RepetitionOf(parts, property), window, effort_, times_);
        if (result == RuleResult::NotUnderstood)
            loss_ = kWrongRule;
        if (result == RuleResult::TooMany)
            loss_ = kTooMany;
    });
}

void EventParser::AddExtraTimes(const Parts& parts)
{
    ForEachProperty(parts.component, ICAL_RDATE_PROPERTY, [&](icalproperty* property) {
        const icaldatetimeperiodtype extra = icalproperty_get_rdate(property);
        const bool isPeriod = icaltime_is_null_time(extra.time) != 0;
        const ZonedTime begin = TimeOf(property, isPeriod ? extra.period.start : extra.time);
        if (!IsValidTime(begin.time))
            return;
        const ClockTime time = ClockTimeBeside(begin, parts.start);
        if (!isPeriod) {
            times_.push_back(time);
            return;
        }
        const ZonedTime end = TimeOf(property, extra.period.end);
        const ClockTime length = IsValidTime(end.time) ? ClockTimeBeside(end, parts.start) - time
                                                       : LengthOf(extra.period.duration);
        extraDays_.push_back(RangeOf(parts, time, std::clamp<ClockTime>(length, 0, kMostLength)));
    });
}

/// Without a time, or where the event has none, all of the day.
void EventParser::RemoveTimes(const Parts& parts)
{
    if (CountOf(parts.component, ICAL_EXRULE_PROPERTY) > 0)
        loss_ = kExceptionRule;
    std::vector<ClockTime> removedTimes;
    std::vector<std::int32_t> removedDays;
    ForEachProperty(parts.component, ICAL_EXDATE_PROPERTY, [&](icalproperty* property) {
        const ZonedTime removed = TimeOf(property, icalproperty_get_exdate(property));
        if (!IsValidTime(removed.time))
            return;
        if (removed.IsDate() || parts.start.IsDate())
            removedDays.push_back(DayOf(ClockTimeOf(removed.time)));
        else
            removedTimes.push_back(ClockTimeBeside(removed, parts.start));
    });
    std::sort(removedTimes.begin(), removedTimes.end());
    std::sort(removedDays.begin(), removedDays.end());
    std::erase_if(times_, [&](ClockTime time) {
        return std::binary_search(removedTimes.begin(), removedTimes.end(), time) ||
               std::binary_search(removedDays.begin(), removedDays.end(), DayOf(time));
    });
}

void EventParser::ReadDays(const Parts& parts)
{
    times_.push_back(parts.startTime);
    AddRuleTimes(parts);
    AddExtraTimes(parts);
    RemoveTimes(parts);
    for (const ClockTime time : times_)
        days_.push_back(RangeOf(parts, time, parts.length));
    days_.insert(days_.end(), extraDays_.begin(), extraDays_.end());
    std::sort(days_.begin(), days_.end());
    days_.erase(std::unique(days_.begin(), days_.end()), days_.end());
    const std::int32_t firstDay = FirstDayOfYear(kFirstYear);
    const std::int32_t lastDay = FirstDayOfYear(kLastYear + 1) - 1;
    std::erase_if(days_, [&](const DayRange& range) {
        const bool isAsked = range.last >= years_.first && range.first <= years_.last;
        return range.first < firstDay || range.last > lastDay || (event_.isRepeated && !isAsked);
    });
}

void EventParser::ReadYearly(const Parts& parts)
{
    const bool isPlain = CountOf(parts.component, ICAL_RRULE_PROPERTY) == 1 &&
                         CountOf(parts.component, ICAL_RDATE_PROPERTY) == 0 &&
                         CountOf(parts.component, ICAL_EXDATE_PROPERTY) == 0 &&
                         !event_.isOverride && !parts.start.IsUtc() && loss_.empty();
    const DayRange range = RangeOf(parts, parts.startTime, parts.length);
    if (isPlain && range.first == range.last)
        event_.yearly =
            YearlyDayOf(RepetitionOf(parts, PropertyOf(parts.component, ICAL_RRULE_PROPERTY)));
}

} // namespace orrery::exchange
