#pragma once

#include <filesystem>

namespace orrery::builtin {

/// Whether the structure of an .xlsx workbook, that is, the names and the order of its sheets, is
/// protected. False for any other file and for one that cannot be read.
bool HasProtectedStructure(const std::filesystem::path& path);

} // namespace orrery::builtin
