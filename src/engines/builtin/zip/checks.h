#pragma once

#include "engines/builtin/zip/entry.h"

#include <cstdint>
#include <filesystem>
#include <vector>

namespace orrery::zip {

/// The declared unpacked size of all entries in bytes. Throws Error(TooLargeUnpacked) if it is over
/// 1 GiB, or if the container, or an entry above 10 MiB, is compressed by more than 1:1000.
std::uint64_t CheckSizes(const std::filesystem::path& path, const std::vector<Entry>& entries);

/// Checks that all readers see these entries under these names: a container may end in a second
/// directory, and an entry may have a second name in an extra field or after a zero byte.
/// Throws Error(DamagedWorkbook).
void CheckIsUnambiguous(const std::filesystem::path& path, const std::vector<Entry>& entries);

} // namespace orrery::zip
