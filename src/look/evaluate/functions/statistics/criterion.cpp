#include "look/evaluate/functions/statistics/criterion.h"

#include "util/text.h"

#include <array>
#include <string>
#include <utility>

namespace orrery::formula {
namespace {

std::optional<CellError> ErrorOfText(std::string_view text)
{
    static constexpr std::array<std::pair<std::string_view, CellError>, 7> kErrors = {
        {{"#NULL!", CellError::Null},
         {"#DIV/0!", CellError::DivisionByZero},
         {"#VALUE!", CellError::Value},
         {"#REF!", CellError::Reference},
         {"#NAME?", CellError::Name},
         {"#NUM!", CellError::Number},
         {"#N/A", CellError::NotAvailable}}};
    for (const auto& [name, error] : kErrors)
        if (util::EqualIgnoringCase(text, name))
            return error;
    return std::nullopt;
}

} // namespace

Criterion::Criterion(const Value& criterion, const TextRules& rules) : rules_(rules)
{
    const auto* text = std::get_if<std::string>(&criterion);
    if (text != nullptr) {
        ReadText(*text, rules);
        return;
    }
    operand_ = IsBlank(criterion) ? Value(0.0) : criterion;
    // Texts of numbers match numbers, too, so that a number is not found by itself.
    if (std::holds_alternative<bool>(operand_))
        plain_ = operand_;
}

void Criterion::ReadText(std::string_view text, const TextRules& rules)
{
    static constexpr std::array<std::pair<std::string_view, Test>, 6> kTests = {
        {{"<>", Test::NotEqual},
         {"<=", Test::LessOrEqual},
         {">=", Test::GreaterOrEqual},
         {"<", Test::Less},
         {">", Test::Greater},
         {"=", Test::Equal}}};
    isEmptyText_ = text.empty();
    for (const auto& [symbol, test] : kTests) {
        if (text.starts_with(symbol)) {
            test_ = test;
            text.remove_prefix(symbol.size());
            isBlank_ = text.empty();
            break;
        }
    }
    if (const auto number = NumberOfText(text, rules))
        operand_ = *number;
    else if (util::EqualIgnoringCase(text, "TRUE") || util::EqualIgnoringCase(text, "FALSE"))
        operand_ = text.size() == 4;
    else if (const auto error = ErrorOfText(text))
        operand_ = *error;
    else {
        operand_ = std::string(text);
        const bool isEquality = test_ == Test::Equal || test_ == Test::NotEqual;
        if (isEquality && text.find_first_of("*?~") != std::string_view::npos)
            pattern_.emplace(text);
        else if (test_ == Test::Equal && !text.empty())
            plain_ = operand_;
    }
}

bool Criterion::IsEqual(const Value& value) const
{
    if (isBlank_)
        return IsBlank(value);
    const auto* text = std::get_if<std::string>(&value);
    if (isEmptyText_)
        return IsBlank(value) || (text != nullptr && text->empty());
    if (pattern_)
        return text != nullptr && pattern_->Matches(*text);
    if (text != nullptr && std::holds_alternative<double>(operand_)) {
        const auto number = NumberOfText(*text, rules_);
        return number && CompareValues(*number, operand_) == 0;
    }
    return value.index() == operand_.index() &&
           (IsError(value) ? value == operand_ : CompareValues(value, operand_) == 0);
}

bool Criterion::Matches(const Value& value) const
{
    if (test_ == Test::Equal || test_ == Test::NotEqual)
        return IsEqual(value) == (test_ == Test::Equal);
    if (value.index() != operand_.index() || IsError(value))
        return false;
    const int order = CompareValues(value, operand_);
    switch (test_) {
    case Test::Less:
        return order < 0;
    case Test::LessOrEqual:
        return order <= 0;
    case Test::Greater:
        return order > 0;
    default:
        return order >= 0;
    }
}

} // namespace orrery::formula
