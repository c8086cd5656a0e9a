#include "engines/builtin/xls/records/unicode_string.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "util/unicode.h"

#include <algorithm>
#include <cassert>
#include <limits>

namespace orrery::xls {
namespace {

void AppendFlagsAndCharacters(std::string& bytes, std::u16string_view units)
{
    const bool wide = NeedsWideCharacters(units);
    AppendU8(bytes, wide ? kWideCharacters : 0);
    AppendCharacters(bytes, units, wide);
}

/// The flags say how wide the characters are; the other flags are not used here.
std::size_t CharactersSize(std::string_view bytes, std::size_t flagsAt, std::size_t count)
{
    return (ReadU8(bytes, flagsAt) & kWideCharacters) != 0 ? count * 2 : count;
}

UnicodeString ReadCounted(std::string_view bytes, std::size_t at, std::size_t countSize,
                          std::size_t count)
{
    auto string = ReadUnicodeStringNoCount(bytes, at + countSize, count);
    string.size += countSize;
    return string;
}

} // namespace

UnicodeString ReadUnicodeString(std::string_view bytes, std::size_t at)
{
    return ReadCounted(bytes, at, 2, ReadU16(bytes, at));
}

UnicodeString ReadShortUnicodeString(std::string_view bytes, std::size_t at)
{
    return ReadCounted(bytes, at, 1, ReadU8(bytes, at));
}

UnicodeString ReadUnicodeStringNoCount(std::string_view bytes, std::size_t at, std::size_t count)
{
    const bool wide = (ReadU8(bytes, at) & kWideCharacters) != 0;
    const std::size_t size = CharactersSize(bytes, at, count);
    std::u16string units;
    ReadCharacters(Slice(bytes, at + 1, size), wide, units);
    return {util::FromUtf16(units), 1 + size};
}

std::size_t UnicodeStringSize(std::string_view bytes, std::size_t at)
{
    const std::size_t size = 3 + CharactersSize(bytes, at + 2, ReadU16(bytes, at));
    Slice(bytes, at, size); // throws if it is not all there
    return size;
}

void AppendUnicodeString(std::string& bytes, std::string_view utf8)
{
    const auto units = util::ToUtf16(utf8);
    assert(units.size() <= std::numeric_limits<std::uint16_t>::max());
    AppendU16(bytes, static_cast<std::uint16_t>(units.size()));
    AppendFlagsAndCharacters(bytes, units);
}

void AppendShortUnicodeString(std::string& bytes, std::string_view utf8)
{
    const auto units = util::ToUtf16(utf8);
    assert(units.size() <= std::numeric_limits<std::uint8_t>::max());
    AppendU8(bytes, static_cast<std::uint8_t>(units.size()));
    AppendFlagsAndCharacters(bytes, units);
}

void AppendUnicodeStringNoCount(std::string& bytes, std::string_view utf8)
{
    AppendFlagsAndCharacters(bytes, util::ToUtf16(utf8));
}

bool NeedsWideCharacters(std::u16string_view units)
{
    return std::any_of(units.begin(), units.end(), [](char16_t unit) { return unit > 0xFF; });
}

void AppendCharacters(std::string& bytes, std::u16string_view units, bool wide)
{
    for (const char16_t unit : units) {
        bytes += static_cast<char>(unit & 0xFF);
        if (wide)
            bytes += static_cast<char>(unit >> 8);
    }
}

void ReadCharacters(std::string_view bytes, bool wide, std::u16string& units)
{
    const std::size_t width = wide ? 2 : 1;
    for (std::size_t at = 0; at + width <= bytes.size(); at += width)
        units += wide ? static_cast<char16_t>(ReadU16(bytes, at))
                      : static_cast<char16_t>(static_cast<unsigned char>(bytes[at]));
}

} // namespace orrery::xls
