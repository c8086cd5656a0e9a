#include "surroundings.h"

#include <fstream>

namespace orrery::ui::wx {

std::vector<std::string> LinesOf(const std::filesystem::path& file)
{
    std::ifstream stream(file);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

} // namespace orrery::ui::wx
