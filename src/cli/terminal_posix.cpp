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

std::shared_ptr<void> WatchInterrupts(book::Patience& /*patience*/)
{
    return {}; // the guard of an application ends it with this program
}

bool ErrorOutputIsTerminal()
{
    return isatty(STDERR_FILENO) == 1;
}

} // namespace orrery::cli
