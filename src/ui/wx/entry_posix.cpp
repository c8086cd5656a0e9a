#include "ui/wx/program.h"
#include "util/process.h"

#include <wx/init.h>

#include <iostream>

int main(int argc, char** argv)
{
    orrery::util::PrepareProcess();
    const auto answer = orrery::ui::wx::AnswerTo(argc == 2 ? argv[1] : "");
    if (answer) { // without a display
        std::cout << *answer << std::flush;
        return std::cout ? 0 : 1;
    }
    orrery::ui::wx::MakeProgram();
    return wxEntry(argc, argv);
}
