#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace orrery::look {

/// How a language writes dates.
struct LocaleNames {
    std::uint16_t language;    ///< Windows' language identifier
    std::string_view tag;      ///< "en-US"
    std::string_view longDate; ///< the system's long date, as a number format code
    std::string_view longTime; ///< the system's long time, as a number format code
    std::array<std::string_view, 2> halvesOfDay;
    std::array<std::string_view, 7> days; ///< Sunday first
    std::array<std::string_view, 7> shortDays;
    std::array<std::string_view, 12> months;
    std::array<std::string_view, 12> shortMonths;
    std::array<std::string_view, 12> monthsOfDate; ///< as behind the number of a day
};

/// Rising by language.
extern const std::array<LocaleNames, 60> kLocaleTable;

} // namespace orrery::look
