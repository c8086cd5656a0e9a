#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::test {

inline constexpr std::size_t kMiB = std::size_t{1} << 20;

/// One entry of a zip container to be built, with everything that a container may say of it.
struct ZipPart {
    std::string name;
    std::string content = {};
    bool stored = false;     ///< not packed
    bool descriptor = false; ///< sizes behind the data, as writers of streams do it
    bool zip64 = false;
    std::uint16_t flags = 0;                            ///< added to those that the others need
    std::uint16_t time = 0x6C20;                        ///< 13:33:00
    std::uint16_t date = 0x5A4B;                        ///< 2025-02-11
    std::optional<std::uint32_t> declaredSize = {};     ///< a lie about the unpacked size
    std::optional<std::uint32_t> declaredChecksum = {}; ///< a lie about the checksum
    std::optional<std::uint32_t> declaredPacked = {};   ///< a lie about the packed size
    std::string extra = {};                             ///< more fields of the directory's entry
};

/// The bytes of a container, written here and not by the library that reads it.
std::string BuildZip(const std::vector<ZipPart>& parts);

/// The extra field that gives an entry another name, as some programs do for names beyond ASCII.
std::string UnicodePathField(std::string_view headerName, std::string_view name);

/// What deflate makes of a text, without a header.
std::string Deflate(std::string_view text, int level);

/// The packed bytes of an entry, found by walking through the local headers; nothing where the
/// container has no such entry or its local headers do not tell the size.
std::optional<std::string> PackedBytes(std::string_view zip, std::string_view name);

} // namespace orrery::test
