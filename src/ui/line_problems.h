#pragma once

#include "holidays/error.h"

#include <string>
#include <vector>

namespace orrery::ui {

/// One line of text about the lines of a file that are not read: the first of them and how many
/// there are. Empty if there are none.
std::string SummarizeProblems(const std::vector<holidays::LineProblem>& problems);

} // namespace orrery::ui
