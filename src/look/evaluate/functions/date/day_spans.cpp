#include "look/evaluate/functions/date/date.h"

#include "look/evaluate/values/dates.h"
#include "util/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <set>

namespace orrery::formula {
namespace {

/// The day of an argument; fails if it is none.
Day DayOf(Call& call, std::size_t at)
{
    const auto day = DayOfSerial(call.Number(at), call.Dates());
    call.Require(day.has_value());
    return day.value_or(Day{});
}

double FirstOfYear(Call& call, std::int32_t year)
{
    return SerialOfDay(year, 1, 1, call.Dates()).value_or(0);
}

/// ISO 8601: the week of the year that has its Thursday.
double IsoWeek(Call& call, double serial)
{
    const double day = std::floor(serial);
    const double thursday = day + 3 - (WeekdayOfSerial(day, call.Dates()) + 6) % 7;
    const auto year = DayOfSerial(thursday, call.Dates());
    if (!call.Require(year.has_value()))
        return 0;
    return std::floor((thursday - FirstOfYear(call, year->year)) / 7) + 1;
}

Value WeekNumber(Call& call)
{
    const double serial = std::floor(call.Number(0));
    const double type = call.Whole(1, 1);
    const Day day = DayOf(call, 0);
    if (type == 21)
        return IsoWeek(call, serial);
    int firstDay = 0; // of a week: 0 Sunday
    if (type == 2 || type == 11)
        firstDay = 1;
    else if (type >= 12 && type <= 17)
        firstDay = static_cast<int>(type - 10) % 7;
    else if (type != 1)
        return CellError::Number;
    const double newYear = FirstOfYear(call, day.year);
    const int offset = (WeekdayOfSerial(newYear, call.Dates()) + 7 - firstDay) % 7;
    return std::floor((serial - newYear + offset) / 7) + 1;
}

/// Days without work: weekdays, 0 is Monday, and holidays.
struct WorkingWeek {
    std::array<bool, 7> isFree = {false, false, false, false, false, true, true};
    std::set<double> holidays;

    bool IsWorkday(double day, book::DateSystem system) const
    {
        const auto weekday = static_cast<std::size_t>((WeekdayOfSerial(day, system) + 6) % 7);
        return !isFree[weekday] && holidays.count(day) == 0;
    }
    int WorkdaysInWeek() const
    {
        return static_cast<int>(std::count(isFree.begin(), isFree.end(), false));
    }
};

/// "0000011", or a number: 1 to 7 for two days, 11 to 17 for one.
void ReadWeekend(Call& call, std::size_t at, WorkingWeek& week)
{
    if (!call.Has(at))
        return;
    const Value value = call.Single(at);
    if (const auto* text = std::get_if<std::string>(&value)) {
        if (!call.Require(text->size() == 7 && text->find_first_not_of("01") == std::string::npos,
                          CellError::Value))
            return;
        for (std::size_t day = 0; day < 7; ++day)
            week.isFree[day] = (*text)[day] == '1';
        return;
    }
    const double type = call.Whole(at);
    if (!call.Require((type >= 1 && type <= 7) || (type >= 11 && type <= 17)))
        return;
    week.isFree.fill(false);
    const auto number = static_cast<std::size_t>(type);
    week.isFree[(number > 10 ? number - 11 + 6 : number + 4) % 7] = true;
    if (number < 10)
        week.isFree[(number + 5) % 7] = true;
}

WorkingWeek ReadWeek(Call& call, std::optional<std::size_t> weekend, std::size_t holidays)
{
    WorkingWeek week;
    if (weekend)
        ReadWeekend(call, *weekend, week);
    call.ForEach(holidays, [&](const Value& value, Call::Source) {
        week.holidays.insert(std::floor(call.Convert(value)));
        return !call.failure;
    });
    return week;
}

/// Whole weeks are counted at once, so that the work does not grow with the span.
double WorkdaysBetween(double first, double last, const WorkingWeek& week, book::DateSystem system)
{
    const double weeks = std::floor((last - first + 1) / 7);
    double count = weeks * week.WorkdaysInWeek();
    WorkingWeek plain = week;
    plain.holidays.clear();
    double day = first + weeks * 7;
    while (day <= last)
        count += plain.IsWorkday(day++, system) ? 1 : 0;
    for (const double holiday : week.holidays)
        count -= holiday >= first && holiday <= last && plain.IsWorkday(holiday, system) ? 1 : 0;
    return count;
}

Value NetWorkdays(Call& call, std::optional<std::size_t> weekend, std::size_t holidays)
{
    const WorkingWeek week = ReadWeek(call, weekend, holidays);
    const double first = std::floor(call.Number(0));
    const double last = std::floor(call.Number(1));
    DayOf(call, 0);
    DayOf(call, 1);
    if (call.failure)
        return {};
    return first <= last ? WorkdaysBetween(first, last, week, call.Dates())
                         : -WorkdaysBetween(last, first, week, call.Dates());
}

Value Workday(Call& call, std::optional<std::size_t> weekend, std::size_t holidays)
{
    const WorkingWeek week = ReadWeek(call, weekend, holidays);
    double day = std::floor(call.Number(0));
    double left = std::trunc(call.Number(1));
    DayOf(call, 0);
    if (call.failure || week.WorkdaysInWeek() == 0)
        return CellError::Value;
    const double step = left < 0 ? -1 : 1;
    // Days may be left out, so whole weeks lead at most to the day, and single steps further.
    for (left = std::fabs(left); left > 0;) {
        if (!DayOfSerial(day + step, call.Dates()))
            return CellError::Number;
        day += step;
        left -= week.IsWorkday(day, call.Dates()) ? 1 : 0;
        if (!call.context.Spend(1))
            return {};
    }
    return day;
}

Value DateDif(Call& call)
{
    const double first = std::floor(call.Number(0));
    const double last = std::floor(call.Number(1));
    const std::string unit = util::ToUpperAscii(call.Text(2));
    const Day from = DayOf(call, 0);
    const Day to = DayOf(call, 1);
    if (first > last)
        return CellError::Number;
    const bool isDayReached = to.day >= from.day;
    const std::int32_t months =
        (to.year - from.year) * 12 + to.month - from.month - (isDayReached ? 0 : 1);
    if (unit == "D")
        return last - first;
    if (unit == "M")
        return static_cast<double>(months);
    if (unit == "Y")
        return std::floor(months / 12.0);
    if (unit == "YM")
        return static_cast<double>(months % 12);
    const auto since = [&](double year, double month) {
        return SerialOfDay(year, month, from.day, call.Dates()).value_or(last);
    };
    if (unit == "MD")
        return last - since(to.year, to.month - (isDayReached ? 0 : 1));
    if (unit == "YD") {
        const double thisYear = since(to.year, from.month);
        return last - (thisYear <= last ? thisYear : since(to.year - 1, from.month));
    }
    return CellError::Number;
}

bool IsLastOfFebruary(const Day& day, book::DateSystem system)
{
    return day.month == 2 && day.day == DaysInMonthOf(day.year, 2, system);
}

/// Days of a year of twelve months of thirty days.
double Days360(Day from, Day to, bool isEuropean, book::DateSystem system, bool isYearPart)
{
    if (isEuropean) {
        from.day = std::min(from.day, 30);
        to.day = std::min(to.day, 30);
    }
    else {
        const bool isFebruary = IsLastOfFebruary(from, system);
        if (isYearPart && isFebruary && IsLastOfFebruary(to, system))
            to.day = 30;
        if (isFebruary || from.day == 31)
            from.day = 30;
        if (to.day == 31) {
            if (from.day >= 30)
                to.day = 30;
            else if (!isYearPart) {
                to.day = 1;
                ++to.month;
            }
        }
    }
    return (to.year - from.year) * 360.0 + (to.month - from.month) * 30.0 + (to.day - from.day);
}

/// The average length of the years of a span, if it is longer than one.
double YearLength(Call& call, const Day& from, const Day& to)
{
    const bool isWithinYear =
        to.year == from.year ||
        (to.year == from.year + 1 &&
         (to.month < from.month || (to.month == from.month && to.day <= from.day)));
    if (!isWithinYear)
        return (FirstOfYear(call, to.year + 1) - FirstOfYear(call, from.year)) /
               (to.year - from.year + 1);
    if (from.year == to.year)
        return IsLeapYear(from.year) ? 366 : 365;
    const bool isAfterLeapDay = to.month > 2 || (to.month == 2 && to.day == 29);
    const bool hasLeapDay =
        (IsLeapYear(from.year) && from.month <= 2) || (IsLeapYear(to.year) && isAfterLeapDay);
    return hasLeapDay ? 366 : 365;
}

Value YearFraction(Call& call)
{
    const double basis = call.Whole(2, 0);
    Day from = DayOf(call, 0);
    Day to = DayOf(call, 1);
    double first = std::floor(call.Number(0));
    double last = std::floor(call.Number(1));
    if (basis < 0 || basis > 4)
        return CellError::Number;
    if (first > last) {
        std::swap(from, to);
        std::swap(first, last);
    }
    if (basis == 0 || basis == 4)
        return Days360(from, to, basis == 4, call.Dates(), true) / 360;
    if (basis == 1)
        return (last - first) / YearLength(call, from, to);
    return (last - first) / (basis == 2 ? 360 : 365);
}

} // namespace

const FunctionList& DaySpanFunctions()
{
    static const FunctionList kFunctions = {
        {"WEEKNUM", "v|v", WeekNumber},
        {"ISOWEEKNUM", "v",
         [](Call& call) -> Value {
             DayOf(call, 0);
             return IsoWeek(call, call.Number(0));
         }},
        {"NETWORKDAYS", "vv|r", [](Call& call) { return NetWorkdays(call, std::nullopt, 2); }},
        {"NETWORKDAYS.INTL", "vv|vr", [](Call& call) { return NetWorkdays(call, 2, 3); }},
        {"WORKDAY", "vv|r", [](Call& call) { return Workday(call, std::nullopt, 2); }},
        {"WORKDAY.INTL", "vv|vr", [](Call& call) { return Workday(call, 2, 3); }},
        {"DATEDIF", "vvv", DateDif},
        {"DAYS", "vv",
         [](Call& call) -> Value {
             return std::floor(call.Number(0)) - std::floor(call.Number(1));
         }},
        {"DAYS360", "vv|v",
         [](Call& call) -> Value {
             const Day from = DayOf(call, 0);
             return Days360(from, DayOf(call, 1), call.Logical(2), call.Dates(), false);
         }},
        {"YEARFRAC", "vv|v", YearFraction},
    };
    return kFunctions;
}

} // namespace orrery::formula
