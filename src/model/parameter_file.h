#pragma once

#include "model/name_lists.h"
#include "model/parameters.h"

#include <filesystem>
#include <string>

namespace orrery::model {

/// The template folder followed by the template's base name and ".ini".
std::string ParameterFilePath(const std::string& templateFolder, const std::string& templateFile);

/// Reads a parameter file over the sets, which must hold the defaults: a key that is missing or
/// invalid leaves its field as it was. Unknown name lists are added to the tables. The holidays
/// of both sets are dropped first, even when the file cannot be
/// read.
void ReadParameterFile(const std::filesystem::path& path, NameTables& names, ParameterSets& sets);

/// Writes both sets, replacing the file. What the old one held in other sections, and holiday rules
/// that were not understood, are kept. False when it cannot be written; an old file then stays.
bool WriteParameterFile(const std::filesystem::path& path, const NameTables& names,
                        const ParameterSets& sets);

} // namespace orrery::model
