#pragma once

#include "book/date_system.h"

#include <cstdint>
#include <optional>

namespace orrery::formula {

/// A day of a calendar as Excel sees it: in the system of 1900 there are 1900-02-29 and 1900-01-00.
struct Day {
    std::int32_t year = 1900;
    std::int32_t month = 1;
    std::int32_t day = 1;
    friend bool operator==(const Day&, const Day&) = default;
};

/// Days since 1970-01-01 of the proleptic Gregorian calendar; months beyond [1:12] roll over.
std::int64_t CivilDays(std::int64_t year, std::int64_t month, std::int64_t day);

/// The day of a serial number; its fraction does not count. Nothing before day 0 and after
/// 9999-12-31.
std::optional<Day> DayOfSerial(double serial, book::DateSystem system);
/// The serial number of a day; months and days roll over. Nothing outside what DayOfSerial takes.
std::optional<double> SerialOfDay(double year, double month, double day, book::DateSystem system);

std::int32_t DaysInMonthOf(std::int32_t year, std::int32_t month, book::DateSystem system);
bool IsLeapYear(std::int32_t year);
/// 0 Sunday to 6 Saturday. Counts the 29th of February 1900, too: its system begins on a Sunday.
int WeekdayOfSerial(double serial, book::DateSystem system);
/// A serial number of the system of 1900, in the given one.
double FromSystem1900(double serial, book::DateSystem system);

} // namespace orrery::formula
