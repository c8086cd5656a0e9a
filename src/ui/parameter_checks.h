#pragma once

#include "ui/parameter_tab.h"

#include <optional>
#include <string>

namespace orrery::ui {

/// What is wrong on a tab of the parameter dialog.
struct Problem {
    std::string message;
    const Control* control; ///< where the user mends it
};

// Go through the checks of a tab in their order and give the first one that fails: a missing name
// or selection, a cell that is none, an interval outside its range, a calendar that does not fit
// the sheet. Throw OverflowError for a sum beyond 32 bits. With one month side by side the col
// interval of month is not checked although it is read: it throws Error(NotNumeric) where it is no
// number and OverflowError where it exceeds 32 bits.
std::optional<Problem> CheckMonthly(const ParameterTab& tab);
std::optional<Problem> CheckYearly(const YearlyTab& tab);

} // namespace orrery::ui
