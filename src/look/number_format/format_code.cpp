#include "look/number_format/format_code.h"

#include <algorithm>
#include <utility>

namespace orrery::look {
namespace {

constexpr std::size_t kLongestCode = 65'536;
constexpr std::size_t kMostSections = 4;
constexpr SectionCondition kPositive{Comparison::Greater, 0};
constexpr SectionCondition kNotNegative{Comparison::GreaterOrEqual, 0};
constexpr SectionCondition kNegative{Comparison::Less, 0};

bool Holds(const SectionCondition& condition, double number)
{
    switch (condition.comparison) {
    case Comparison::Equal:
        return number == condition.limit;
    case Comparison::NotEqual:
        return number != condition.limit;
    case Comparison::Less:
        return number < condition.limit;
    case Comparison::LessOrEqual:
        return number <= condition.limit;
    case Comparison::Greater:
        return number > condition.limit;
    case Comparison::GreaterOrEqual:
        return number >= condition.limit;
    }
    return false;
}

/// Whether it holds for negative numbers alone.
bool IsNegative(const SectionCondition& condition)
{
    switch (condition.comparison) {
    case Comparison::Equal:
    case Comparison::LessOrEqual:
        return condition.limit < 0;
    case Comparison::Less:
        return condition.limit <= 0;
    default:
        return false;
    }
}

/// Whether the section after the one with this condition drops the sign: what the condition leaves
/// over is negative, or the condition takes the negative numbers below a limit.
bool DropsSignOfRest(const SectionCondition& condition)
{
    switch (condition.comparison) {
    case Comparison::GreaterOrEqual:
        return condition.limit <= 0;
    case Comparison::Equal:
        return false;
    default:
        return condition.limit < 0;
    }
}

SectionChoice ChooseOfTwo(const FormatCode& code, double number)
{
    const Section& first = code.numbers[0];
    const Section& second = code.numbers[1];
    const auto condition = first.condition.value_or(second.condition ? kPositive : kNotNegative);
    if (Holds(condition, number)) {
        return {&first, IsNegative(condition)};
    }
    if (!second.condition) {
        return {&second, DropsSignOfRest(condition)};
    }
    if (Holds(*second.condition, number)) {
        return {&second, IsNegative(*second.condition)};
    }
    return {};
}

SectionChoice ChooseOfThree(const FormatCode& code, double number)
{
    const auto first = code.numbers[0].condition.value_or(kPositive);
    if (Holds(first, number)) {
        return {&code.numbers[0], IsNegative(first)};
    }
    const auto second = code.numbers[1].condition.value_or(kNegative);
    if (Holds(second, number)) {
        return {&code.numbers[1], IsNegative(second)};
    }
    return {&code.numbers[2], false};
}

} // namespace

std::optional<FormatCode> ParseFormatCode(std::string_view code)
{
    if (code.size() > kLongestCode) {
        return std::nullopt;
    }
    if (code.empty()) {
        return FormatCode{};
    }
    auto sections = ReadSections(code);
    if (!sections || sections->size() > kMostSections ||
        !std::all_of(sections->begin(), sections->end(), AnalyzeSection)) {
        return std::nullopt;
    }
    FormatCode parsed;
    // The last section is for texts if it is the fourth, or says where the text goes.
    if (sections->size() == kMostSections || sections->back().kind == SectionKind::Text) {
        parsed.text = std::move(sections->back());
        sections->pop_back();
    }
    parsed.numbers = std::move(*sections);
    return parsed;
}

SectionChoice ChooseSection(const FormatCode& code, double number)
{
    switch (code.numbers.size()) {
    case 1:
        if (const auto& only = code.numbers[0]; !only.condition || Holds(*only.condition, number)) {
            return {&only, only.condition && IsNegative(*only.condition)};
        }
        return {};
    case 2:
        return ChooseOfTwo(code, number);
    default:
        return ChooseOfThree(code, number);
    }
}

} // namespace orrery::look
