#include "ui/wx/program.h"

#include "engines/engine_choice.h"
#include "ui/about_form.h"
#include "ui/wx/main/application.h"

#include <memory>

namespace orrery::ui::wx {

std::optional<std::string> OptionOutput(std::string_view option)
{
    if (option == "--version")
        return std::string(kProductName) + ' ' + VersionText(BuildVersion()) + '\n';
    if (option == "--help") {
        return "Usage: orrery [TEMPLATE...]\n"
               "Opens the window. Templates that are named are copied into the template "
               "folder and chosen.\n"
               "  --version  print the version and exit\n"
               "  --help     print this help and exit\n"
               "The command line of the program is orrery-cli.\n";
    }
    return std::nullopt;
}

void RegisterApplication()
{
    wxApp::SetInstance(new Application(std::make_unique<engines::InstalledEngines>()));
}

} // namespace orrery::ui::wx
