#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace orrery::zip {

/// The names in a zip container's directory, byte for byte, in its order. The directory is found
/// through the last end record of the file; nothing if that does not lead to one.
/// [APPNOTE] 4.3.12 to 4.3.16
std::optional<std::vector<std::string>> ReadDirectoryNames(const std::filesystem::path& path);

} // namespace orrery::zip
