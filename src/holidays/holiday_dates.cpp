#include "holidays/holiday_dates.h"

#include "util/checked.h"
#include "util/error.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace orrery::holidays {

namespace {

using util::Narrow16;

constexpr std::int16_t kLastEasterKind = 12; // 9 to 12 count as Easter rules too

std::size_t SlotOf(std::int16_t index)
{
    if (index < 0 || static_cast<std::size_t>(index) >= HolidayDateList::kCapacity)
        throw util::OutOfRangeError();
    return static_cast<std::size_t>(index);
}

/// The day of the month on which a rule's weekday falls; outside the month for some ordinals.
std::int16_t DayOfWeekdayRule(std::int16_t year, std::int16_t month, std::int16_t ordinal,
                              std::int16_t weekday)
{
    const std::int16_t first = WeekdayOf(MakeDate(year, month, 1));
    if (ordinal < 5) {
        const int day = (ordinal - 1) * 7 + weekday - first + 1;
        return Narrow16(first > weekday ? day + 7 : day);
    }
    const std::int16_t length = DaysInMonth(year, month);
    const int last = (first + length - 1) % 7; // weekday of the last day, Saturday as 0
    const int day = length - last - (ordinal - 5) * 7 + weekday;
    return Narrow16(weekday > last ? day - 7 : day);
}

} // namespace

Date DateOfRule(std::int16_t year, const HolidayDef& rule, Date easter)
{
    if (rule.Kind >= kEaster && rule.Kind <= kLastEasterKind) {
        // Only month and day are used, so an offset that leaves the year wraps around into it.
        const std::chrono::year_month_day date(easter + std::chrono::days(rule.DateCode));
        return MakeDate(year, Narrow16(static_cast<unsigned>(date.month())),
                        Narrow16(static_cast<unsigned>(date.day())));
    }
    const auto month = Narrow16(rule.DateCode / 100);
    const auto day = Narrow16(rule.DateCode % 100);
    if (rule.Kind >= kFirstWeekday && rule.Kind <= kLastWeekday)
        return MakeDate(year, month, DayOfWeekdayRule(year, month, day, rule.Kind));
    return MakeDate(year, month, day);
}

Date HolidayDateList::DateAt(std::int16_t index) const
{
    return Dates[SlotOf(index)];
}

const std::string& HolidayDateList::NameAt(std::int16_t index) const
{
    return Names[SlotOf(index)];
}

void ComputeHolidayDates(std::int16_t year, const HolidayList& holidays, Date easter,
                         HolidayDateList& out)
{
    out.Cursor = 0;
    out.Count = holidays.Count();
    std::size_t slot = 0;
    for (const HolidayDef& rule : holidays) {
        try {
            out.Dates[slot] = DateOfRule(year, rule, easter);
            out.Names[slot] = rule.Name;
        }
        catch (const util::Error&) {
            // The date cannot be built: the slot keeps its old content.
        }
        ++slot;
    }
    SortHolidayDates(out);
}

void SortHolidayDates(HolidayDateList& list)
{
    struct Entry {
        Date date;
        std::string name;
    };
    const auto count = static_cast<std::size_t>(list.Count);
    std::vector<Entry> entries(count);
    for (std::size_t i = 0; i < count; ++i)
        entries[i] = {list.Dates[i], std::move(list.Names[i])};
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry& left, const Entry& right) { return left.date < right.date; });
    for (std::size_t i = 0; i < count; ++i) {
        list.Dates[i] = entries[i].date;
        list.Names[i] = std::move(entries[i].name);
    }
}

} // namespace orrery::holidays
