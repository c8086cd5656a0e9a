#pragma once

#include <string>
#include <vector>

namespace orrery::app {

/// Whether the name is that of a template: "*.xls;*.xlsx" in any case, but not the hidden file
/// ("~$...") with which Excel marks an open workbook.
bool IsTemplateName(const std::string& file);

/// Names of the templates in a folder, in the order of `ListFiles`.
std::vector<std::string> ListTemplates(const std::string& folder);

/// Copies a file into the folder and replaces one with the same name. Throws Error (FileNotFound,
/// FileNotReadable, NotARegularFile, FileNotWritable, DiskFull); the old file then stays.
void CopyFileInto(const std::string& folder, const std::string& file);

/// The folder of the templates that are installed for all users; empty if there are none.
std::string ShippedTemplateFolder(const std::string& installed);

/// The path of a holiday file that is installed for all users; the file need not exist.
std::string ShippedHolidayFile(const std::string& installed, const std::string& file);

/// Copies the shipped templates with their parameter files into the template folder. Existing files
/// stay. Throws like `CopyFileInto`.
void CopyShippedTemplates(const std::string& installed, const std::string& folder);

} // namespace orrery::app
