#pragma once

#include "engines/builtin/zip/entry.h"

#include <cstdint>
#include <filesystem>
#include <vector>

namespace orrery::zip {

/// The unpacked size of all entries in bytes, by what the directory declares. Throws
/// Error(TooLargeUnpacked): over 1 GiB in all, or beyond 1:1000, of the container or an entry above
/// 10 MiB.
std::uint64_t CheckSizes(const std::filesystem::path& path, const std::vector<Entry>& entries);

/// Checks that all readers see these entries under these names: a container may end in a second
/// directory, and an entry may have a second name in an extra field or behind a zero byte. Throws
/// Error(DamagedWorkbook).
void CheckIsUnambiguous(const std::filesystem::path& path, const std::vector<Entry>& entries);

} // namespace orrery::zip
