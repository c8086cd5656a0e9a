#pragma once

#include <cstdint>
#include <string>

namespace orrery::zip {

/// A file in a container, as the container's directory tells.
struct Entry {
    std::string name;       ///< as stored
    std::uint64_t size = 0; ///< unpacked, as declared
    std::uint64_t compressedSize = 0;
};

/// Bytes that the entries of a container may have in all when they are unpacked.
inline constexpr std::uint64_t kMostUnpacked = std::uint64_t{1} << 30U;

} // namespace orrery::zip
