#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace orrery::zip {

/// The names in a zip container's directory, byte for byte, in its order: the directory that
/// belongs to the last end record of the file. Nothing where there is none that can be followed.
/// [APPNOTE] 4.3.12 to 4.3.16
std::optional<std::vector<std::string>> ReadDirectoryNames(const std::filesystem::path& path);

} // namespace orrery::zip
