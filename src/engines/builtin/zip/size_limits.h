#pragma once

#include "engines/builtin/zip/entry.h"

#include <cstdint>
#include <filesystem>
#include <vector>

namespace orrery::zip {

/// The declared unpacked size of all entries of a container of `fileSize` bytes. Throws
/// Error(TooLargeUnpacked) if it is over `kMaxUnpacked`, or if the container, or an entry above
/// 10 MiB, is compressed by more than 1:1000.
std::uint64_t CheckSizes(const std::filesystem::path& path, std::uint64_t fileSize,
                         const std::vector<Entry>& entries);

} // namespace orrery::zip
