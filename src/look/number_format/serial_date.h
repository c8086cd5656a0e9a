#pragma once

#include "book/date_system.h"

#include <cstdint>
#include <optional>

namespace orrery::look {

/// A point in time as a workbook counts it.
struct SerialDate {
    int year = 1900;
    int month = 1;
    int day = 0;     ///< 0 is the day before 1900-01-01: "1900-01-00"
    int weekday = 0; ///< 0 is Sunday; before March 1900 one day too early, as in Excel
    int hour = 0;
    int minute = 0;
    int second = 0;
    int fraction = 0;              ///< of a second, in the unit that was asked for
    std::int64_t totalSeconds = 0; ///< since day 0, without the fraction
};

/// `digits` [0:3] is how many digits of a second are wanted: the time is rounded to them. Nothing
/// for a serial number that is negative or behind the year 9999.
std::optional<SerialDate> ToSerialDate(double serial, int digits, book::DateSystem dates);

} // namespace orrery::look
