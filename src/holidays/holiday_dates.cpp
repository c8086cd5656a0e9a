#include "holidays/holiday_dates.h"

#include "util/checked.h"
#include "util/error.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace orrery::holidays {

namespace {

using util::Add16;
using util::Multiply16;
using util::Narrow16;
using util::Subtract16;

constexpr std::array<std::int16_t, 12> kDaysInMonth = {31, 28, 31, 30, 31, 30,
                                                       31, 31, 30, 31, 30, 31};
constexpr std::int16_t kLastEasterKind = 12; // 9 to 12 are read as Easter rules too

std::size_t SlotOf(std::int16_t index)
{
    if (index < 0 || static_cast<std::size_t>(index) >= HolidayDateList::kCapacity)
        throw util::OutOfRangeError();
    return static_cast<std::size_t>(index);
}

/// The day of a month on which a rule's weekday falls; beyond the month for some ordinals.
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

Date DateOfRule(std::int16_t year, const HolidayDef& rule, Date easter)
{
    if (rule.Kind >= kEaster && rule.Kind <= kLastEasterKind) {
        // Only month and day are taken: an offset that leaves the year comes back into it.
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

} // namespace

std::int16_t TableDaysInMonth(std::int16_t month)
{
    if (month < 1 || month > 12)
        throw util::OutOfRangeError();
    return kDaysInMonth[static_cast<std::size_t>(month - 1)];
}

std::int16_t DaysInMonth(std::int16_t year, std::int16_t month)
{
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? std::int16_t{29} : TableDaysInMonth(month);
}

std::int16_t WeekdayOf(Date date)
{
    return static_cast<std::int16_t>(std::chrono::weekday(date).c_encoding() + 1);
}

Date MakeDate(std::int16_t year, std::int16_t month, std::int16_t day)
{
    using namespace std::chrono;
    // Months since January of year 0. A day carries a date by less than ninety years, so outside
    // this range none can bring it back into the type's.
    const int monthCount = 12 * year + (month - 1);
    if (monthCount < -12 * 100 || monthCount > 12 * 10100)
        throw util::OutOfRangeError();
    const year_month start = year_month(std::chrono::year(0), January) + months(monthCount);
    const Date date = sys_days(start / 1) + days(day - 1);
    if (date < sys_days(std::chrono::year(1) / 1 / 1) ||
        date > sys_days(std::chrono::year(9999) / 12 / 31))
        throw util::OutOfRangeError();
    return date;
}

Date EasterDate(std::int16_t year)
{
    // Every intermediate is 16 bits wide; 5 x year is the first to overflow.
    const std::int16_t golden = Add16(Narrow16(year % 19), 1);
    const std::int16_t century = Add16(Narrow16(year / 100), 1);
    const std::int16_t skipped = Subtract16(Narrow16(Multiply16(3, century) / 4), 12);
    const std::int16_t moon = Subtract16(Narrow16(Add16(Multiply16(8, century), 5) / 25), 5);
    const std::int16_t sunday =
        Subtract16(Subtract16(Narrow16(Multiply16(5, year) / 4), skipped), 10);
    std::int16_t epact =
        Narrow16(Subtract16(Add16(Add16(Multiply16(11, golden), 20), moon), skipped) % 30);
    if (epact == 25 && golden > 11)
        epact = 26;
    if (epact == 24)
        epact = 25;
    std::int16_t day = Subtract16(44, epact);
    if (day < 21)
        day = Add16(day, 30);
    day = Subtract16(Add16(day, 7), Narrow16(Add16(sunday, day) % 7));
    return day > 31 ? MakeDate(year, 4, Subtract16(day, 31)) : MakeDate(year, 3, day);
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
            // A date that cannot be built: the slot keeps what it held.
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
