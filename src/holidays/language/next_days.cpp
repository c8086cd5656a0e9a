#include "holidays/language/next_days.h"

#include <algorithm>

namespace orrery::holidays {
namespace {

using State = NextDays::State;

constexpr int kLastYearOfRules = 9999;

State StateOf(const Rule& rule, const HolidayChoice& choice)
{
    if (!IsInRegion(rule.refinements, choice.region))
        return State::OtherRegion;
    const Category category = rule.refinements.category.value_or(Category::Public);
    const bool isChosen = std::find(choice.categories.begin(), choice.categories.end(), category) !=
                          choice.categories.end();
    return isChosen ? State::None : State::OtherKind;
}

/// Counts a day, the days of a year coming by date.
void Add(const Holiday& day, NextDays& found)
{
    const bool isFirst = found.state == State::None;
    found.more += isFirst ? 0 : 1;
    if (isFirst || (found.isSubstitute && !day.isSubstitute))
        found = {State::Given, day.date, found.more, day.isSubstitute, day.isEstimated};
}

} // namespace

std::vector<NextDays> NextDaysOf(const RuleSet& set, int year, const HolidayChoice& choice)
{
    std::vector<NextDays> next;
    for (const RuleSet* const file : FilesOf(set)) {
        for (const Rule& rule : file->rules)
            next.emplace_back().state = StateOf(rule, choice);
    }
    const auto isOpen = [](const NextDays& days) { return days.state == State::None; };
    const int end = std::min(year + kYearsLookedThrough, kLastYearOfRules + 1);
    for (; year < end && std::any_of(next.begin(), next.end(), isOpen); ++year) {
        std::vector<bool> isNew(next.size());
        for (std::size_t i = 0; i < next.size(); ++i)
            isNew[i] = isOpen(next[i]);
        for (const Holiday& day : HolidaysOf(set, year, choice)) {
            if (isNew[day.rule])
                Add(day, next[day.rule]);
        }
    }
    return next;
}

} // namespace orrery::holidays
