#include "look/evaluate/computation.h"

#include "book/names.h"
#include "look/evaluate/operators.h"

#include <algorithm>
#include <memory>

namespace orrery::formula {
namespace {

/// Names lead to formulas, these to names: beyond this depth it is a circle.
constexpr int kDeepest = 320;
/// Names that each use the next one twice are a tree; a name costs about as much as so many cells.
constexpr std::size_t kStepsOfName = 20;

class DepthScope {
public:
    explicit DepthScope(int& depth) : depth_(depth) { ++depth_; }
    ~DepthScope() { --depth_; }
    DepthScope(const DepthScope&) = delete;
    DepthScope& operator=(const DepthScope&) = delete;

private:
    int& depth_;
};

/// A table that a cell keeps takes memory until the end.
std::size_t StepsOfKept(const Array& table)
{
    return table.values.size() * 8;
}

/// Without what stands for the rest of whole columns and rows.
std::vector<Value> UsedValues(const Array& table)
{
    std::vector<Value> values;
    for (std::int32_t row = 0; row < table.rows - (table.hasMoreRows ? 1 : 0); ++row)
        for (std::int32_t column = 0; column < table.columns - (table.hasMoreColumns ? 1 : 0);
             ++column)
            values.push_back(table.At(row, column));
    return values;
}

bool JoinsReferences(Operator op)
{
    return op == Operator::Union || op == Operator::Intersection || op == Operator::Range;
}

} // namespace

std::optional<CellResult> Computation::RunForCell(const Formula& formula,
                                                  const std::optional<book::CellRange>& array)
{
    const Mode mode = array ? Mode::Table : Mode::Single;
    const Operand operand = Dereference(Evaluate(formula, formula.nodes[formula.root], mode), mode);
    if (HasFailed())
        return std::nullopt;
    CellResult result;
    const auto* table = std::get_if<ArrayPointer>(&operand);
    if (table != nullptr && array && !array->IsOneCell())
        result.table = *table;
    result.value = table != nullptr ? (*table)->values.front() : std::get<Value>(operand);
    if (IsBlank(result.value))
        result.value = 0.0;
    if (!SpendKept(result.value) || (result.table && !Spend(StepsOfKept(*result.table))))
        return std::nullopt;
    return result;
}

std::optional<Value> Computation::RunWithTables(const Formula& formula)
{
    const Operand operand =
        Dereference(Evaluate(formula, formula.nodes[formula.root], Mode::Table), Mode::Table);
    if (HasFailed())
        return std::nullopt;
    const Array* table = TableOf(operand);
    Value value = table != nullptr ? table->values.front() : std::get<Value>(operand);
    return IsBlank(value) ? Value(0.0) : std::move(value);
}

std::optional<std::vector<Value>> Computation::RunForValues(const Formula& formula)
{
    const Operand operand =
        Dereference(Evaluate(formula, formula.nodes[formula.root], Mode::Table), Mode::Table);
    if (HasFailed())
        return std::nullopt;
    const Array* const table = TableOf(operand);
    if (table == nullptr)
        return std::vector{std::get<Value>(operand)};
    return Spend(table->values.size()) ? std::optional(UsedValues(*table)) : std::nullopt;
}

Operand Computation::Evaluate(const Formula& formula, const Node& node, Mode mode)
{
    const DepthScope scope(engine_.depth);
    if (engine_.depth > kDeepest || !Spend(1))
        return Fail();
    return EvaluateNode(formula, node, mode);
}

Operand Computation::EvaluateNode(const Formula& formula, const Node& node, Mode mode)
{
    switch (node.kind) {
    case NodeKind::Number:
        return Value(formula.numbers[node.index]);
    case NodeKind::Text:
        return Value(formula.texts[node.index]);
    case NodeKind::Logical:
        return Value(node.index != 0);
    case NodeKind::Error:
        return Value(static_cast<CellError>(node.index));
    case NodeKind::Missing:
        return Missing{};
    case NodeKind::Array:
        return formula.arrays[node.index];
    case NodeKind::Area:
        return EvaluateArea(formula.areas[node.index]);
    case NodeKind::Name:
        return EvaluateName(formula.names[node.index]);
    case NodeKind::Table:
        return EvaluateTable(formula.tables[node.index]);
    case NodeKind::External:
        return Fail();
    case NodeKind::Unary:
        return EvaluateUnary(formula, node, mode);
    case NodeKind::Binary:
        return EvaluateChain(formula, node, mode);
    case NodeKind::Call:
        return EvaluateCall(formula, node, mode);
    }
    return Fail();
}

Operand Computation::EvaluateArea(const AreaText& text)
{
    const auto area = engine_.Names().AreaOf(text, place_);
    if (!area)
        return Value(CellError::Reference);
    return Reference{*area};
}

Operand Computation::EvaluateTable(const TableText& table)
{
    const auto area = engine_.Names().AreaOfTable(table, place_);
    if (const auto* error = std::get_if<CellError>(&area))
        return Value(*error);
    return Reference{std::get<Area>(area)};
}

/// The formula of a name is written for the first cell of a sheet, and works on tables.
Operand Computation::EvaluateName(const NameText& name)
{
    const auto variable =
        std::find_if(variables_.rbegin(), variables_.rend(), [&](const auto& known) {
            return !name.hasSheet && book::SameName(known.first, name.name);
        });
    if (variable != variables_.rend())
        return variable->second;
    const book::DefinedName* found = engine_.Names().FindName(name, place_.sheet);
    if (found == nullptr && !name.hasSheet && engine_.Names().IsTable(name.name)) {
        TableText table;
        table.table = name.name;
        table.hasData = true;
        return EvaluateTable(table);
    }
    if (found == nullptr)
        return Value(CellError::Name);
    const auto formula = engine_.Parsed(found->formula);
    if (formula == nullptr || !Spend(kStepsOfName))
        return Fail();
    const Place before = std::exchange(place_, {place_.sheet, place_.cell, {1, 1}});
    const auto variables = std::exchange(variables_, {});
    Operand result = Evaluate(*formula, formula->nodes[formula->root], Mode::Table);
    variables_ = variables;
    place_ = before;
    return result;
}

Operand Computation::EvaluateUnary(const Formula& formula, const Node& node, Mode mode)
{
    if (node.op == Operator::Single) {
        const Operand operand = Evaluate(formula, formula.Child(node, 0), mode);
        const auto* reference = std::get_if<Reference>(&operand);
        return reference != nullptr ? Beside(*reference) : SingleOf(operand);
    }
    if (node.op == Operator::Plus)
        return Evaluate(formula, formula.Child(node, 0), mode);
    if (node.op == Operator::Spill)
        return Fail();
    const Operand plain = EvaluateValue(formula, formula.Child(node, 0), mode);
    const Array* table = TableOf(plain);
    if (table == nullptr)
        return ApplyUnary(node.op, std::get<Value>(plain), Rules());
    if (!Spend(table->values.size()))
        return Fail();
    Array result = *table;
    for (Value& value : result.values)
        value = ApplyUnary(node.op, value, Rules());
    return MakeTable(std::move(result));
}

/// Operators that lean to the left are a chain as long as the formula: no recursion.
Operand Computation::EvaluateChain(const Formula& formula, const Node& node, Mode mode)
{
    std::vector<const Node*> chain = {&node};
    while (formula.Child(*chain.back(), 0).kind == NodeKind::Binary)
        chain.push_back(&formula.Child(*chain.back(), 0));
    const auto evaluate = [&](const Node& operand, Operator op) {
        return JoinsReferences(op) ? Evaluate(formula, operand, mode)
                                   : EvaluateValue(formula, operand, mode);
    };
    Operand left = evaluate(formula.Child(*chain.back(), 0), chain.back()->op);
    for (; !chain.empty() && !HasFailed(); chain.pop_back()) {
        const Operator op = chain.back()->op;
        const Operand right = evaluate(formula.Child(*chain.back(), 1), op);
        left = JoinsReferences(op) ? JoinReferences(op, left, right) : Join(op, left, right, mode);
    }
    return left;
}

Operand Computation::JoinReferences(Operator op, const Operand& left, const Operand& right)
{
    const auto* first = std::get_if<Reference>(&left);
    const auto* second = std::get_if<Reference>(&right);
    if (first == nullptr || second == nullptr) {
        const Value value = first == nullptr ? SingleOf(left) : SingleOf(right);
        return IsError(value) ? value : Value(CellError::Value);
    }
    Reference joined;
    if (op == Operator::Union) {
        joined = *first;
        joined.insert(joined.end(), second->begin(), second->end());
        return joined.size() > 10'000 ? Fail() : Operand(joined);
    }
    if (op == Operator::Range) {
        std::optional<Area> area = first->front();
        for (const Reference* reference : {first, second})
            for (const Area& more : *reference)
                area = area ? Enclose(*area, more) : area;
        return area ? Operand(Reference{*area}) : Operand(Value(CellError::Value));
    }
    for (const Area& one : *first) {
        for (const Area& other : *second) {
            if (!Spend(1))
                return Fail();
            if (const auto common = Intersect(one, other))
                joined.push_back(*common);
        }
    }
    return joined.empty() ? Operand(Value(CellError::Null)) : Operand(joined);
}

Operand Computation::Join(Operator op, const Operand& left, const Operand& right, Mode mode)
{
    const Operand first = Dereference(left, mode);
    const Operand second = Dereference(right, mode);
    const Array* firstTable = TableOf(first);
    const Array* secondTable = TableOf(second);
    if (firstTable == nullptr && secondTable == nullptr)
        return ApplyBinary(op, std::get<Value>(first), std::get<Value>(second), Rules());
    JoinedShape shape;
    for (const Array* const table : {firstTable, secondTable})
        if (table != nullptr)
            shape.Add(*table);
    if (shape.Size() > kLargestArray || !Spend(static_cast<std::size_t>(shape.Size())))
        return Fail();
    Array result = shape.MakeArray();
    for (std::int32_t row = 0; row < result.rows; ++row) {
        for (std::int32_t column = 0; column < result.columns; ++column) {
            const Value& one = firstTable != nullptr ? ElementOf(*firstTable, row, column)
                                                     : std::get<Value>(first);
            const Value& other = secondTable != nullptr ? ElementOf(*secondTable, row, column)
                                                        : std::get<Value>(second);
            result.At(row, column) = ApplyBinary(op, one, other, Rules());
            if (!SpendKept(result.At(row, column)))
                return Fail();
        }
    }
    return MakeTable(std::move(result));
}

/// The cell of an area that is in the row and in the column of the formula; of a single row or
/// column the other one is enough.
Value Computation::Beside(const Reference& reference)
{
    const Area& area = reference.front();
    if (reference.size() > 1 || area.firstSheet != area.lastSheet)
        return CellError::Value;
    book::CellAddress cell = place_.cell;
    if (area.Rows() == 1)
        cell.row = area.range.first.row;
    if (area.Columns() == 1)
        cell.column = area.range.first.column;
    return area.range.Contains(cell) ? ValueAt(area.firstSheet, cell) : Value(CellError::Value);
}

/// An operand of an operator, or an argument where one value is wanted.
Operand Computation::EvaluateValue(const Formula& formula, const Node& node, Mode mode)
{
    const Mode wanted = mode == Mode::Single ? Mode::OneValue : mode;
    return Dereference(Evaluate(formula, node, wanted), wanted);
}

Operand Computation::Dereference(const Operand& operand, Mode mode)
{
    if (std::holds_alternative<Missing>(operand))
        return Value();
    const auto* reference = std::get_if<Reference>(&operand);
    if (reference == nullptr)
        return operand;
    const Area& area = reference->front();
    if (reference->size() == 1 && area.IsOneCell())
        return ValueAt(area.firstSheet, area.range.first);
    if (mode != Mode::Table)
        return Beside(*reference);
    if (reference->size() > 1 || area.firstSheet != area.lastSheet)
        return Value(CellError::Value);
    return ValuesOf(area);
}

Value Computation::SingleOf(const Operand& operand)
{
    const Operand plain = Dereference(operand, Mode::Table);
    const Array* table = TableOf(plain);
    return table != nullptr ? table->values.front() : std::get<Value>(plain);
}

} // namespace orrery::formula
