#include "look/evaluate/computation.h"

#include "look/evaluate/functions/functions.h"
#include "look/evaluate/operators.h"

#include <algorithm>

namespace orrery::formula {
namespace {

/// How the parameters of a function take arguments.
class Parameters {
public:
    explicit Parameters(const FunctionEntry& function)
        : letters_(function.parameters), repeated_(static_cast<std::size_t>(function.repeated))
    {
        required_ = std::min(letters_.find('|'), letters_.size());
        letters_.erase(std::remove(letters_.begin(), letters_.end(), '|'), letters_.end());
    }
    bool Accept(std::size_t count) const
    {
        return count >= required_ && (count <= letters_.size() || repeated_ > 0);
    }
    char Letter(std::size_t at) const
    {
        if (at < letters_.size())
            return letters_[at];
        return letters_[letters_.size() - repeated_ + (at - letters_.size()) % repeated_];
    }

private:
    std::string letters_;
    std::size_t repeated_;
    std::size_t required_ = 0;
};

} // namespace

Operand Computation::EvaluateCall(const Formula& formula, const Node& node, Mode mode)
{
    if (auto choice = EvaluateChoice(formula, node, mode))
        return std::move(*choice);
    const FunctionEntry* function = FindFunction(formula.texts[node.index]);
    if (function == nullptr)
        return Fail();
    const Parameters parameters(*function);
    if (!parameters.Accept(node.childCount))
        return Fail();
    const Mode ofReferences = mode == Mode::OneValue ? Mode::Single : mode;
    std::vector<Operand> arguments;
    bool hasTables = false;
    for (std::uint32_t at = 0; at < node.childCount; ++at) {
        const char letter = parameters.Letter(at);
        const Node& child = formula.Child(node, at);
        Operand argument =
            letter == 'v' && child.kind != NodeKind::Missing
                ? EvaluateValue(formula, child, mode)
                : Evaluate(formula, child, letter == 'a' ? Mode::Table : ofReferences);
        hasTables = hasTables || (letter == 'v' && TableOf(argument) != nullptr);
        if (HasFailed())
            return Value(CellError::Value);
        arguments.push_back(std::move(argument));
    }
    return hasTables ? CallForTables(*function, std::move(arguments))
                     : CallFunction(*function, std::move(arguments));
}

Operand Computation::CallFunction(const FunctionEntry& function, std::vector<Operand> arguments)
{
    Call call(*this, std::move(arguments));
    Operand result =
        function.value != nullptr ? Operand(function.value(call)) : function.operand(call);
    if (call.failure)
        return Value(*call.failure);
    if (const auto* value = std::get_if<Value>(&result))
        if (const auto* number = std::get_if<double>(value))
            return NumberOrError(*number);
    return result;
}

/// Calls a function for each value of the tables that stand where it takes one value.
Operand Computation::CallForTables(const FunctionEntry& function, std::vector<Operand> arguments)
{
    const Parameters parameters(function);
    std::vector<std::pair<std::size_t, ArrayPointer>> tables;
    JoinedShape shape;
    for (std::size_t at = 0; at < arguments.size(); ++at) {
        const auto* table = std::get_if<ArrayPointer>(&arguments[at]);
        if (parameters.Letter(at) != 'v' || table == nullptr)
            continue;
        shape.Add(**table);
        tables.emplace_back(at, *table);
    }
    if (shape.Size() > kLargestArray || !Spend(static_cast<std::size_t>(shape.Size())))
        return Fail();
    Array result = shape.MakeArray();
    for (std::int32_t row = 0; row < result.rows; ++row) {
        for (std::int32_t column = 0; column < result.columns && !HasFailed(); ++column) {
            for (const auto& [at, table] : tables)
                arguments[at] = ElementOf(*table, row, column);
            result.At(row, column) = SingleOf(CallFunction(function, arguments));
            SpendKept(result.At(row, column));
        }
    }
    return MakeTable(std::move(result));
}

} // namespace orrery::formula
