#include "ui/line_problems.h"

namespace orrery::ui {

std::string SummarizeProblems(const std::vector<holidays::LineProblem>& problems)
{
    if (problems.empty())
        return {};
    const std::string first = DescribeProblem(problems.front());
    return problems.size() == 1 ? first
                                : std::to_string(problems.size()) + " lines are not read. " + first;
}

} // namespace orrery::ui
