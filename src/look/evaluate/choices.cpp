// Calls that compute only those of their arguments that they need.

#include "look/evaluate/computation.h"
#include "look/evaluate/operators.h"
#include "look/evaluate/values/compare.h"

#include <map>

namespace orrery::formula {

std::optional<Operand> Computation::EvaluateChoice(const Formula& formula, const Node& node,
                                                   Mode mode)
{
    const std::string& name = formula.texts[node.index];
    const std::uint32_t count = node.childCount;
    if (name == "IF" && count >= 1 && count <= 3)
        return EvaluateIf(formula, node, mode);
    if ((name == "IFERROR" || name == "IFNA") && count == 2)
        return EvaluateIfError(formula, node, mode, name == "IFNA");
    if (name == "CHOOSE" && count >= 2)
        return EvaluateChoose(formula, node, mode);
    if (name == "IFS" && count >= 2)
        return EvaluateIfs(formula, node, mode);
    if (name == "SWITCH" && count >= 3)
        return EvaluateSwitch(formula, node, mode);
    if (name == "LET" && count >= 3 && count % 2 == 1)
        return EvaluateLet(formula, node, mode);
    if (name == "SINGLE" && count == 1) {
        const Operand operand = Evaluate(formula, formula.Child(node, 0), mode);
        const auto* reference = std::get_if<Reference>(&operand);
        return Operand(reference != nullptr ? Beside(*reference) : SingleOf(operand));
    }
    return std::nullopt;
}

/// A table of what is chosen for each value of a table. Choices that are tables themselves give the
/// value at the same place.
Operand Computation::Choose(const Array& conditions,
                            const std::function<Operand(const Value&)>& choose)
{
    JoinedShape shape(conditions);
    KeyMap<Operand> choices; // each is computed once
    for (const Value& condition : conditions.values) {
        if (!Spend(1))
            return Fail();
        if (choices.count(condition) != 0 || choices.size() > 1'000)
            continue;
        Operand choice = Dereference(choose(condition), Mode::Table);
        if (const Array* table = TableOf(choice))
            shape.Add(*table);
        choices.emplace(condition, std::move(choice));
    }
    if (shape.Size() > kLargestArray || !Spend(static_cast<std::size_t>(shape.Size())))
        return Fail();
    Array result = shape.MakeArray();
    for (std::int32_t row = 0; row < result.rows; ++row) {
        for (std::int32_t column = 0; column < result.columns && !HasFailed(); ++column) {
            const Value& condition = ElementOf(conditions, row, column);
            const auto found = choices.find(condition);
            const Operand choice = found != choices.end()
                                       ? found->second
                                       : Dereference(choose(condition), Mode::Table);
            const auto* table = std::get_if<ArrayPointer>(&choice);
            result.At(row, column) =
                table != nullptr ? ElementOf(**table, row, column) : std::get<Value>(choice);
            SpendKept(result.At(row, column));
        }
    }
    return MakeTable(std::move(result));
}

/// Where one value is wanted, the first condition of a table decides for all.
Operand Computation::EvaluateIf(const Formula& formula, const Node& node, Mode mode)
{
    const auto choose = [&](const Value& condition) -> Operand {
        const auto truth = ToLogical(condition);
        if (truth.error)
            return Value(*truth.error);
        const std::uint32_t at = truth.value ? 1 : 2;
        if (at >= node.childCount)
            return Value(truth.value);
        Operand chosen = Evaluate(formula, formula.Child(node, at), mode);
        return std::holds_alternative<Missing>(chosen) ? Operand(Value(0.0)) : chosen;
    };
    const Operand condition = EvaluateValue(formula, formula.Child(node, 0), mode);
    const Array* table = TableOf(condition);
    if (table == nullptr || mode == Mode::OneValue)
        return choose(SingleOf(condition));
    return Choose(*table, choose);
}

Operand Computation::EvaluateIfError(const Formula& formula, const Node& node, Mode mode,
                                     bool onlyMissing)
{
    const auto choose = [&](const Value& value) -> Operand {
        const bool isCaught =
            onlyMissing ? value == Value(CellError::NotAvailable) : IsError(value);
        if (!isCaught)
            return value;
        Operand chosen = Evaluate(formula, formula.Child(node, 1), mode);
        return std::holds_alternative<Missing>(chosen) ? Operand(Value(0.0)) : chosen;
    };
    const Operand value = EvaluateValue(formula, formula.Child(node, 0), mode);
    if (const auto* table = std::get_if<ArrayPointer>(&value))
        return Choose(**table, choose);
    return choose(std::get<Value>(value));
}

Operand Computation::EvaluateChoose(const Formula& formula, const Node& node, Mode mode)
{
    const auto choose = [&](const Value& index) -> Operand {
        const auto number = ToNumber(index, Rules());
        if (number.error)
            return Value(*number.error);
        if (!(number.value >= 1 && number.value < node.childCount))
            return Value(CellError::Value);
        return Evaluate(formula, formula.Child(node, static_cast<std::uint32_t>(number.value)),
                        mode);
    };
    const Operand index = EvaluateValue(formula, formula.Child(node, 0), mode);
    const auto* table = std::get_if<ArrayPointer>(&index);
    return table != nullptr ? Choose(**table, choose) : choose(std::get<Value>(index));
}

/// The tables of conditions of IFS and SWITCH are rare: their first value counts.
Operand Computation::EvaluateIfs(const Formula& formula, const Node& node, Mode mode)
{
    for (std::uint32_t at = 0; at + 1 < node.childCount && !HasFailed(); at += 2) {
        const Operand condition = EvaluateValue(formula, formula.Child(node, at), mode);
        const auto truth = ToLogical(SingleOf(condition));
        if (truth.error)
            return Value(*truth.error);
        if (truth.value)
            return Evaluate(formula, formula.Child(node, at + 1), mode);
    }
    return Value(CellError::NotAvailable);
}

Operand Computation::EvaluateSwitch(const Formula& formula, const Node& node, Mode mode)
{
    const Value value = SingleOf(EvaluateValue(formula, formula.Child(node, 0), mode));
    if (IsError(value))
        return value;
    std::uint32_t at = 1;
    for (; at + 1 < node.childCount && !HasFailed(); at += 2) {
        const Value candidate = SingleOf(EvaluateValue(formula, formula.Child(node, at), mode));
        if (CompareValues(candidate, value) == 0)
            return Evaluate(formula, formula.Child(node, at + 1), mode);
    }
    if (at < node.childCount)
        return Evaluate(formula, formula.Child(node, at), mode);
    return Value(CellError::NotAvailable);
}

Operand Computation::EvaluateLet(const Formula& formula, const Node& node, Mode mode)
{
    const std::size_t before = variables_.size();
    for (std::uint32_t at = 0; at + 1 < node.childCount; at += 2) {
        const Node& name = formula.Child(node, at);
        if (name.kind != NodeKind::Name)
            return Fail();
        Operand value = Evaluate(formula, formula.Child(node, at + 1), mode);
        variables_.emplace_back(formula.names[name.index].name, std::move(value));
    }
    Operand result = Evaluate(formula, formula.Child(node, node.childCount - 1), mode);
    variables_.resize(before);
    return result;
}

} // namespace orrery::formula
