#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace orrery::exchange {

/// A language in which a word is the name of a month.
struct MonthWord {
    std::uint16_t language = 0; ///< Windows' identifier
    int month = 0;              ///< [1:12]
};

inline constexpr std::uint16_t kEnglishWords = 0x0409;

/// Without capitals and composed, as words of dates are compared. Points at its end are gone.
std::string FoldWord(std::string_view word);

/// The languages in which a folded word is a month, in full or short, English first.
std::span<const MonthWord> MonthsOf(const std::string& word);

/// Whether a folded word may stand in a date without telling it: a weekday, "of", the ending of
/// "1st".
bool IsFillWord(const std::string& word);

} // namespace orrery::exchange
