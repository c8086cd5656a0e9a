#include "holidays/calendars/month_names.h"
#include "holidays/language/rule_words.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace orrery::holidays {
namespace {

using calendars::Calendar;

constexpr std::array<std::string_view, 12> kMonthWords = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};
constexpr std::array<std::string_view, 12> kPersianMonths = {
    "Farvardin", "Ordibehesht", "Khordad", "Tir", "Mordad", "Shahrivar",
    "Mehr",      "Aban",        "Azar",    "Dey", "Bahman", "Esfand"};
constexpr std::array<std::string_view, 13> kCopticMonths = {
    "Thout",    "Paopi",   "Hathor", "Koiak", "Tobi",   "Meshir",        "Paremhat",
    "Parmouti", "Pashons", "Paoni",  "Epip",  "Mesori", "Pi Kogi Enavot"};
constexpr std::array<std::string_view, 13> kEthiopicMonths = {
    "Meskerem", "Tikimt", "Hidar", "Tahsas", "Tir",     "Yekatit", "Megabit",
    "Miazia",   "Ginbot", "Sene",  "Hamle",  "Nehasse", "Pagumen"};
constexpr std::array<std::string_view, 12> kIndianMonths = {
    "Chaitra", "Vaisakha", "Jyaistha",   "Asadha", "Sravana", "Bhadra",
    "Asvina",  "Kartika",  "Agrahayana", "Pausa",  "Magha",   "Phalguna"};

/// The name of a month [1:], or its number.
template <std::size_t Count>
std::string MonthIn(const std::array<std::string_view, Count>& names, int month)
{
    const auto index = static_cast<std::size_t>(month - 1);
    return index < Count ? std::string(names.at(index)) : "month " + std::to_string(month);
}

std::string WithMonth(int day, const std::string& month)
{
    return std::to_string(day) + ' ' + month;
}

std::string InOurCalendar(const MonthDay& day)
{
    return WithMonth(day.day, MonthIn(kMonthWords, day.month));
}

std::string_view WeekdayWord(std::int16_t weekday)
{
    return kKindWords.at(static_cast<std::size_t>(weekday));
}

/// "Easter Sunday - 2".
std::string WithDays(std::string words, int days)
{
    if (days != 0)
        words += (days < 0 ? " - " : " + ") + std::to_string(std::abs(days));
    return words;
}

/// "fourth Thursday of November". From 5 the weeks count back from the last one; 0 is a week before
/// the first one.
std::string WeekdayOfMonth(std::int16_t weekday, int month, int which)
{
    constexpr std::array<std::string_view, 8> ordinals = {
        "", "first ", "second ", "third ", "fourth ", "last ", "second-to-last ", "third-to-last "};
    const std::string name(WeekdayWord(weekday));
    const std::string monthName = MonthIn(kMonthWords, month);
    if (which == 0)
        return "last " + name + " before " + monthName;
    const auto index = static_cast<std::size_t>(which);
    if (index < ordinals.size())
        return std::string(ordinals.at(index)) + name + " of " + monthName;
    return name + ' ' + std::to_string(which - 5) + " weeks before the last one of " + monthName;
}

/// " in Japan", " in GMT+5:30".
std::string PlaceWords(const Place& place)
{
    switch (place.country) {
    case Place::Country::China:
        return " in China";
    case Place::Country::Japan:
        return " in Japan";
    case Place::Country::Korea:
        return " in Korea";
    case Place::Country::Vietnam:
        return " in Vietnam";
    case Place::Country::None:
        break;
    }
    constexpr int minutesOfHour = 60;
    const auto minutes = static_cast<int>(std::lround(std::abs(place.hours) * minutesOfHour));
    std::string words = " in GMT";
    if (minutes == 0)
        return words;
    (words += place.hours < 0 ? '-' : '+') += std::to_string(minutes / minutesOfHour);
    if (minutes % minutesOfHour != 0) {
        std::array<char, 16> rest{};
        std::snprintf(rest.data(), rest.size(), ":%02d", minutes % minutesOfHour);
        words += rest.data();
    }
    return words;
}

/// "day 15 of month 8, Chinese calendar": these months have numbers.
std::string InNumberedMonth(const MonthDay& day, std::string_view calendar)
{
    return "day " + std::to_string(day.day) + " of month " + std::to_string(day.month) + ", " +
           std::string(calendar) + " calendar";
}

std::string InNamedMonth(const CalendarDay& day)
{
    const auto name = calendars::MonthName(day.calendar, {day.day.month});
    return WithMonth(day.day.day,
                     name.empty() ? "month " + std::to_string(day.day.month) : std::string(name));
}

/// The words of each kind.
struct KindWords {
    Lists lists;

    std::string operator()(const PlainDay& day) const
    {
        constexpr int hundred = 100;
        const int month = day.dateCode / hundred;
        const int number = day.dateCode % hundred;
        if (day.kind == kEaster)
            return WithDays("Easter Sunday", day.dateCode);
        const bool isDate = month >= 1 && month <= 12 && number >= 0;
        if (isDate && day.kind == kFixedDay && number > 0)
            return InOurCalendar({month, number});
        if (isDate && day.kind >= kFirstWeekday && day.kind <= kLastWeekday)
            return WeekdayOfMonth(day.kind, month, number);
        return FormatDateCode({day.dateCode, day.kind, {}});
    }
    std::string operator()(const NearWeekday& day) const
    {
        constexpr std::array<std::string_view, 5> relations = {
            " on or after ", " after ", " on or before ", " before ", " nearest to "};
        std::string words(WeekdayWord(day.weekday));
        words += relations.at(static_cast<std::size_t>(day.relation));
        return words + InOurCalendar(day.day);
    }
    std::string operator()(const OrthodoxEasterDay& day) const
    {
        return WithDays("Orthodox Easter Sunday", day.offset);
    }
    std::string operator()(const ListedDates& listed) const
    {
        constexpr std::size_t few = 3;
        const std::size_t count = listed.ranges.size();
        const std::size_t told = lists == Lists::Brief ? std::min(count, few) : count;
        std::string words;
        for (std::size_t i = 0; i < told; ++i) {
            const auto& [first, last] = listed.ranges[i];
            (words += i == 0 ? "" : ", ") += DateInWords(first);
            if (last != first)
                words += " to " + DateInWords(last);
        }
        return told == count ? words : words + " and " + std::to_string(count - told) + " more";
    }
    std::string operator()(const LeapDay& /*day*/) const { return "29 February of leap years"; }
    std::string operator()(const CalendarDay& day) const
    {
        switch (day.calendar) {
        case Calendar::Julian:
            return InOurCalendar(day.day) + ", Julian calendar";
        case Calendar::IslamicCivil:
            return InNamedMonth(day) + ", tabular Islamic calendar";
        case Calendar::Chinese:
            return InNumberedMonth(day.day, "Chinese");
        case Calendar::Korean:
            return InNumberedMonth(day.day, "Korean");
        case Calendar::Vietnamese:
            return InNumberedMonth(day.day, "Vietnamese");
        case Calendar::Persian:
            return WithMonth(day.day.day, MonthIn(kPersianMonths, day.day.month));
        case Calendar::Coptic:
            return WithMonth(day.day.day, MonthIn(kCopticMonths, day.day.month));
        case Calendar::Ethiopic:
            return WithMonth(day.day.day, MonthIn(kEthiopicMonths, day.day.month));
        case Calendar::Indian:
            return WithMonth(day.day.day, MonthIn(kIndianMonths, day.day.month));
        case Calendar::UmmAlQura:
        case Calendar::Hebrew:
            break;
        }
        return InNamedMonth(day);
    }
    std::string operator()(const SolarDay& day) const
    {
        constexpr int quarter = 90;
        constexpr std::array<std::string_view, 4> seasons = {
            "March equinox", "June solstice", "September equinox", "December solstice"};
        if (day.degrees % quarter == 0)
            return std::string(seasons.at(static_cast<std::size_t>(day.degrees / quarter))) +
                   PlaceWords(day.place);
        return "sun at " + std::to_string(day.degrees) + " degrees" + PlaceWords(day.place);
    }
    std::string operator()(const MoonDay& day) const
    {
        constexpr std::array<std::string_view, 4> phases = {"new moon", "first quarter",
                                                            "full moon", "last quarter"};
        return "every " + std::string(phases.at(static_cast<std::size_t>(day.phase))) +
               PlaceWords(day.place);
    }
    std::string operator()(const BetweenHolidays& /*day*/) const
    {
        return "a day between two holidays";
    }
};

} // namespace

std::string_view MonthInWords(int month)
{
    return kMonthWords.at(static_cast<std::size_t>(month) - 1);
}

std::string DateInWords(Date date, bool hasWeekday)
{
    constexpr std::size_t briefLength = 3;
    const std::chrono::year_month_day parts(date);
    const MonthDay day{static_cast<int>(static_cast<unsigned>(parts.month())),
                       static_cast<int>(static_cast<unsigned>(parts.day()))};
    std::string words;
    if (hasWeekday)
        (words += WeekdayWord(WeekdayOf(date)).substr(0, briefLength)) += ' ';
    return (words += InOurCalendar(day)) += ' ' + std::to_string(static_cast<int>(parts.year()));
}

std::string DayInWords(const RuleDay& day, Lists lists)
{
    return WithDays(std::visit(KindWords{lists}, day.kind), day.shift);
}

} // namespace orrery::holidays
