#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orrery::holidays {

// The lines of a template's parameter file, which contain parameters and holiday rules.

inline constexpr std::string_view kMonthlySection = "[Monthly Calendar]";
inline constexpr std::string_view kYearlySection = "[Yearly Calendar]";
inline constexpr std::string_view kHolidaysSection = "[Holidays]";

/// A "key=value" line. The key is the first token in upper case; blanks around "=" and after the
/// value do not count.
struct KeyLine {
    std::string key;
    std::string_view value; ///< part of the line that was read; never empty
};

/// Returns nothing for a line without "=" after its first token, or without a value.
///     accepted: " outWeekday = y"
///     rejected: "Output", "Output=", "Output==Y" ("==" is a token of its own)
std::optional<KeyLine> ReadKeyLine(std::string_view line);

/// Whether an upper-case key introduces a holiday rule: "HOLIDAY", "HOLIDAY12".
bool IsHolidayKey(std::string_view key);

} // namespace orrery::holidays
