#include "ui/wx/program.h"
#include "util/process.h"

#include <wx/init.h>

#include <iostream>

int main(int argc, char** argv)
{
    orrery::util::PrepareProcess();
    const auto answer = orrery::ui::wx::OptionOutput(argc == 2 ? argv[1] : "");
    if (answer) { // needs no display
        std::cout << *answer << std::flush;
        return std::cout ? 0 : 1;
    }
    orrery::ui::wx::RegisterApplication();
    return wxEntry(argc, argv);
}
