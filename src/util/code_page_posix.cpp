#include "util/code_page.h"

#include "util/unicode.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace orrery::util {

const bool kWritesCodePage = false;

namespace {

// Windows-1252 differs from Unicode's first 256 characters only in 0x80 to 0x9F. The five bytes
// that it leaves undefined stand for the control characters of the same value.
constexpr std::array<char16_t, 32> kUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
constexpr std::uint32_t kFirst = 0x80;

std::optional<char> EncodeCharacter(std::uint32_t character)
{
    const auto* found = std::find(kUpperControls.begin(), kUpperControls.end(), character);
    const auto index = static_cast<std::uint32_t>(found - kUpperControls.begin());
    if (index < kUpperControls.size())
        return static_cast<char>(kFirst + index);
    const bool same = character < kFirst || (character >= 0xA0 && character <= 0xFF);
    return same ? std::optional(static_cast<char>(character)) : std::nullopt;
}

} // namespace

std::string DecodeCodePage(std::string_view bytes)
{
    std::string text;
    text.reserve(bytes.size());
    for (const char c : bytes) {
        const std::uint32_t byte = static_cast<unsigned char>(c);
        const bool differs = byte >= kFirst && byte < kFirst + kUpperControls.size();
        AppendUtf8(text, differs ? kUpperControls[byte - kFirst] : byte);
    }
    return text;
}

std::optional<std::string> EncodeCodePage(std::string_view utf8)
{
    std::string bytes;
    bytes.reserve(utf8.size());
    for (std::size_t pos = 0; pos < utf8.size();) {
        const auto byte = EncodeCharacter(NextCharacter(utf8, pos));
        if (!byte)
            return std::nullopt;
        bytes += *byte;
    }
    return bytes;
}

} // namespace orrery::util
