#pragma once

#include "book/look/sheet_look.h"
#include "look/conditions/range_statistics.h"
#include "look/evaluate/evaluator.h"
#include "look/values/cell_display.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace orrery::look {

/// What the conditional formats of a sheet make of a cell.
struct ConditionDisplay {
    book::PartialStyle style; ///< of all rules that hold: what an earlier one sets stays
    std::optional<book::Color> scaleColor; ///< the background; then `style` has no fill
    std::optional<BarDisplay> bar;
    std::optional<IconDisplay> icon;
    bool showsValue = true;
};

/// The conditional formats of a sheet. Formulas are relative to the upper left cell of the
/// rectangle around all ranges of a format: [MS-XLS] 2.4.56 (refBound).
class SheetConditions {
public:
    /// Evaluator and look outlive it.
    SheetConditions(Evaluator& evaluator, const book::SheetLook& look, std::size_t sheet);
    /// Nothing once the evaluator's steps have run out.
    ConditionDisplay Display(book::CellAddress cell);

private:
    struct Format {
        const book::ConditionalFormat* format = nullptr;
        book::CellRange bounds;
        RangeStatistics statistics;
    };
    struct Rule {
        const book::ConditionalRule* rule = nullptr;
        std::size_t format = 0;
    };
    const std::vector<Rule>& RulesOfRow(std::int32_t row);
    void Apply(const Rule& rule, book::CellAddress cell, const Value& value,
               ConditionDisplay& display);

    Evaluator& evaluator_;
    std::size_t sheet_;
    std::vector<Format> formats_;
    std::vector<Rule> rules_; ///< the most important one first
    std::int32_t row_ = 0;    ///< that `rulesOfRow_` is for
    std::vector<Rule> rulesOfRow_;
    std::size_t stepsOfCell_ = 0; ///< to see which of them are for a cell
};

} // namespace orrery::look
