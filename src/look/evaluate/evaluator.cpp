#include "look/evaluate/evaluator.h"

#include "look/evaluate/computation.h"
#include "look/evaluate/engine.h"
#include "look/evaluate/feeds.h"

namespace orrery::look {
namespace {

std::optional<formula::CellResult> ComputeCell(formula::Engine& engine, const formula::Place& place,
                                               const formula::Formula& formula,
                                               const std::optional<book::CellRange>& array)
{
    return formula::Computation(engine, place).RunForCell(formula, array);
}

} // namespace

class Evaluator::Engine : public formula::Engine {
    using formula::Engine::Engine;
};

Evaluator::Evaluator(book::WorkbookView& view, double now, EvaluationLimits limits)
    : engine_(std::make_unique<Engine>(view, formula::TextRules{view.Workbook().dateSystem, now},
                                       formula::StepLimits{limits.stepsOfFormula, limits.steps},
                                       formula::EngineTasks{ComputeCell, formula::IsFedByWritten}))
{
    for (const book::CellOfSheet& written : view.WrittenCells())
        engine_->MarkWritten({written.sheet, written.cell});
}

Evaluator::~Evaluator() = default;

void Evaluator::MarkWritten(std::size_t sheet, book::CellAddress cell)
{
    engine_->MarkWritten({sheet, cell});
}

EvaluatedCell Evaluator::ValueOf(std::size_t sheet, book::CellAddress cell)
{
    using Source = EvaluatedCell::Source;
    const auto* entry = engine_->Settle({sheet, cell});
    const auto value = engine_->Read({sheet, cell});
    if (entry == nullptr)
        return {value.value_or(Value()), Source::Constant};
    if (!value)
        return {Value(), Source::NotComputed};
    return {*value,
            entry->state == formula::Engine::State::Computed ? Source::Computed : Source::Stored};
}

std::optional<Value> Evaluator::Compute(std::string_view text, std::size_t sheet,
                                        book::CellAddress cell, book::CellAddress relativeTo)
{
    std::optional<Value> value;
    engine_->Complete([&] {
        value.reset();
        const auto parsed = engine_->Parsed(std::string(text));
        if (parsed != nullptr)
            value =
                formula::Computation(*engine_, {sheet, cell, relativeTo}).RunWithTables(*parsed);
    });
    return value;
}

std::optional<std::vector<Value>> Evaluator::ValuesOf(std::string_view text, std::size_t sheet)
{
    std::optional<std::vector<Value>> values;
    engine_->Complete([&] {
        values.reset();
        const auto parsed = engine_->Parsed(std::string(text));
        if (parsed != nullptr)
            values = formula::Computation(*engine_, {sheet, {1, 1}, {1, 1}}).RunForValues(*parsed);
    });
    return values;
}

void Evaluator::ForEachCell(std::size_t sheet, const book::CellRange& range, std::uint64_t steps,
                            const std::function<void(book::CellAddress, const Value&)>& take)
{
    const formula::SheetCells& cells = engine_->Sheet(sheet);
    cells.ForEach(range, [&](std::uint32_t at) {
        if (!engine_->Spend(steps + cells.StepsOfArrays()))
            return false;
        const book::CellAddress cell = cells.Look().cells[at].address;
        const EvaluatedCell found = ValueOf(sheet, cell);
        if (!formula::IsBlank(found.value))
            take(cell, found.value);
        return true;
    });
}

bool Evaluator::Spend(std::uint64_t steps)
{
    return engine_->Spend(steps);
}

bool Evaluator::HasReachedLimit() const
{
    return engine_->HasSpentAll();
}

book::DateSystem Evaluator::Dates() const
{
    return engine_->Rules().system;
}

double Evaluator::Now() const
{
    return engine_->Rules().now;
}

} // namespace orrery::look
