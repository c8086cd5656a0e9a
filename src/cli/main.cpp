#include "cli/command_line.h"
#include "cli/commands.h"
#include "cli/terminal.h"
#include "engines/engine_choice.h"

#include <iostream>

using namespace orrery;

int main(int argc, char** argv)
{
    std::ios::sync_with_stdio(false);
    const auto parsed = cli::ParseCommandLine(argc, argv, std::cout, std::cerr);
    if (const auto* finished = std::get_if<cli::Finished>(&parsed))
        return finished->exitCode;
    engines::InstalledEngines installed;
    cli::Console console{std::cout, std::cerr, cli::ErrorOutputIsTerminal()};
    return cli::RunCommand(std::get<cli::CommandLine>(parsed), ui::FindSystemFolders(), installed,
                           console);
}
