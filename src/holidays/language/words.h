#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::holidays {

/// The words of a text, in capitals; blanks and tabs separate them.
std::vector<std::string> WordsOf(std::string_view text);

/// A whole number of digits with an optional sign; nothing for another text or more than nine
/// digits.
std::optional<int> IntegerOf(std::string_view text);

/// 1 Sunday to 7 Saturday of "SUN" or "SUNDAY".
std::optional<std::int16_t> WeekdayOfWord(std::string_view word);

/// The word of a list that is most like a text; nothing if none is.
std::optional<std::string_view> ClosestWord(std::string_view text,
                                            std::span<const std::string_view> words);

} // namespace orrery::holidays
