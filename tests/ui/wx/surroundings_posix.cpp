#include "places/places.h"
#include "surroundings.h"

#include <cstdlib>
#include <stdexcept>

namespace orrery::ui::wx {

namespace fs = std::filesystem;

std::string HelpFile(const std::string& page)
{
    return page + ".html";
}

std::string HelpTopic(const fs::path& folder, const std::string& page)
{
    return (folder / HelpFile(page)).string();
}

std::vector<std::string> ClosingButtons()
{
    return {"cmdCancel", "cmdOK"};
}

std::string TypicalUserFolder()
{
    return "/home/anna/Calendars";
}

std::vector<std::string> ReadCells(const fs::path& workbook,
                                   const std::vector<std::string>& arguments,
                                   const fs::path& scratch)
{
    const fs::path answer = scratch / "cells.txt";
    std::string command = ORRERY_PYTHON " " +
                          (places::SourceFolder() / "tests/ui/wx/read_cells.py").generic_string() +
                          " '" + workbook.string() + "'";
    for (const std::string& argument : arguments)
        command += " '" + argument + "'";
    if (std::system((command + " >'" + answer.string() + "'").c_str()) != 0)
        throw std::runtime_error("It failed: " + command);
    return LinesOf(answer);
}

} // namespace orrery::ui::wx
