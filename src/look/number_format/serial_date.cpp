#include "look/number_format/serial_date.h"

#include <cmath>

namespace orrery::look {
namespace {

constexpr std::int64_t kSecondsOfDay = 86'400;
constexpr std::int64_t kLastDay = 2'958'465; // 9999-12-31
constexpr std::int64_t kDaysTo1904 = 1'462;
constexpr std::int64_t kLeapDay = 60; // 1900-02-29, which there never was. ECMA-376 18.17.4.1

/// The date so many days after 0000-03-01 of the Gregorian calendar. Years begin in March, so that
/// a leap day is a year's last.
void SetCivilDate(SerialDate& date, std::int64_t days)
{
    constexpr std::int64_t kDaysOf400Years = 146'097;
    const auto era = days / kDaysOf400Years;
    const auto dayOfEra = days % kDaysOf400Years;
    const auto yearOfEra =
        (dayOfEra - dayOfEra / 1'460 + dayOfEra / 36'524 - dayOfEra / 146'096) / 365;
    const auto dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const auto monthFromMarch = (5 * dayOfYear + 2) / 153;
    date.day = static_cast<int>(dayOfYear - (153 * monthFromMarch + 2) / 5 + 1);
    date.month = static_cast<int>(monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9);
    date.year = static_cast<int>(era * 400 + yearOfEra + (date.month <= 2 ? 1 : 0));
}

void SetDate(SerialDate& date, std::int64_t day)
{
    constexpr std::int64_t kDaysTo1900 = 693'899; // from 0000-03-01 to 1899-12-30
    date.weekday = static_cast<int>((day + 6) % 7);
    if (day == 0) {
        date.year = 1900;
        date.month = 1;
        date.day = 0;
    }
    else if (day == kLeapDay) {
        date.year = 1900;
        date.month = 2;
        date.day = 29;
    }
    else {
        SetCivilDate(date, kDaysTo1900 + day + (day < kLeapDay ? 1 : 0));
    }
}

} // namespace

std::optional<SerialDate> ToSerialDate(double serial, int digits, book::DateSystem dates)
{
    const std::int64_t shift = dates == book::DateSystem::From1904 ? kDaysTo1904 : 0;
    if (!(serial >= 0 && serial < static_cast<double>(kLastDay + 1 - shift))) {
        return std::nullopt;
    }
    std::int64_t unit = 1;
    for (int i = 0; i < digits; ++i) {
        unit *= 10;
    }
    const double whole = std::floor(serial);
    const auto units = std::llround((serial - whole) * static_cast<double>(kSecondsOfDay * unit));
    const auto seconds = static_cast<std::int64_t>(whole) * kSecondsOfDay + units / unit;
    const auto day = seconds / kSecondsOfDay + shift;
    if (day > kLastDay) {
        return std::nullopt;
    }
    SerialDate date;
    SetDate(date, day);
    date.totalSeconds = seconds;
    date.fraction = static_cast<int>(units % unit);
    date.hour = static_cast<int>(seconds % kSecondsOfDay / 3'600);
    date.minute = static_cast<int>(seconds % 3'600 / 60);
    date.second = static_cast<int>(seconds % 60);
    return date;
}

} // namespace orrery::look
