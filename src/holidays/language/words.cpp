#include "holidays/language/words.h"

#include "holidays/holiday_rule.h"
#include "util/text.h"

#include <algorithm>
#include <charconv>
#include <numeric>

namespace orrery::holidays {
namespace {

/// How many characters have to be put in, left out or exchanged.
std::size_t EditDistance(std::string_view a, std::string_view b)
{
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t exchanged = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({exchanged, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

} // namespace

std::vector<std::string> WordsOf(std::string_view text)
{
    constexpr std::string_view blanks = " \t";
    std::vector<std::string> words;
    while (true) {
        const std::size_t begin = text.find_first_not_of(blanks);
        if (begin == std::string_view::npos)
            return words;
        text.remove_prefix(begin);
        const std::size_t end = std::min(text.find_first_of(blanks), text.size());
        words.push_back(util::ToUpperAscii(text.substr(0, end)));
        text.remove_prefix(end);
    }
}

std::optional<int> IntegerOf(std::string_view text)
{
    constexpr std::size_t mostDigits = 9;
    const bool isSigned = text.starts_with('+') || text.starts_with('-');
    const std::string_view digits = text.substr(isSigned ? 1 : 0);
    if (digits.empty() || digits.size() > mostDigits)
        return std::nullopt;
    int value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc() || end != digits.data() + digits.size() || digits.front() == '-')
        return std::nullopt;
    return text.starts_with('-') ? -value : value;
}

std::optional<std::int16_t> WeekdayOfWord(std::string_view word)
{
    constexpr std::size_t briefLength = 3;
    for (std::int16_t weekday = kFirstWeekday; weekday <= kLastWeekday; ++weekday) {
        const std::string full = util::ToUpperAscii(kKindWords[static_cast<std::size_t>(weekday)]);
        if (word == full || word == full.substr(0, briefLength))
            return weekday;
    }
    return std::nullopt;
}

std::optional<std::string_view> ClosestWord(std::string_view text,
                                            std::span<const std::string_view> words)
{
    constexpr std::size_t mostLength = 40; // nobody means a word with a longer text
    std::optional<std::string_view> closest;
    std::size_t least = 2 * text.size() / 5 + 1; // two letters changed places in "yaers"
    if (text.size() > mostLength)
        return std::nullopt;
    for (const std::string_view word : words) {
        const std::size_t distance = EditDistance(text, word);
        if (distance < least) {
            least = distance;
            closest = word;
        }
    }
    return closest;
}

} // namespace orrery::holidays
