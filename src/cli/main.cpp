#include "cli/command_line.h"
#include "cli/commands.h"
#include "cli/terminal.h"
#include "engines/engine_choice.h"
#include "util/error.h"

#include <iostream>

namespace {

using namespace orrery;

/// The engines of this build.
class InstalledEngines : public cli::Engines {
public:
    std::string Resolve(const std::string& name) const override
    {
        return std::string(engines::EngineName(engines::ResolveEngine(Choice(name))));
    }

    std::unique_ptr<generate::Application> Start(const std::string& name,
                                                 cli::Opener opener) override
    {
        return engines::CreateApplication(Choice(name), std::move(opener));
    }

private:
    static engines::EngineChoice Choice(const std::string& name)
    {
        const auto choice = engines::ParseEngineChoice(name);
        if (!choice)
            throw Error(util::ErrorKind::EngineMissing, name);
        return *choice;
    }
};

} // namespace

int main(int argc, char** argv)
{
    std::ios::sync_with_stdio(false);
    const auto parsed = cli::ParseCommandLine(argc, argv, std::cout, std::cerr);
    if (const auto* finished = std::get_if<cli::Finished>(&parsed))
        return finished->exitCode;
    InstalledEngines installed;
    cli::Console console{std::cout, std::cerr, cli::ErrorOutputIsTerminal()};
    return cli::RunCommand(std::get<cli::CommandLine>(parsed), ui::FindSystemFolders(), installed,
                           console);
}
