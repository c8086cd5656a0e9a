#pragma once

#include <cstdint>
#include <string>

namespace orrery::zip {

/// Methods of compression. [APPNOTE] 4.4.5
inline constexpr std::uint16_t kStored = 0;
inline constexpr std::uint16_t kDeflated = 8;

/// A file in a container, as the container's directory describes it. [APPNOTE] 4.3.12
struct Entry {
    std::string name;         ///< in UTF-8
    std::uint64_t size = 0;   ///< unpacked, as declared
    std::uint64_t packed = 0; ///< as it is in the container
    std::uint64_t header = 0; ///< the offset of its local header
    std::uint32_t crc = 0;    ///< of the unpacked bytes, as declared
    std::uint32_t attributes = 0;
    std::uint16_t system = 0; ///< what the attributes mean, and the version that made the entry
    std::uint16_t method = 0;
    std::uint16_t time = 0;
    std::uint16_t date = 0;
};

/// The most bytes that all entries of a container may have unpacked.
inline constexpr std::uint64_t kMaxUnpacked = std::uint64_t{1} << 30U;

} // namespace orrery::zip
