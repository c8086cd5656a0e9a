#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::test {

inline constexpr std::size_t kMiB = std::size_t{1} << 20;

/// An entry of a zip container to be built, with everything that a container can say about it.
struct ZipPart {
    std::string name;
    std::string content = {};
    bool stored = false;     ///< not compressed
    bool descriptor = false; ///< sizes after the data, as streaming writers do it
    bool zip64 = false;
    std::uint16_t flags = 0;                        ///< added to those that the other options need
    std::uint16_t time = 0x6C20;                    ///< 13:33:00
    std::uint16_t date = 0x5A4B;                    ///< 2025-02-11
    std::optional<std::uint32_t> declaredSize = {}; ///< a false unpacked size
    std::optional<std::uint32_t> declaredChecksum = {}; ///< a false checksum
    std::optional<std::uint32_t> declaredPacked = {};   ///< a false packed size
    std::string extra = {};                             ///< more fields for the directory's entry
};

/// Builds a container without the library that reads it.
std::string BuildZip(const std::vector<ZipPart>& parts);

/// The extra field that gives an entry another name, as some programs do for names beyond ASCII.
std::string UnicodePathField(std::string_view headerName, std::string_view name);

/// A text compressed with deflate, without a header.
std::string Deflate(std::string_view text, int level);

/// The packed bytes of an entry, found through the local headers; nothing if there is no such entry
/// or its local headers lack the size.
std::optional<std::string> PackedBytes(std::string_view zip, std::string_view name);

} // namespace orrery::test
