#include "cli/command_line.h"
#include "cli/commands.h"
#include "cli/terminal.h"
#include "engines/engine_choice.h"
#include "util/process.h"

#include <iostream>
#include <string>
#include <vector>

using namespace orrery;

int main(int argc, char** argv)
{
    util::PrepareProcess();
    std::ios::sync_with_stdio(false);
    const auto terminal = cli::UseUtf8Terminal();
    const auto arguments = cli::ProgramArguments(argc, argv);
    std::vector<const char*> pointers;
    pointers.reserve(arguments.size());
    for (const std::string& argument : arguments)
        pointers.push_back(argument.c_str());
    const auto parsed = cli::ParseCommandLine(static_cast<int>(pointers.size()), pointers.data(),
                                              std::cout, std::cerr);
    book::Patience patience;
    const auto interrupts = cli::WatchInterrupts(patience);
    cli::Console console{std::cout, std::cerr, cli::ErrorOutputIsTerminal(), &patience};
    if (const auto* finished = std::get_if<cli::Finished>(&parsed))
        return cli::FinishOutput(console, finished->exitCode);
    engines::InstalledEngines installed;
    return cli::RunCommand(std::get<cli::CommandLine>(parsed), app::FindSystemFolders(), installed,
                           console);
}
