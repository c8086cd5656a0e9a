#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orrery::holidays {

// The lines of a template's parameter file, which hold parameters and holiday rules.

inline constexpr std::string_view kMonthlySection = "[Monthly Calendar]";
inline constexpr std::string_view kYearlySection = "[Yearly Calendar]";

/// One "key=value" line. The key is its first token in upper case; blanks around "=" and at both
/// ends of the value do not count.
struct KeyLine {
    std::string key;
    std::string_view value; ///< of the line that was read; never empty
};

/// Nothing for a line without "=" behind its first token, or without a value.
///     accepted: " outWeekday = y"
///     rejected: "Output", "Output=", "Output==Y" ("==" is a token of its own)
std::optional<KeyLine> ReadKeyLine(std::string_view line);

/// Whether the key (in upper case) is that of a holiday rule: "HOLIDAY", "HOLIDAY12".
bool IsHolidayKey(std::string_view key);

} // namespace orrery::holidays
