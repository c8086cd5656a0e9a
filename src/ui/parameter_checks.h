#pragma once

#include "ui/parameter_tab.h"

#include <optional>
#include <string>

namespace orrery::ui {

/// What is wrong on a tab of the parameter dialog.
struct Problem {
    std::string message;
    const Control* control; ///< where the user can correct it
};

// Run the checks of a tab in order and return the first that fails: a missing name or selection, an
// invalid cell, an interval out of range, a calendar that does not fit the sheet. Throw
// OverflowError for a sum beyond 32 bits. With only one month side by side the col interval of
// month is read without being checked: Error(NotNumeric) if it is not a number, OverflowError
// beyond 32 bits.
std::optional<Problem> CheckMonthly(const ParameterTab& tab);
std::optional<Problem> CheckYearly(const YearlyTab& tab);

} // namespace orrery::ui
