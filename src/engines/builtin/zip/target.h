#pragma once

#include <filesystem>

struct zip_source;
struct zip_error;

namespace orrery::zip {

/// A file for libzip to write a new container to. libzip's own file source writes a temporary file,
/// and choosing its random name initialises all of the cryptography. The file is created or emptied
/// when writing begins, and removed if writing fails. The caller gives the source to libzip, which
/// frees it. Null if out of memory.
zip_source* CreateTarget(const std::filesystem::path& path, zip_error& error);

} // namespace orrery::zip
