#include "cli/terminal.h"

#include <unistd.h>

namespace orrery::cli {

bool ErrorOutputIsTerminal()
{
    return isatty(STDERR_FILENO) == 1;
}

} // namespace orrery::cli
