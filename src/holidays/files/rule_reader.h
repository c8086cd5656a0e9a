#pragma once

#include "holidays/error.h"
#include "holidays/holiday_rule.h"
#include "holidays/language/rule_set.h"

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace orrery::holidays {

/// Appends the rules of a file or section to a list, with the lines that refine them, and collects
/// the lines that are not read.
class RuleReader {
public:
    explicit RuleReader(HolidayList& list) : list_(list) {}

    /// Reads the rule or refinement of a line, counted from 1; false if it is not read. The first
    /// rule beyond a full list is a problem; those after it are passed over.
    bool Read(std::size_t line, std::string_view rule);
    /// Whether a rule ended the reading: nothing after it may be read.
    bool HasEnded() const { return hasEnded_; }
    /// The rules that were read, with their refinements; their lines are those given to `Read`.
    RuleSet TakeRules() { return builder_.Take(); }
    std::vector<LineProblem> TakeProblems() { return std::move(problems_); }

private:
    bool ReadExtra(std::size_t line, std::string_view text);

    HolidayList& list_;
    RuleSetBuilder builder_; ///< finds what is not understood
    std::vector<LineProblem> problems_;
    bool isBeyondCapacity_ = false;
    bool hasManyExtras_ = false;
    bool hasEnded_ = false;
};

} // namespace orrery::holidays
