#pragma once

#include "look/evaluate/engine.h"
#include "look/evaluate/formula/tree.h"
#include "look/evaluate/functions/call/call.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrery::formula {

/// Computes one formula.
class Computation final : public Context {
public:
    Computation(Engine& engine, const Place& place) : engine_(engine), place_(place) {}

    /// As Excel did before formulas spilled: a reference gives the value beside the cell, unless
    /// the formula is an array's. Nothing if it cannot be computed.
    std::optional<CellResult> RunForCell(const Formula& formula,
                                         const std::optional<book::CellRange>& array);
    /// With tables in operators; the first value.
    std::optional<Value> RunWithTables(const Formula& formula);
    /// With tables in operators; all values, row by row.
    std::optional<std::vector<Value>> RunForValues(const Formula& formula);

    // Context
    const TextRules& Rules() const override { return engine_.Rules(); }
    std::size_t OwnSheet() const override { return place_.sheet; }
    book::CellAddress OwnCell() const override { return place_.cell; }
    Value ValueAt(std::size_t sheet, book::CellAddress cell) override;
    void ForEachCell(
        const Area& area,
        const std::function<bool(std::size_t, book::CellAddress, const Value&)>& take) override;
    ArrayPointer ValuesOf(const Area& given) override;
    const AreaSummary& Summarize(const Area& area) override;
    std::size_t CountOf(const Area& area, const Value& value) override;
    std::optional<std::int32_t> IndexOf(const ArrayPointer& array, bool isColumn, std::int32_t at,
                                        const Value& value) override;
    std::optional<Reference> ReadReference(std::string_view text, bool isA1) override;
    std::string SheetName(std::size_t sheet) override;
    std::size_t SheetCount() override { return engine_.SheetCount(); }
    std::optional<std::string> FormulaAt(std::size_t sheet, book::CellAddress cell) override;
    bool IsRowHidden(std::size_t sheet, std::int32_t row) override;
    Converted<std::string> Format(const Value& value, std::string_view code) override;
    bool Spend(std::size_t steps) override;
    /// Counts the memory that a value takes which is kept.
    bool SpendKept(const Value& value);
    void GiveUp() override { hasGivenUp_ = true; }

private:
    /// What references become where a value is wanted: the one beside the cell, or a table.
    /// OneValue is Single for an operand or an argument that is to be one value: tokens have data
    /// types for these ([MS-XLS] 2.2.2).
    enum class Mode : std::uint8_t { Single, OneValue, Table };

    Operand Evaluate(const Formula& formula, const Node& node, Mode mode);
    Operand EvaluateValue(const Formula& formula, const Node& node, Mode mode);
    Operand EvaluateNode(const Formula& formula, const Node& node, Mode mode);
    Operand EvaluateChain(const Formula& formula, const Node& node, Mode mode);
    Operand EvaluateUnary(const Formula& formula, const Node& node, Mode mode);
    Operand EvaluateArea(const AreaText& text);
    Operand EvaluateName(const NameText& name);
    Operand EvaluateTable(const TableText& table);
    Operand EvaluateCall(const Formula& formula, const Node& node, Mode mode);
    Operand JoinReferences(Operator op, const Operand& left, const Operand& right);
    Operand Join(Operator op, const Operand& left, const Operand& right, Mode mode);

    // Calls that do not compute all their arguments. Nothing: it is another function.
    std::optional<Operand> EvaluateChoice(const Formula& formula, const Node& node, Mode mode);
    Operand EvaluateIf(const Formula& formula, const Node& node, Mode mode);
    Operand EvaluateIfs(const Formula& formula, const Node& node, Mode mode);
    Operand EvaluateSwitch(const Formula& formula, const Node& node, Mode mode);
    Operand EvaluateChoose(const Formula& formula, const Node& node, Mode mode);
    Operand EvaluateIfError(const Formula& formula, const Node& node, Mode mode, bool onlyMissing);
    Operand EvaluateLet(const Formula& formula, const Node& node, Mode mode);
    Operand Choose(const Array& conditions, const std::function<Operand(const Value&)>& choose);

    Operand CallFunction(const FunctionEntry& function, std::vector<Operand> arguments);
    Operand CallForTables(const FunctionEntry& function, std::vector<Operand> arguments);

    /// A value or a table: no reference, nothing missing.
    Operand Dereference(const Operand& operand, Mode mode);
    Value SingleOf(const Operand& operand);
    Value Beside(const Reference& reference);
    bool HasFailed() const { return hasGivenUp_ || engine_.IsBlocked(); }
    Operand Fail()
    {
        hasGivenUp_ = true;
        return Value(CellError::Value);
    }

    Engine& engine_;
    Place place_;
    bool hasGivenUp_ = false;
    std::uint64_t steps_ = 0;
    AreaSummary summary_; ///< of the area that was asked for last, where it is not kept
    std::vector<std::pair<std::string, Operand>> variables_; ///< of LET
};

} // namespace orrery::formula
