#include "engines/engine_choice.h"
#include "ui/about_form.h"
#include "ui/wx/application.h"

#include <wx/app.h>

#include <iostream>
#include <memory>
#include <string_view>

using namespace orrery;

int main(int argc, char** argv)
{
    const std::string_view option = argc == 2 ? argv[1] : "";
    if (option == "--version") { // answered without a display
        std::cout << ui::kProductName << ' ' << ui::VersionText(ui::BuildVersion()) << '\n';
        return 0;
    }
    if (option == "--help") {
        std::cout << "Usage: orrery [TEMPLATE...]\n"
                     "Opens the window. Templates that are named are copied into the template "
                     "folder and chosen.\n"
                     "  --version  print the version and exit\n"
                     "  --help     print this help and exit\n"
                     "The command line of the program is orrery-cli.\n";
        return 0;
    }
    wxApp::SetInstance(new ui::wx::Application(std::make_unique<engines::InstalledEngines>()));
    return wxEntry(argc, argv);
}
