#include "engines/builtin/xls/compound/bytes.h"

#include "book/error.h"
#include "util/error.h"

#include <utility>

namespace orrery::xls {
namespace {

template <class Number> void Append(std::string& bytes, Number value)
{
    for (std::size_t i = 0; i < sizeof(Number); ++i)
        bytes += static_cast<char>(std::uint64_t{value} >> (8 * i) & 0xFF);
}

template <class Number> void Put(std::string& bytes, std::size_t at, Number value)
{
    Slice(bytes, at, sizeof(Number));
    for (std::size_t i = 0; i < sizeof(Number); ++i)
        bytes[at + i] = static_cast<char>(std::uint64_t{value} >> (8 * i) & 0xFF);
}

} // namespace

void ThrowDamaged(std::string cause)
{
    throw util::Error(book::ErrorKind::DamagedWorkbook, {}, std::move(cause));
}

void ThrowTooShort()
{
    ThrowDamaged("a record is shorter than its content");
}

void AppendU8(std::string& bytes, std::uint8_t value)
{
    Append(bytes, value);
}

void AppendU16(std::string& bytes, std::uint16_t value)
{
    Append(bytes, value);
}

void AppendU32(std::string& bytes, std::uint32_t value)
{
    Append(bytes, value);
}

void AppendU64(std::string& bytes, std::uint64_t value)
{
    Append(bytes, value);
}

void PutU8(std::string& bytes, std::size_t at, std::uint8_t value)
{
    Put(bytes, at, value);
}

void PutU16(std::string& bytes, std::size_t at, std::uint16_t value)
{
    Put(bytes, at, value);
}

void PutU32(std::string& bytes, std::size_t at, std::uint32_t value)
{
    Put(bytes, at, value);
}

} // namespace orrery::xls
