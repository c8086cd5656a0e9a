#include "cli/terminal.h"

#include <unistd.h>

namespace orrery::cli {

std::vector<std::string> ProgramArguments(int argc, const char* const* argv)
{
    return {argv, argv + argc};
}

Terminal::Terminal() = default;
Terminal::~Terminal() = default;

bool Terminal::ShowsErrors() const
{
    return isatty(STDERR_FILENO) == 1;
}

} // namespace orrery::cli
