#pragma once

#include "book/look/conditional_format.h"
#include "look/conditions/range_statistics.h"
#include "look/evaluate/evaluator.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace orrery::look {

/// The cell that a rule is asked about.
struct RuleSubject {
    std::size_t sheet = 0;
    book::CellAddress cell;
    book::CellAddress relativeTo; ///< the cell for which the rule's formulas are written
    const Value& value;           ///< the cell's
};

/// Whether a rule holds that sets a style. One that cannot be computed does not.
bool Holds(const book::ConditionalRule& rule, const RuleSubject& subject, Evaluator& evaluator,
           RangeStatistics& statistics);

/// The number of a formula, or of a plain number, for the subject; nothing for other values.
std::optional<double> NumberOf(std::string_view formula, const RuleSubject& subject,
                               Evaluator& evaluator);

} // namespace orrery::look
