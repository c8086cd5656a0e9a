#include "cli/terminal.h"

#include <unistd.h>

namespace orrery::cli {

std::vector<std::string> ProgramArguments(int argc, const char* const* argv)
{
    return {argv, argv + argc};
}

std::shared_ptr<void> UseUtf8Terminal()
{
    return {};
}

bool ErrorOutputIsTerminal()
{
    return isatty(STDERR_FILENO) == 1;
}

} // namespace orrery::cli
