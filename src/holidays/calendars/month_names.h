#pragma once

#include "holidays/calendars/calendar.h"

#include <string_view>

namespace orrery::holidays::calendars {

/// A month by its number, as in `CalendarDate`.
struct MonthNumber {
    int number = 0;
    bool leap = false; ///< Adar I
    friend bool operator==(const MonthNumber&, const MonthNumber&) = default;
};

/// The month of an Islamic or the Hebrew calendar with an English name in one of its usual
/// spellings: "Shawwal", "Dhu al-Hijja", "Dhul-Hijjah", "Rabi II", "Tishrei". Capitals, blanks,
/// hyphens and apostrophes do not matter. Nullopt for other names and calendars.
std::optional<MonthNumber> FindMonth(Calendar calendar, std::string_view name);

/// The name of a month of an Islamic or the Hebrew calendar; empty for other calendars and
/// numbers.
std::string_view MonthName(Calendar calendar, MonthNumber month);

} // namespace orrery::holidays::calendars
