#include "look/evaluate/operators.h"

#include "look/evaluate/values/compare.h"
#include "look/evaluate/values/decimals.h"

#include <cmath>
#include <string>

namespace orrery::formula {
namespace {

Value Checked(double number)
{
    return std::isfinite(number) ? Value(number) : Value(CellError::Number);
}

Value Calculate(Operator op, double left, double right)
{
    switch (op) {
    case Operator::Add:
        return Checked(AddNearly(left, right));
    case Operator::Subtract:
        return Checked(AddNearly(left, -right));
    case Operator::Multiply:
        return Checked(left * right);
    case Operator::Divide:
        return right == 0 ? Value(CellError::DivisionByZero) : Checked(left / right);
    default:
        if (left == 0 && right <= 0)
            return right == 0 ? CellError::Number : CellError::DivisionByZero;
        return Checked(std::pow(left, right));
    }
}

bool Compare(Operator op, int order)
{
    switch (op) {
    case Operator::Equal:
        return order == 0;
    case Operator::NotEqual:
        return order != 0;
    case Operator::Less:
        return order < 0;
    case Operator::LessOrEqual:
        return order <= 0;
    case Operator::Greater:
        return order > 0;
    default:
        return order >= 0;
    }
}

Value Concatenate(const Value& left, const Value& right)
{
    const auto first = ToText(left);
    const auto second = ToText(right);
    if (first.error || second.error)
        return first.error ? *first.error : *second.error;
    constexpr std::size_t kLongest = std::size_t{3} * 32'767; // bytes of so many characters
    if (first.value.size() + second.value.size() > kLongest)
        return CellError::Value;
    return first.value + second.value;
}

} // namespace

Value ApplyBinary(Operator op, const Value& left, const Value& right, const TextRules& rules)
{
    if (op == Operator::Concatenate)
        return Concatenate(left, right);
    if (op <= Operator::GreaterOrEqual) {
        if (IsError(left) || IsError(right))
            return IsError(left) ? left : right;
        return Compare(op, CompareValues(left, right));
    }
    const auto first = ToNumber(left, rules);
    if (first.error)
        return *first.error;
    const auto second = ToNumber(right, rules);
    if (second.error)
        return *second.error;
    return Calculate(op, first.value, second.value);
}

Value ApplyUnary(Operator op, const Value& operand, const TextRules& rules)
{
    if (op == Operator::Plus)
        return operand;
    const auto number = ToNumber(operand, rules);
    if (number.error)
        return *number.error;
    return op == Operator::Percent ? number.value / 100 : -number.value;
}

const Array* TableOf(const Operand& operand)
{
    const auto* table = std::get_if<ArrayPointer>(&operand);
    return table != nullptr ? table->get() : nullptr;
}

} // namespace orrery::formula
