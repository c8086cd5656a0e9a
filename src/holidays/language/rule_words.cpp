#include "holidays/language/rule_words.h"

#include "holidays/language/holiday_choice.h"
#include "util/text.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace orrery::holidays {
namespace {

using Texts = std::vector<std::string>;

constexpr std::size_t kMostNamed = 4; ///< of a brief list; the rest is counted

/// "A, B and C"; in brief "A, B, C, D and 3 more".
std::string ListInWords(Texts texts, std::string_view conjunction, Lists lists = Lists::Whole)
{
    if (lists == Lists::Brief && texts.size() > kMostNamed + 1) {
        const std::string rest = std::to_string(texts.size() - kMostNamed) + " more";
        texts.resize(kMostNamed);
        texts.push_back(rest);
        conjunction = "and";
    }
    if (texts.size() < 2)
        return util::Join(texts, "");
    const std::string last = std::move(texts.back());
    texts.pop_back();
    return util::Join(texts, ", ") + ' ' + std::string(conjunction) + ' ' + last;
}

/// From Monday to Sunday.
std::string WeekdaysInWords(WeekdaySet set, std::string_view conjunction)
{
    Texts words;
    for (int i = kFirstWeekday; i <= kLastWeekday; ++i) {
        const int weekday = i % kLastWeekday + 1;
        if (Contains(set, weekday))
            words.emplace_back(kKindWords.at(static_cast<std::size_t>(weekday)));
    }
    return ListInWords(std::move(words), conjunction);
}

/// "from 2006", "until 2019", "1990 to 1999", "in 2012"; empty for every year.
std::string RangeInWords(const YearRange& range)
{
    const YearRange all;
    if (range.first == range.last)
        return "in " + std::to_string(range.first);
    if (range.first == all.first)
        return range.last == all.last ? "" : "until " + std::to_string(range.last);
    if (range.last == all.last)
        return "from " + std::to_string(range.first);
    return std::to_string(range.first) + " to " + std::to_string(range.last);
}

std::string CycleInWords(const YearCondition& condition)
{
    switch (condition.cycle) {
    case YearCondition::Cycle::None:
        break;
    case YearCondition::Cycle::Even:
        return "even years";
    case YearCondition::Cycle::Odd:
        return "odd years";
    case YearCondition::Cycle::Leap:
        return "leap years";
    case YearCondition::Cycle::Every:
        return "every " + std::to_string(condition.every) + " years from " +
               std::to_string(condition.from);
    }
    return {};
}

std::string YearsInWords(const YearCondition& condition, Lists lists)
{
    Texts ranges;
    for (const YearRange& range : condition.ranges)
        ranges.push_back(RangeInWords(range));
    Texts words;
    if (!ranges.empty())
        words.push_back(ListInWords(std::move(ranges), "and", lists));
    if (condition.cycle != YearCondition::Cycle::None)
        words.push_back(CycleInWords(condition));
    return (condition.isNegated ? "except " : "") + util::Join(words, ", ");
}

std::string DatesInWords(const DatesInYear& dates, Lists lists)
{
    Texts words;
    for (const MonthDay& day : dates.days)
        words.push_back(DayInWords(
            {PlainDay{static_cast<std::int16_t>(day.month * 100 + day.day), kFixedDay}}));
    return "in " + std::to_string(dates.year) + " on " +
           ListInWords(std::move(words), "and", lists);
}

std::string TargetInWords(const Substitute::Target& target)
{
    using Kind = Substitute::Target::Kind;
    const auto weekday = [&target] {
        return std::string(kKindWords.at(static_cast<std::size_t>(target.value)));
    };
    switch (target.kind) {
    case Kind::NextWorkday:
        return "the next workday";
    case Kind::NextDay:
        return "the next day";
    case Kind::WeekdayBefore:
        return "the " + weekday() + " before";
    case Kind::WeekdayAfter:
        return "the " + weekday() + " after";
    case Kind::Days:
        break;
    }
    const int days = std::abs(target.value);
    return std::to_string(days) + (days == 1 ? " day " : " days ") +
           (target.value < 0 ? "before" : "after");
}

std::string SubstituteInWords(const Substitute& substitute)
{
    std::string when = WeekdaysInWords(substitute.weekdays, "or");
    if (substitute.ifHoliday)
        when += when.empty() ? "a holiday" : " or a holiday";
    std::string words = "if " + when + (substitute.isMove ? " moves to " : " also ") +
                        TargetInWords(substitute.target);
    if (const std::string years = RangeInWords(substitute.years); !years.empty())
        words += ' ' + years;
    if (!substitute.name.empty())
        words += " as \"" + substitute.name + '"';
    return words;
}

std::string RegionsInWords(const Texts& codes, const std::vector<Region>& regions,
                           std::string_view conjunction, Lists lists)
{
    Texts names;
    for (const std::string& code : codes) {
        const auto found =
            std::find_if(regions.begin(), regions.end(),
                         [&code](const Region& region) { return region.code == code; });
        names.push_back(found == regions.end() || found->name.empty() ? code : found->name);
    }
    return ListInWords(std::move(names), conjunction, lists);
}

/// "only on Monday and Tuesday", "not on Sunday": whichever names fewer.
std::string ConditionInWords(WeekdaySet weekdays)
{
    constexpr std::size_t half = 3;
    if (weekdays == 0)
        return "on no weekday";
    std::size_t count = 0;
    for (int weekday = kFirstWeekday; weekday <= kLastWeekday; ++weekday)
        count += Contains(weekdays, weekday) ? 1U : 0U;
    return count > half ? "not on " + WeekdaysInWords(kEveryWeekday & ~weekdays, "or")
                        : "only on " + WeekdaysInWords(weekdays, "or");
}

} // namespace

std::vector<std::string> RefinementsInWords(const Refinements& refinements,
                                            const std::vector<Region>& regions, Lists lists)
{
    Texts words;
    if (refinements.days > 1)
        words.push_back(std::to_string(refinements.days) + " days");
    if (refinements.born)
        words.push_back("born " + std::to_string(*refinements.born));
    if (!refinements.onlyIn.empty())
        words.push_back("only in " + RegionsInWords(refinements.onlyIn, regions, "and", lists));
    if (!refinements.notIn.empty())
        words.push_back("not in " + RegionsInWords(refinements.notIn, regions, "or", lists));
    for (const YearCondition& condition : refinements.years)
        words.push_back(YearsInWords(condition, lists));
    if (refinements.weekdays != kEveryWeekday)
        words.push_back(ConditionInWords(refinements.weekdays));
    for (const Substitute& substitute : refinements.substitutes)
        words.push_back(SubstituteInWords(substitute));
    const std::size_t years = refinements.inYears.size();
    if (lists == Lists::Brief && years > kMostNamed)
        words.push_back("other dates in " + std::to_string(years) + " years");
    else
        for (const DatesInYear& dates : refinements.inYears)
            words.push_back(DatesInWords(dates, lists));
    return words;
}

std::string RuleInWords(const Rule& rule, const std::vector<Region>& regions, Lists lists)
{
    std::string words = DayInWords(rule.refinements.exact.value_or(rule.when), lists);
    for (const std::string& refinement : RefinementsInWords(rule.refinements, regions, lists))
        words += "; " + refinement;
    return words;
}

std::string KindInWords(const Rule& rule)
{
    if (rule.refinements.born && !rule.refinements.category)
        return "Birthday";
    std::string word(WordOf(rule.refinements.category.value_or(Category::Public)));
    word.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(word.front())));
    return word;
}

} // namespace orrery::holidays
