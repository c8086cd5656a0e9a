#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orrery::zip {

// Numbers in containers: the lowest byte first. [APPNOTE] 4.4.1.1

/// The number of `Size` bytes that begins at an offset; all of it must be there.
template <std::size_t Size> std::uint64_t Number(std::string_view bytes, std::size_t at)
{
    static_assert(Size <= 8);
    std::uint64_t number = 0;
    for (std::size_t i = Size; i > 0; --i)
        number = number << 8U | static_cast<unsigned char>(bytes[at + i - 1]);
    return number;
}

/// Appends a number.
template <std::size_t Size> void Put(std::string& bytes, std::uint64_t number)
{
    for (std::size_t i = 0; i < Size; ++i)
        bytes += static_cast<char>(number >> (8 * i) & 0xFFU);
}

inline constexpr std::uint16_t kNameIsUtf8 = 0x800; // a flag of an entry, [APPNOTE] 4.4.4

// What containers of 32-bit numbers have in place of those that an extra field gives in 64 bits.
inline constexpr std::uint64_t kIn64Bits = 0xFFFFFFFF;
inline constexpr std::uint64_t kCountIn64Bits = 0xFFFF;

// The records that begin with these signatures, and their sizes in bytes without what follows.
inline constexpr std::string_view kLocalHeader = "PK\x03\x04"; // [APPNOTE] 4.3.7
inline constexpr std::size_t kLocalHeaderSize = 30;
inline constexpr std::string_view kHeader = "PK\x01\x02"; // [APPNOTE] 4.3.12
inline constexpr std::size_t kHeaderSize = 46;
inline constexpr std::string_view kEndRecord64 = "PK\x06\x06"; // [APPNOTE] 4.3.14
inline constexpr std::size_t kEndRecord64Size = 56;
inline constexpr std::string_view kLocator64 = "PK\x06\x07"; // [APPNOTE] 4.3.15
inline constexpr std::size_t kLocator64Size = 20;
inline constexpr std::string_view kEndRecord = "PK\x05\x06"; // [APPNOTE] 4.3.16
inline constexpr std::size_t kEndRecordSize = 22;

} // namespace orrery::zip
