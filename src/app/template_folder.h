#pragma once

#include <string>
#include <vector>

namespace orrery::app {

/// Whether a file of that name is a template: "*.xls;*.xlsx" in any case, and not the hidden file
/// ("~$...") by which a spreadsheet program marks an open workbook.
bool IsTemplateName(const std::string& file);

/// Names of the templates of a folder, sorted.
std::vector<std::string> ListTemplates(const std::string& folder);

/// Copies a file into the folder, over one of the same name. Throws Error (FileNotFound,
/// FileNotReadable, NotARegularFile, FileNotWritable, DiskFull); an old file then stays.
void CopyFileInto(const std::string& folder, const std::string& file);

/// Where the templates lie that are installed for everybody; empty: nothing is installed.
std::string ShippedTemplateFolder(const std::string& installed);

/// Copies the shipped templates with their parameter files into the template folder; files that
/// are there stay. Throws Error as above.
void CopyShippedTemplates(const std::string& installed, const std::string& folder);

} // namespace orrery::app
