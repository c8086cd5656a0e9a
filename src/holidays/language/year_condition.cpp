#include "holidays/language/year_condition.h"

#include "holidays/language/words.h"

#include <algorithm>

namespace orrery::holidays {
namespace {

constexpr int kLastRuleYear = 9999;

/// "2012", "2006-", "-2019", "1990-1999".
std::optional<YearRange> ParseRange(std::string_view word)
{
    const std::size_t dash = word.find('-');
    const std::string_view first = word.substr(0, dash);
    const std::string_view last = dash == std::string_view::npos ? first : word.substr(dash + 1);
    YearRange range;
    for (const auto& [text, year] : {std::pair{first, &range.first}, {last, &range.last}}) {
        const auto number = IntegerOf(text);
        if (number && IsRuleYear(*number) && !text.starts_with('+'))
            *year = *number;
        else if (!text.empty())
            return std::nullopt;
    }
    const bool isEmpty = first.empty() && last.empty();
    return isEmpty || range.last < range.first ? std::nullopt : std::optional(range);
}

/// The cycle that the words are; None if they are none.
bool ParseCycle(std::span<const std::string> words, YearCondition& condition)
{
    using Cycle = YearCondition::Cycle;
    constexpr std::size_t everyLength = 4;
    if (words.size() == 1) {
        condition.cycle = words[0] == "EVEN"   ? Cycle::Even
                          : words[0] == "ODD"  ? Cycle::Odd
                          : words[0] == "LEAP" ? Cycle::Leap
                                               : Cycle::None;
        return condition.cycle != Cycle::None;
    }
    if (words.size() != everyLength || words[0] != "EVERY" || words[2] != "FROM")
        return false;
    const auto every = IntegerOf(words[1]);
    const auto from = IntegerOf(words[3]);
    if (!every || *every < 1 || !from || !IsRuleYear(*from))
        return false;
    condition.cycle = Cycle::Every;
    condition.every = *every;
    condition.from = *from;
    return true;
}

bool IsInCycle(const YearCondition& condition, int year)
{
    switch (condition.cycle) {
    case YearCondition::Cycle::None:
        return true;
    case YearCondition::Cycle::Even:
        return year % 2 == 0;
    case YearCondition::Cycle::Odd:
        return year % 2 != 0;
    case YearCondition::Cycle::Leap:
        return std::chrono::year(year).is_leap();
    case YearCondition::Cycle::Every:
        return year >= condition.from && (year - condition.from) % condition.every == 0;
    }
    return true;
}

} // namespace

bool IsRuleYear(int year)
{
    return 1 <= year && year <= kLastRuleYear;
}

bool YearCondition::Holds(int year) const
{
    const bool isInRange =
        ranges.empty() || std::any_of(ranges.begin(), ranges.end(), [year](const YearRange& range) {
            return range.Contains(year);
        });
    return (isInRange && IsInCycle(*this, year)) != isNegated;
}

std::optional<YearCondition> ParseYearCondition(std::span<const std::string> words)
{
    YearCondition condition;
    while (!words.empty()) {
        const auto range = ParseRange(words.front());
        if (!range)
            break;
        condition.ranges.push_back(*range);
        words = words.subspan(1);
    }
    if (!words.empty() && !ParseCycle(words, condition))
        return std::nullopt;
    if (condition.ranges.empty() && condition.cycle == YearCondition::Cycle::None)
        return std::nullopt;
    return condition;
}

} // namespace orrery::holidays
