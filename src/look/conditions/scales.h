#pragma once

#include "book/look/conditional_format.h"
#include "look/conditions/rule_tests.h"
#include "look/values/cell_display.h"

#include <optional>
#include <vector>

namespace orrery::look {

// Of a number; nothing if a bound cannot be computed.

/// Between the colours of the points around it.
std::optional<book::Color> ColorOnScale(const std::vector<book::ScalePoint>& points, double number,
                                        const RuleSubject& subject, Evaluator& evaluator,
                                        RangeStatistics& statistics);
std::optional<BarDisplay> BarOf(const book::DataBar& bar, double number, const RuleSubject& subject,
                                Evaluator& evaluator, RangeStatistics& statistics);
/// Nothing also for a number that has no icon.
std::optional<IconDisplay> IconOf(const book::IconSet& icons, double number,
                                  const RuleSubject& subject, Evaluator& evaluator,
                                  RangeStatistics& statistics);

} // namespace orrery::look
