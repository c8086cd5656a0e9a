#pragma once

#include "util/error.h"

#include <cstddef>
#include <string>

namespace orrery::holidays {

/// Why a line is not a holiday rule. The subject is the line or the field that is wrong.
enum class ErrorKind {
    RuleWithoutFields, ///< fewer than two commas
    UnknownRuleKind,
    RuleDateNotNumeric,
    NoSuchRuleDate,
    RuleNumberTooLarge, ///< ends the reading of a file
    RuleWithoutMonth,   ///< likewise
    TooManyRules,       ///< more than `HolidayList::kCapacity`
    TooManyExtraLines,  ///< more than `HolidayList::kExtraCapacity`
    WrongRuleDate,      ///< for its kind; the cause tells how to write it
    UnknownRefinement,  ///< the cause is the known one that is most like it, or empty
    WrongRefinement,    ///< the cause tells how to write it
    RefinementWithoutRule,
};

std::string Sentence(ErrorKind kind, const util::ErrorDetails& details);

/// Whether nothing is read behind a line with this error.
bool EndsReading(const util::Error& error);

/// A line of a file that is not read as it was meant.
struct LineProblem {
    std::size_t line; ///< counted from 1
    util::Error error;
};

/// "Line 12: The kind "HOLIDAY" is not known. Write DAY, a weekday or EASTER."
std::string DescribeProblem(const LineProblem& problem);

} // namespace orrery::holidays
