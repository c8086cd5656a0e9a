#pragma once

#include <filesystem>

namespace orrery::builtin {

/// Whether an .xlsx workbook protects the names and the order of its sheets. No for any other file,
/// and for one that cannot be read.
bool HasProtectedStructure(const std::filesystem::path& path);

} // namespace orrery::builtin
