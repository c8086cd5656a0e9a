#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

/// Numbers in the byte order of the format, little-endian. Reading or writing past the end of the
/// bytes is treated as damage, in every build.
namespace orrery::xls {

/// Throws Error(DamagedWorkbook) without a subject; a caller that knows the file adds it.
[[noreturn]] void ThrowDamaged(std::string cause);

[[noreturn]] void ThrowTooShort();

/// The `size` bytes at `at`. Throws as `ThrowDamaged` if they are not all there.
inline std::string_view Slice(std::string_view bytes, std::size_t at, std::size_t size)
{
    if (at > bytes.size() || bytes.size() - at < size)
        ThrowTooShort();
    return {bytes.data() + at, size};
}

// Inline because sheets have a million of them.
template <class Number> Number ReadNumber(std::string_view bytes, std::size_t at)
{
    std::array<char, sizeof(Number)> number{};
    std::memcpy(number.data(), Slice(bytes, at, sizeof(Number)).data(), sizeof(Number));
    if constexpr (std::endian::native == std::endian::big)
        std::reverse(number.begin(), number.end());
    return std::bit_cast<Number>(number);
}

inline std::uint8_t ReadU8(std::string_view bytes, std::size_t at)
{
    return ReadNumber<std::uint8_t>(bytes, at);
}

inline std::uint16_t ReadU16(std::string_view bytes, std::size_t at)
{
    return ReadNumber<std::uint16_t>(bytes, at);
}

inline std::uint32_t ReadU32(std::string_view bytes, std::size_t at)
{
    return ReadNumber<std::uint32_t>(bytes, at);
}

inline std::uint64_t ReadU64(std::string_view bytes, std::size_t at)
{
    return ReadNumber<std::uint64_t>(bytes, at);
}

void AppendU8(std::string& bytes, std::uint8_t value);
void AppendU16(std::string& bytes, std::uint16_t value);
void AppendU32(std::string& bytes, std::uint32_t value);
void AppendU64(std::string& bytes, std::uint64_t value);

/// Overwrites existing bytes. Throws as `ThrowDamaged` and writes nothing if they do not exist.
void PutU8(std::string& bytes, std::size_t at, std::uint8_t value);
void PutU16(std::string& bytes, std::size_t at, std::uint16_t value);
void PutU32(std::string& bytes, std::size_t at, std::uint32_t value);

} // namespace orrery::xls
