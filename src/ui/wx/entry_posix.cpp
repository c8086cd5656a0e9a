#include "ui/wx/program.h"

#include <wx/init.h>

#include <iostream>

int main(int argc, char** argv)
{
    const auto answer = orrery::ui::wx::AnswerTo(argc == 2 ? argv[1] : "");
    if (answer) { // without a display
        std::cout << *answer;
        return 0;
    }
    orrery::ui::wx::MakeProgram();
    return wxEntry(argc, argv);
}
