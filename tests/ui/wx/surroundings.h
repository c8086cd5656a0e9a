#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// What lies around the window program on the system that the tests run on.
namespace orrery::ui::wx {

/// The name of the file that has this page of the help.
std::string HelpFile(const std::string& page);
/// What is opened to show a page of the help in that folder.
std::string HelpTopic(const std::filesystem::path& folder, const std::string& page);

/// The names of the buttons at the end of a dialog, in the order that the system gives them.
std::vector<std::string> ClosingButtons();

/// A folder as a reader of the manual has one.
std::string ReadersFolder();

/// Lines that `read_cells.py` writes with these arguments after the workbook's. `scratch` is a
/// folder for its answer. Throws when it fails.
std::vector<std::string> ReadCells(const std::filesystem::path& workbook,
                                   const std::vector<std::string>& arguments,
                                   const std::filesystem::path& scratch);

/// The lines of a file; none when it cannot be read.
std::vector<std::string> LinesOf(const std::filesystem::path& file);

} // namespace orrery::ui::wx
