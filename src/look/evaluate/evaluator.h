#pragma once

#include "book/look/workbook_view.h"
#include "look/evaluate/values/value.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace orrery::look {

using formula::Value;

/// What a cell has, and how that is known.
struct EvaluatedCell {
    enum class Source : std::uint8_t {
        Constant,
        Computed,
        Stored,     ///< the file's result of a formula that cannot be computed
        NotComputed ///< such a formula where the stored result is missing or out of date
    };
    Value value; ///< nothing if it is not computed
    Source source = Source::Constant;
};

/// When a limit is reached, a formula counts as one that cannot be computed.
struct EvaluationLimits {
    std::uint64_t stepsOfFormula = 15'000'000; ///< cells read, values joined
    std::uint64_t steps = 15'000'000;          ///< of all formulas: about half a second
};

/// Computes formulas on demand and remembers their values. Never throws for a damaged sheet or
/// formula. What cannot be computed: unknown and random functions, other workbooks, circles.
class Evaluator {
public:
    /// The view outlives the evaluator. `now` is a serial number in the workbook's date system.
    Evaluator(book::WorkbookView& view, double now, EvaluationLimits limits = {});
    ~Evaluator();
    Evaluator(const Evaluator&) = delete;
    Evaluator& operator=(const Evaluator&) = delete;

    /// A cell beside the view's own `WrittenCells` differs from the file's: stored results of
    /// formulas that read it, directly or not, are out of date.
    void MarkWritten(std::size_t sheet, book::CellAddress cell);

    EvaluatedCell ValueOf(std::size_t sheet, book::CellAddress cell);
    /// A formula, without "=", as for a cell; its relative references are written for `relativeTo`.
    /// Operators in it work on tables, as in conditional formats. Nothing if it cannot be computed.
    std::optional<Value> Compute(std::string_view text, std::size_t sheet, book::CellAddress cell,
                                 book::CellAddress relativeTo);
    /// The values of a formula that stands on a sheet: of a reference those of its cells, row by
    /// row. Nothing if it cannot be computed.
    std::optional<std::vector<Value>> ValuesOf(std::string_view text, std::size_t sheet);
    /// Calls for each cell of a range of a sheet that has a value, row by row. Each counts so many
    /// steps; it ends when the limit is reached.
    void ForEachCell(std::size_t sheet, const book::CellRange& range, std::uint64_t steps,
                     const std::function<void(book::CellAddress, const Value&)>& take);
    /// Counts other work. False: the limit is reached.
    bool Spend(std::uint64_t steps);
    /// Whether the steps of all formulas have run out: from then on none is computed.
    bool HasReachedLimit() const;
    book::DateSystem Dates() const;
    double Now() const;

private:
    class Engine;
    std::unique_ptr<Engine> engine_;
};

} // namespace orrery::look
