#pragma once

#include "holidays/date.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::exchange {

enum class DateOrder { DayMonthYear, MonthDayYear, YearMonthDay };
inline constexpr std::array<DateOrder, 3> kDateOrders = {
    DateOrder::DayMonthYear, DateOrder::MonthDayYear, DateOrder::YearMonthDay};

/// How the dates of a file are read.
struct DateReading {
    DateOrder order = DateOrder::DayMonthYear; ///< of dates in three numbers
    std::uint16_t language = 0x0409;           ///< of a month that several languages name so
    friend bool operator==(const DateReading&, const DateReading&) = default;
};

/// The parts of a text that is a date in some order: three numbers, or two and a month.
struct DateParts {
    struct Number {
        int value = 0;
        int digits = 0; ///< 1, 2 or 4
    };
    std::vector<Number> numbers;
    std::string month; ///< the folded word; empty: a number is the month
    bool hasPoints = false;
};

/// The parts of a date; a weekday in front, the time behind it and words like "of" do not count.
/// They are not checked: `DateOf` may still find no date.
///     accepted: "1.5.2027" "5/1/27" "2027-05-01T00:00:00" "20270501" "Sat, 1st of May 2027"
///               "1 mai 2027" "2027年5月1日"
///     rejected: "46508" "1.5." "May 2027" "1 Foo 2027"
std::optional<DateParts> SplitDate(std::string_view text);

/// The date; nothing if there is no such day. Years of two digits are those from 1970 to 2069.
std::optional<holidays::Date> DateOf(const DateParts& parts, const DateReading& reading);

/// The orders in which the parts can be meant. With points between them, the month is never first,
/// and neither is a year of two digits.
std::vector<DateOrder> OrdersOf(const DateParts& parts);

/// Whether a text is some day, in whatever order.
bool IsDate(std::string_view text);

} // namespace orrery::exchange
