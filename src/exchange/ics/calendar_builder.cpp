#include "exchange/ics/calendar_builder.h"

#include "util/text.h"
#include "util/unicode.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <utility>

namespace orrery::exchange {
namespace {

constexpr std::size_t kLongestName = 255; // characters
constexpr std::size_t kMostDays = 2'000'000;
constexpr int kLastYear = 9999;
constexpr std::int16_t kHundred = 100;

holidays::Date DateOfDay(std::int32_t day)
{
    return holidays::Date(std::chrono::days(day));
}

/// One line without control characters and blanks around, at most 255 characters.
std::string NameOf(std::string_view text)
{
    std::string name;
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size() && count < kLongestName; ++count) {
        const char32_t character = util::NextCharacter(text, at);
        const bool isControl = character < U' ' || (character >= 0x7F && character < 0xA0) ||
                               character == 0x2028 || character == 0x2029;
        if (!isControl)
            util::AppendUtf8(name, character);
        else if (!name.empty() && name.back() != ' ')
            name += ' ';
    }
    return std::string(util::Trim(name));
}

/// The same as a rule of a holiday file.
std::optional<Yearly> YearlyOf(const YearlyDay& day)
{
    using holidays::PlainDay;
    Yearly yearly;
    switch (day.kind) {
    case YearlyDay::Kind::None:
        return std::nullopt;
    case YearlyDay::Kind::Date:
        yearly.day.kind = PlainDay{static_cast<std::int16_t>(day.month * kHundred + day.day),
                                   holidays::kFixedDay};
        break;
    case YearlyDay::Kind::Weekday:
        yearly.day.kind = PlainDay{static_cast<std::int16_t>(day.month * kHundred + day.ordinal),
                                   static_cast<std::int16_t>(day.weekday)};
        break;
    case YearlyDay::Kind::LeapDay:
        yearly.day.kind = holidays::LeapDay{};
        break;
    }
    yearly.years.first = day.firstYear;
    if (day.lastYear < kLastYear)
        yearly.years.last = day.lastYear;
    return yearly;
}

std::vector<std::pair<holidays::Date, holidays::Date>> DaysOf(const ParsedEvent& event)
{
    std::vector<std::pair<holidays::Date, holidays::Date>> days;
    days.reserve(event.dayCount);
    for (std::size_t i = 0; i < event.dayCount; ++i)
        days.emplace_back(DateOfDay(event.days[i].first), DateOfDay(event.days[i].last));
    return days;
}

} // namespace

std::string CalendarBuilder::NoDays() const
{
    return "It has no day in the years " + std::to_string(years_.first) + " to " +
           std::to_string(years_.last) + ".";
}

void CalendarBuilder::PassOver(std::size_t line, std::string reason)
{
    calendar_.passedOver.push_back({line, std::move(reason)});
}

void CalendarBuilder::Add(const ParsedEvent& event, std::size_t line)
{
    const std::size_t uid = std::hash<std::string_view>()(event.uid);
    if (event.isOverride)
        replaced_.push_back({uid, event.replacedDay});
    if (!event.problem.empty()) {
        PassOver(line, std::string(event.problem));
        return;
    }
    Event taken;
    taken.name = NameOf(event.name);
    if (taken.name.empty()) {
        PassOver(line, "The event has no name.");
        return;
    }
    if (dayCount_ + event.dayCount > kMostDays) {
        PassOver(line, "The file has more than 2,000,000 days. Ask for fewer years.");
        return;
    }
    dayCount_ += event.dayCount;
    taken.days = DaysOf(event);
    taken.yearly = YearlyOf(event.yearly);
    if (event.born != 0)
        taken.born = event.born;
    taken.line = line;
    if (!event.loss.empty())
        PassOver(line, std::string(event.loss));
    if (event.isRepeated)
        repeated_.push_back({uid, calendar_.events.size()});
    calendar_.events.push_back(std::move(taken));
}

/// Takes away the days that other events have in their place.
void CalendarBuilder::RemoveReplacedDays(const Repeated& repeated)
{
    Event& event = calendar_.events[repeated.event];
    const auto begin =
        std::lower_bound(replaced_.begin(), replaced_.end(), EventDay{repeated.uid, INT32_MIN});
    if (begin == replaced_.end() || begin->uid != repeated.uid)
        return;
    event.yearly.reset();
    std::erase_if(event.days, [&](const auto& days) {
        const auto day = static_cast<std::int32_t>(days.first.time_since_epoch().count());
        return std::binary_search(begin, replaced_.end(), EventDay{repeated.uid, day});
    });
}

Calendar CalendarBuilder::Finish()
{
    std::sort(replaced_.begin(), replaced_.end());
    for (const Repeated& repeated : repeated_)
        RemoveReplacedDays(repeated);
    for (const Event& event : calendar_.events) {
        if (event.days.empty() && !event.yearly)
            PassOver(event.line, NoDays());
    }
    std::erase_if(calendar_.events,
                  [](const Event& event) { return event.days.empty() && !event.yearly; });
    std::stable_sort(calendar_.passedOver.begin(), calendar_.passedOver.end(),
                     [](const PassedOver& a, const PassedOver& b) { return a.line < b.line; });
    return std::move(calendar_);
}

} // namespace orrery::exchange
