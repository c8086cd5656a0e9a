#pragma once

#include "util/error.h"

#include <filesystem>
#include <system_error>

namespace orrery::util {

// Turn the error code of a failed system call on a file into an Error.

/// FileNotFound if there is no such file, else FileNotReadable with the system's message.
Error MakeReadError(const std::filesystem::path& file, const std::error_code& code);
/// DiskFull, FileSizeLimit, or FileNotWritable with the system's message.
Error MakeWriteError(const std::filesystem::path& target, const std::error_code& code);
/// NotARegularFile; the cause says what the file is instead.
Error MakeNotRegularError(const std::filesystem::path& file, std::filesystem::file_type type);

} // namespace orrery::util
