#pragma once

#include <cstdint>
#include <string>

namespace orrery::zip {

/// A file in a container, as the container's directory describes it.
struct Entry {
    std::string name;       ///< as stored
    std::uint64_t size = 0; ///< unpacked, as declared
    std::uint64_t compressedSize = 0;
};

/// The most bytes that all entries of a container may have unpacked.
inline constexpr std::uint64_t kMaxUnpacked = std::uint64_t{1} << 30U;

} // namespace orrery::zip
