#pragma once

#include "util/error.h"

#include <filesystem>
#include <system_error>

namespace orrery::util {

// What a failed call of the system says about a file, as an error of this program.

/// FileNotFound for a name that leads to nothing, else FileNotReadable with the system's words.
Error NotRead(const std::filesystem::path& file, const std::error_code& code);
/// DiskFull, FileSizeLimit, or FileNotWritable with the system's words.
Error NotWritten(const std::filesystem::path& target, const std::error_code& code);
/// NotARegularFile with the name of what the file is instead.
Error NotRegular(const std::filesystem::path& file, std::filesystem::file_type type);

} // namespace orrery::util
