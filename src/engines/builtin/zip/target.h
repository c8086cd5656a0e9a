#pragma once

#include <filesystem>

struct zip_source;
struct zip_error;

namespace orrery::zip {

/// A file for libzip to write a new container into, without a temporary file of libzip's own and
/// without the random name for one, which would start its whole cryptography. The file is created
/// or emptied when writing begins, and removed when writing fails. The caller gives the source to
/// libzip, which frees it. Null where memory is out.
zip_source* CreateTarget(const std::filesystem::path& path, zip_error& error);

} // namespace orrery::zip
