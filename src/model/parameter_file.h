#pragma once

#include "model/name_lists.h"
#include "model/parameter_reading.h"
#include "model/parameters.h"

#include <filesystem>
#include <string>

namespace orrery::model {

/// The template folder followed by the template's base name and ".ini".
std::string ParameterFilePath(const std::string& templateFolder, const std::string& templateFile);

/// Reads a parameter file into the sets, which must contain the defaults: a missing or invalid key
/// leaves its field unchanged. Unknown name lists are added to the tables. The holidays of both
/// sets are cleared first, even if the file cannot be read.
ParameterReading ReadParameterFile(const std::filesystem::path& path, NameTables& names,
                                   ParameterSets& sets);

/// Writes both sets and replaces the file. What the old file has beside them is kept. If it cannot
/// be written the old file stays. Throws Error (FileNotWritable, DiskFull, ...; OutOfRange for an
/// index outside the tables of names).
void WriteParameterFile(const std::filesystem::path& path, const NameTables& names,
                        const ParameterSets& sets);

} // namespace orrery::model
