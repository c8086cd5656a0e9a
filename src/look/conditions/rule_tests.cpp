#include "look/conditions/rule_tests.h"

#include "book/names.h"
#include "look/evaluate/values/compare.h"
#include "look/evaluate/values/convert.h"
#include "look/evaluate/values/dates.h"
#include "util/text.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace orrery::look {
namespace {

using book::ConditionKind;

std::optional<Value> ComputeFor(std::string_view formula, const RuleSubject& subject,
                                Evaluator& evaluator)
{
    return evaluator.Compute(formula, subject.sheet, subject.cell, subject.relativeTo);
}

/// A number other than 0 holds, a text or an error does not.
bool IsTrue(const std::optional<Value>& value)
{
    if (!value)
        return false;
    if (const auto* logical = std::get_if<bool>(&*value))
        return *logical;
    const auto* number = std::get_if<double>(&*value);
    return number != nullptr && *number != 0;
}

/// The bounds of "between" may stand in either order.
bool IsBetween(const Value& value, const Value& one, const Value& other)
{
    const bool isOrdered = formula::CompareValues(one, other) <= 0;
    return formula::CompareValues(value, isOrdered ? one : other) >= 0 &&
           formula::CompareValues(value, isOrdered ? other : one) <= 0;
}

/// An empty cell counts as 0.
bool ComparesAsWanted(const book::ConditionalRule& rule, const RuleSubject& subject,
                      Evaluator& evaluator)
{
    using Operator = book::ComparisonOperator;
    const bool isSpan =
        rule.comparison == Operator::Between || rule.comparison == Operator::NotBetween;
    if (rule.formulas.size() < (isSpan ? 2U : 1U) || formula::IsError(subject.value))
        return false;
    const auto first = ComputeFor(rule.formulas[0], subject, evaluator);
    if (!first || formula::IsError(*first))
        return false;
    if (isSpan) {
        const auto second = ComputeFor(rule.formulas[1], subject, evaluator);
        return second && !formula::IsError(*second) &&
               IsBetween(subject.value, *first, *second) == (rule.comparison == Operator::Between);
    }
    const int order = formula::CompareValues(subject.value, *first);
    switch (rule.comparison) {
    case Operator::Equal:
        return order == 0;
    case Operator::NotEqual:
        return order != 0;
    case Operator::GreaterThan:
        return order > 0;
    case Operator::LessThan:
        return order < 0;
    case Operator::GreaterOrEqual:
        return order >= 0;
    default:
        return order <= 0;
    }
}

/// Without regard to case.
bool HasText(const book::ConditionalRule& rule, const Value& value)
{
    const auto converted = formula::ToText(value);
    if (converted.error)
        return rule.kind == ConditionKind::NotContainsText;
    const std::string text = book::FoldCase(converted.value);
    const std::string wanted = book::FoldCase(rule.text);
    switch (rule.kind) {
    case ConditionKind::BeginsWith:
        return text.starts_with(wanted);
    case ConditionKind::EndsWith:
        return text.ends_with(wanted);
    default:
        return (text.find(wanted) != std::string::npos) ==
               (rule.kind == ConditionKind::ContainsText);
    }
}

bool LooksEmpty(const Value& value)
{
    const auto* text = std::get_if<std::string>(&value);
    return formula::IsBlank(value) || (text != nullptr && util::Trim(*text).empty());
}

/// A share of the cells is rounded down, but to one at least.
bool IsAmongFirst(const book::ConditionalRule& rule, const Value& value,
                  RangeStatistics& statistics)
{
    const auto* number = std::get_if<double>(&value);
    const auto& numbers = statistics.Numbers();
    if (number == nullptr || numbers.empty() || rule.rank < 1)
        return false;
    auto count = static_cast<std::size_t>(rule.rank);
    if (rule.isPercent)
        count = std::max<std::size_t>(numbers.size() * std::min<std::size_t>(count, 100) / 100, 1);
    count = std::min(count, numbers.size());
    return rule.isBottom ? *number <= numbers[count - 1]
                         : *number >= numbers[numbers.size() - count];
}

bool IsBesideAverage(const book::ConditionalRule& rule, const Value& value,
                     RangeStatistics& statistics)
{
    const auto* number = std::get_if<double>(&value);
    if (number == nullptr)
        return false;
    const double side = rule.isBelow ? -1 : 1;
    const double bound =
        statistics.Mean() + side * std::max(rule.deviations, 0) * statistics.Deviation();
    return rule.includesEqual && *number == bound ? true : (*number - bound) * side > 0;
}

/// Months since year 0.
std::optional<std::int32_t> MonthOf(double day, book::DateSystem system)
{
    const auto date = formula::DayOfSerial(day, system);
    return date ? std::optional(date->year * 12 + date->month) : std::nullopt;
}

/// Weeks begin on Sunday.
bool IsInPeriod(book::TimePeriod period, const Value& value, const Evaluator& evaluator)
{
    using Period = book::TimePeriod;
    const auto* number = std::get_if<double>(&value);
    if (number == nullptr)
        return false;
    const double day = std::floor(*number);
    const double today = std::floor(evaluator.Now());
    const double distance = day - today;
    const double sunday = today - formula::WeekdayOfSerial(today, evaluator.Dates());
    const auto isWeek = [&](int week) {
        return day >= sunday + 7 * week && day < sunday + 7 * week + 7;
    };
    const auto isMonth = [&](int months) {
        const auto month = MonthOf(day, evaluator.Dates());
        const auto thisMonth = MonthOf(today, evaluator.Dates());
        return month && thisMonth && *month == *thisMonth + months;
    };
    switch (period) {
    case Period::Today:
        return distance == 0;
    case Period::Yesterday:
        return distance == -1;
    case Period::Tomorrow:
        return distance == 1;
    case Period::Last7Days:
        return distance <= 0 && distance > -7;
    case Period::ThisMonth:
        return isMonth(0);
    case Period::LastMonth:
        return isMonth(-1);
    case Period::NextMonth:
        return isMonth(1);
    case Period::ThisWeek:
        return isWeek(0);
    case Period::LastWeek:
        return isWeek(-1);
    case Period::NextWeek:
        return isWeek(1);
    }
    return false;
}

} // namespace

bool Holds(const book::ConditionalRule& rule, const RuleSubject& subject, Evaluator& evaluator,
           RangeStatistics& statistics)
{
    const Value& value = subject.value;
    switch (rule.kind) {
    case ConditionKind::Expression:
        return !rule.formulas.empty() && IsTrue(ComputeFor(rule.formulas[0], subject, evaluator));
    case ConditionKind::CellIs:
        return ComparesAsWanted(rule, subject, evaluator);
    case ConditionKind::ContainsText:
    case ConditionKind::NotContainsText:
    case ConditionKind::BeginsWith:
    case ConditionKind::EndsWith:
        // The text may be a reference; the formula says what it is.
        return rule.formulas.empty() ? HasText(rule, value)
                                     : IsTrue(ComputeFor(rule.formulas[0], subject, evaluator));
    case ConditionKind::ContainsBlanks:
        return LooksEmpty(value);
    case ConditionKind::NotContainsBlanks:
        return !LooksEmpty(value);
    case ConditionKind::ContainsErrors:
        return formula::IsError(value);
    case ConditionKind::NotContainsErrors:
        return !formula::IsError(value);
    case ConditionKind::DuplicateValues:
        return statistics.CountOf(value) > 1;
    case ConditionKind::UniqueValues:
        return statistics.CountOf(value) == 1;
    case ConditionKind::Top10:
        return IsAmongFirst(rule, value, statistics);
    case ConditionKind::AboveAverage:
        return IsBesideAverage(rule, value, statistics);
    case ConditionKind::TimePeriod:
        return IsInPeriod(rule.period, value, evaluator);
    default:
        return false;
    }
}

std::optional<double> NumberOf(std::string_view formula, const RuleSubject& subject,
                               Evaluator& evaluator)
{
    const auto value = ComputeFor(formula, subject, evaluator);
    const auto* number = value ? std::get_if<double>(&*value) : nullptr;
    return number != nullptr ? std::optional(*number) : std::nullopt;
}

} // namespace orrery::look
