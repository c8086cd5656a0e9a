#include "engines/builtin/xlsx/look/cells/iso_date.h"

#include <charconv>
#include <chrono>
#include <cstddef>

namespace orrery::xlsx {
namespace {

/// Takes digits and the sign after them, if there is one, off the text.
std::optional<int> TakeDigits(std::string_view& text, std::size_t digits, char sign)
{
    int number = 0;
    const char* const end = text.data() + std::min(digits, text.size());
    const auto [behind, error] = std::from_chars(text.data(), end, number);
    if (text.size() < digits || error != std::errc() || behind != end || number < 0)
        return std::nullopt;
    text.remove_prefix(digits);
    if (sign != '\0') {
        if (!text.starts_with(sign))
            return std::nullopt;
        text.remove_prefix(1);
    }
    return number;
}

std::optional<double> DayNumber(std::string_view& text, book::DateSystem system)
{
    using namespace std::chrono;
    const auto yearNumber = TakeDigits(text, 4, '-');
    const auto monthNumber = yearNumber ? TakeDigits(text, 2, '-') : std::nullopt;
    const auto dayNumber = monthNumber ? TakeDigits(text, 2, '\0') : std::nullopt;
    if (!dayNumber)
        return std::nullopt;
    const year_month_day date{year(*yearNumber), month(static_cast<unsigned>(*monthNumber)),
                              day(static_cast<unsigned>(*dayNumber))};
    if (!date.ok())
        return std::nullopt;
    const sys_days days(date);
    if (system == book::DateSystem::From1904)
        return static_cast<double>((days - sys_days(year(1904) / 1 / 1)).count());
    // The 29th of February 1900, which there never was, has the number 60.
    const bool isEarly = days < sys_days(year(1900) / 3 / 1);
    const sys_days zero(isEarly ? year(1899) / 12 / 31 : year(1899) / 12 / 30);
    return static_cast<double>((days - zero).count());
}

/// "18:30:00.5" as a share of a day; seconds may be missing.
std::optional<double> ShareOfDay(std::string_view text)
{
    constexpr double kSecondsOfDay = 86400;
    if (text.ends_with('Z'))
        text.remove_suffix(1);
    const auto hours = TakeDigits(text, 2, ':');
    const auto minutes = hours ? TakeDigits(text, 2, '\0') : std::nullopt;
    if (!minutes)
        return std::nullopt;
    double seconds = 0;
    if (text.starts_with(':')) {
        const char* const end = text.data() + text.size();
        const auto [behind, error] =
            std::from_chars(text.data() + 1, end, seconds, std::chars_format::fixed);
        if (error != std::errc() || behind != end)
            return std::nullopt;
    }
    else if (!text.empty()) {
        return std::nullopt;
    }
    if (*hours > 24 || *minutes > 59 || !(seconds >= 0 && seconds < 61))
        return std::nullopt;
    return (*hours * 3600 + *minutes * 60 + seconds) / kSecondsOfDay;
}

} // namespace

std::optional<double> ParseIsoDate(std::string_view text, book::DateSystem system)
{
    if (text.find('-') == text.npos)
        return ShareOfDay(text.starts_with('T') ? text.substr(1) : text);
    const auto day = DayNumber(text, system);
    if (!day || text.empty())
        return day;
    if (text.front() != 'T' && text.front() != ' ')
        return std::nullopt;
    const auto share = ShareOfDay(text.substr(1));
    return share ? std::optional(*day + *share) : std::nullopt;
}

} // namespace orrery::xlsx
