#include "look/evaluate/values/dates.h"

#include <cmath>

namespace orrery::formula {
namespace {

using book::DateSystem;

constexpr double kSystemGap = 1462; // from 1900-01-00 to 1904-01-01
constexpr double kLastSerial = 2'958'465;
constexpr std::int32_t kFakeLeapDay = 60;
constexpr std::int64_t kEpochs = 25'569; // serial number of 1970-01-01
constexpr std::int64_t kEraDays = 146'097;

/// After H. Hinnant's calendar arithmetic: years begin in March.
Day CivilDay(std::int64_t days)
{
    const std::int64_t shifted = days + 719'468;
    const std::int64_t era = (shifted >= 0 ? shifted : shifted - kEraDays + 1) / kEraDays;
    const std::int64_t dayOfEra = shifted - era * kEraDays;
    const std::int64_t yearOfEra =
        (dayOfEra - dayOfEra / 1'460 + dayOfEra / 36'524 - dayOfEra / 146'096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t monthFromMarch = (5 * dayOfYear + 2) / 153;
    const std::int64_t month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
    const std::int64_t year = yearOfEra + era * 400 + (month <= 2 ? 1 : 0);
    return {static_cast<std::int32_t>(year), static_cast<std::int32_t>(month),
            static_cast<std::int32_t>(dayOfYear - (153 * monthFromMarch + 2) / 5 + 1)};
}

double LastSerial(DateSystem system)
{
    return system == DateSystem::From1904 ? kLastSerial - kSystemGap : kLastSerial;
}

} // namespace

std::int64_t CivilDays(std::int64_t year, std::int64_t month, std::int64_t day)
{
    const std::int64_t months = month - 1;
    std::int64_t years = months >= 0 ? months / 12 : -((11 - months) / 12);
    const std::int64_t inYear = months - years * 12 + 1;
    years += year - (inYear <= 2 ? 1 : 0);
    const std::int64_t era = (years >= 0 ? years : years - 399) / 400;
    const std::int64_t yearOfEra = years - era * 400;
    const std::int64_t dayOfYear = (153 * (inYear + (inYear > 2 ? -3 : 9)) + 2) / 5;
    const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * kEraDays + dayOfEra - 719'468 + day - 1;
}

std::optional<Day> DayOfSerial(double serial, DateSystem system)
{
    if (!(serial >= 0 && serial < LastSerial(system) + 1))
        return std::nullopt;
    auto days = static_cast<std::int64_t>(std::floor(serial));
    if (system == DateSystem::From1904)
        return CivilDay(days + static_cast<std::int64_t>(kSystemGap) - kEpochs);
    if (days == 0)
        return Day{1900, 1, 0};
    if (days == kFakeLeapDay)
        return Day{1900, 2, 29};
    if (days < kFakeLeapDay)
        ++days;
    return CivilDay(days - kEpochs);
}

std::optional<double> SerialOfDay(double year, double month, double day, DateSystem system)
{
    constexpr double kFar = 10'000'000;
    if (!(std::fabs(year) < kFar && std::fabs(month) < kFar && std::fabs(day) < kFar))
        return std::nullopt;
    std::int64_t serial =
        CivilDays(static_cast<std::int64_t>(year), static_cast<std::int64_t>(month), 1) + kEpochs;
    if (system == DateSystem::From1904)
        serial -= static_cast<std::int64_t>(kSystemGap);
    else if (serial <= kFakeLeapDay) // the first of January or of February 1900
        --serial;
    const double result = static_cast<double>(serial) + day - 1;
    if (result < 0 || result > LastSerial(system))
        return std::nullopt;
    return result;
}

bool IsLeapYear(std::int32_t year)
{
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

std::int32_t DaysInMonthOf(std::int32_t year, std::int32_t month, DateSystem system)
{
    if (month == 2)
        return IsLeapYear(year) || (year == 1900 && system == DateSystem::From1900) ? 29 : 28;
    return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

int WeekdayOfSerial(double serial, DateSystem system)
{
    const double days = std::floor(serial) + (system == DateSystem::From1904 ? kSystemGap : 0) + 6;
    return static_cast<int>(days - 7 * std::floor(days / 7));
}

double FromSystem1900(double serial, DateSystem system)
{
    return system == DateSystem::From1904 ? serial - kSystemGap : serial;
}

} // namespace orrery::formula
