#include "holidays/date.h"

#include "util/checked.h"
#include "util/error.h"

#include <array>
#include <cstddef>

namespace orrery::holidays {
namespace {

using util::Add16;
using util::Multiply16;
using util::Narrow16;
using util::Subtract16;

constexpr std::array<std::int16_t, 12> kDaysInMonth = {31, 28, 31, 30, 31, 30,
                                                       31, 31, 30, 31, 30, 31};

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
    // Months since January of year 0. A 16-bit day moves a date by less than ninety years, so
    // outside this range no day can bring it back into the years [1:9999].
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
    // Every intermediate result is 16 bits wide; 5 x year is the first to overflow.
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

} // namespace orrery::holidays
