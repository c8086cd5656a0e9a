#include "look/evaluate/functions/date/date.h"

#include "look/evaluate/values/dates.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace orrery::formula {
namespace {

Value SerialOrError(const std::optional<double>& serial)
{
    return serial ? Value(*serial) : Value(CellError::Number);
}

Value Date(Call& call)
{
    double year = std::trunc(call.Number(0));
    const double month = std::trunc(call.Number(1));
    const double day = std::trunc(call.Number(2));
    if (year < 0 || year > 9999)
        return CellError::Number;
    if (year < (call.Dates() == book::DateSystem::From1904 ? 1904 : 1900))
        year += 1900;
    return SerialOrError(SerialOfDay(year, month, day, call.Dates()));
}

template <std::int32_t Day::*Part> Value PartOfDay(Call& call)
{
    const auto day = DayOfSerial(call.Number(0), call.Dates());
    return day ? Value(static_cast<double>((*day).*Part)) : Value(CellError::Number);
}

/// The hour, minute or second of a moment, rounded to seconds.
template <int Unit, int Range> Value PartOfTime(Call& call)
{
    const double moment = call.Number(0);
    if (moment < 0)
        return CellError::Number;
    const double seconds = std::round((moment - std::floor(moment)) * 86'400);
    return std::fmod(std::floor(seconds / Unit), Range);
}

Value Time(Call& call)
{
    const double seconds = std::trunc(call.Number(0)) * 3600 + std::trunc(call.Number(1)) * 60 +
                           std::trunc(call.Number(2));
    if (seconds < 0 || std::fabs(seconds) > 1e12)
        return CellError::Number;
    return std::fmod(seconds, 86'400) / 86'400;
}

Value Weekday(Call& call)
{
    const double serial = call.Number(0);
    const double type = call.Whole(1, 1);
    if (!DayOfSerial(serial, call.Dates()))
        return CellError::Number;
    const int day = WeekdayOfSerial(serial, call.Dates()); // 0 is Sunday
    if (type == 1)
        return day + 1.0;
    if (type == 2)
        return (day + 6) % 7 + 1.0;
    if (type == 3)
        return (day + 6) % 7 + 0.0;
    if (type < 11 || type > 17) // 11 begins on Monday, 17 on Sunday
        return CellError::Number;
    return (day + 7 - static_cast<int>(type - 10) % 7) % 7 + 1.0;
}

/// A month later or earlier; a day that it does not have becomes its last one.
std::optional<double> MonthsLater(Call& call, bool takesLastDay)
{
    const auto day = DayOfSerial(call.Number(0), call.Dates());
    const double months = std::trunc(call.Number(1));
    if (!day || std::fabs(months) > 200'000)
        return std::nullopt;
    const std::int32_t sum = day->year * 12 + day->month - 1 + static_cast<std::int32_t>(months);
    if (sum < 0)
        return std::nullopt;
    const std::int32_t year = sum / 12;
    const std::int32_t month = sum % 12 + 1;
    const std::int32_t last = DaysInMonthOf(year, month, call.Dates());
    return SerialOfDay(year, month, takesLastDay ? last : std::min(day->day, last), call.Dates());
}

Value DateValue(Call& call)
{
    const Value value = call.Single(0);
    const auto* text = std::get_if<std::string>(&value);
    const auto date = text != nullptr ? DateOfText(*text, call.context.Rules()) : std::nullopt;
    return date ? Value(std::floor(*date)) : IsError(value) ? value : Value(CellError::Value);
}

Value TimeValue(Call& call)
{
    const Value value = call.Single(0);
    const auto* text = std::get_if<std::string>(&value);
    const auto moment = text != nullptr ? NumberOfText(*text, call.context.Rules()) : std::nullopt;
    return moment           ? Value(*moment - std::floor(*moment))
           : IsError(value) ? value
                            : Value(CellError::Value);
}

/// Easter Sunday as the Gregorian church counts it, known to LibreOffice's files.
Value EasterSunday(Call& call)
{
    double given = call.Whole(0);
    if (given < 30)
        given += 2000;
    else if (given < 100)
        given += 1900;
    if (given < 1583 || given > 9956)
        return CellError::Number;
    const int year = static_cast<int>(given);
    const int century = year / 100;
    const int golden = year % 19;
    const int moon =
        (19 * golden + century - century / 4 - (century - (century + 8) / 25 + 1) / 3 + 15) % 30;
    const int weekday = (32 + 2 * (century % 4) + 2 * (year % 100 / 4) - moon - year % 100 % 4) % 7;
    const int late = (golden + 11 * moon + 22 * weekday) / 451;
    const int days = moon + weekday - 7 * late + 114;
    const int month = days / 31;
    return SerialOrError(SerialOfDay(year, month, days % 31 + 1, call.Dates()));
}

} // namespace

const FunctionList& DateFunctions()
{
    static const FunctionList kFunctions = {
        {"DATE", "vvv", Date},
        {"YEAR", "v", PartOfDay<&Day::year>},
        {"MONTH", "v", PartOfDay<&Day::month>},
        {"DAY", "v", PartOfDay<&Day::day>},
        {"HOUR", "v", PartOfTime<3600, 24>},
        {"MINUTE", "v", PartOfTime<60, 60>},
        {"SECOND", "v", PartOfTime<1, 60>},
        {"TIME", "vvv", Time},
        {"WEEKDAY", "v|v", Weekday},
        {"EDATE", "vv", [](Call& call) { return SerialOrError(MonthsLater(call, false)); }},
        {"EOMONTH", "vv", [](Call& call) { return SerialOrError(MonthsLater(call, true)); }},
        {"DATEVALUE", "v", DateValue},
        {"TIMEVALUE", "v", TimeValue},
        {"NOW", "", [](Call& call) -> Value { return call.context.Rules().now; }},
        {"TODAY", "", [](Call& call) -> Value { return std::floor(call.context.Rules().now); }},
        {"EASTERSUNDAY", "v", EasterSunday},
    };
    return kFunctions;
}

} // namespace orrery::formula
