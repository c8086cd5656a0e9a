#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// The environment of the window program, which differs between systems.
namespace orrery::ui::wx {

/// The name of the file that contains this help page.
std::string HelpFile(const std::string& page);
/// What is opened to show a help page in that folder.
std::string HelpTopic(const std::filesystem::path& folder, const std::string& page);

/// The names of the buttons at the end of a dialog, in the system's order.
std::vector<std::string> ClosingButtons();

/// A typical user's folder, for the manual's pictures.
std::string TypicalUserFolder();

/// The lines that `read_cells.py` prints for the workbook and these arguments. `scratch` is a
/// folder for its output. Throws if it fails.
std::vector<std::string> ReadCells(const std::filesystem::path& workbook,
                                   const std::vector<std::string>& arguments,
                                   const std::filesystem::path& scratch);

/// The lines of a file; none if it cannot be read.
std::vector<std::string> LinesOf(const std::filesystem::path& file);

} // namespace orrery::ui::wx
