#pragma once

#include "holidays/error.h"

#include <string>
#include <vector>

namespace orrery::model {

/// Content of a parameter file that the reader does not use, written by people or newer versions.
/// It is kept when the file is saved.
struct ParameterExtras {
    // Lines of holiday rules that are not read.
    std::vector<std::string> monthlyRules;
    std::vector<std::string> yearlyRules;
    std::vector<std::string> shownHolidays; ///< lines of the section "[Holidays]"
    std::string sections;                   ///< all other sections, unchanged
    /// The line that ended the reading and what is behind it, with the header of its section.
    std::string unread;
};

/// What was not read of a parameter file.
struct ParameterReading {
    std::vector<holidays::LineProblem> monthlyProblems;
    std::vector<holidays::LineProblem> yearlyProblems;
    ParameterExtras extras;
};

} // namespace orrery::model
