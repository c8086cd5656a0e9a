#pragma once

#include <filesystem>
#include <string>

namespace orrery::excel {

/// A path in the application's form: absolute, with "\", without the prefix of long paths.
std::string PathText(const std::filesystem::path& path);

/// Throws Error(PathTooLong) if the application cannot open or save a file of that path.
void CheckPathLength(const std::filesystem::path& path);

} // namespace orrery::excel
