#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Numbers in the byte order of the format, little-endian. Reading beyond the end of the bytes is
/// damage.
namespace orrery::xls {

/// Throws Error(DamagedWorkbook) without a subject; whoever knows the file adds it.
[[noreturn]] void ThrowDamaged(std::string cause);

/// The `size` bytes at `at`. Throws as `ThrowDamaged` where they are not all there.
std::string_view Slice(std::string_view bytes, std::size_t at, std::size_t size);

std::uint8_t ReadU8(std::string_view bytes, std::size_t at);
std::uint16_t ReadU16(std::string_view bytes, std::size_t at);
std::uint32_t ReadU32(std::string_view bytes, std::size_t at);
std::uint64_t ReadU64(std::string_view bytes, std::size_t at);
double ReadDouble(std::string_view bytes, std::size_t at);

void AppendU8(std::string& bytes, std::uint8_t value);
void AppendU16(std::string& bytes, std::uint16_t value);
void AppendU32(std::string& bytes, std::uint32_t value);
void AppendU64(std::string& bytes, std::uint64_t value);
void AppendDouble(std::string& bytes, double value);

/// Writes over bytes that are there (assert).
void PutU8(std::string& bytes, std::size_t at, std::uint8_t value);
void PutU16(std::string& bytes, std::size_t at, std::uint16_t value);
void PutU32(std::string& bytes, std::size_t at, std::uint32_t value);

} // namespace orrery::xls
