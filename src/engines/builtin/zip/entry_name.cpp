#include "engines/builtin/zip/entry_name.h"

#include "engines/builtin/zip/records.h"
#include "util/text.h"
#include "util/unicode.h"

#include <algorithm>
#include <array>
#include <libdeflate.h>

namespace orrery::zip {
namespace {

constexpr std::uint16_t kUnicodePathField = 0x7075; // an extra field

/// The upper half of code page 437.
constexpr std::u16string_view kCodePage437 =
    u"ÇüéâäàåçêëèïîìÄÅÉæÆôöòûùÿÖÜ¢£¥₧ƒáíóúñÑªº¿⌐¬½¼¡«»░▒▓│┤╡╢╖╕╣║╗╝╜╛┐"
    u"└┴┬├─┼╞╟╚╔╩╦╠═╬╧╨╤╥╙╘╒╓╫╪┘┌█▄▌▐▀αßΓπΣσµτΦΘΩδ∞φε∩≡±≥≤⌠⌡÷≈°∙·√ⁿ²■\u00A0";
static_assert(kCodePage437.size() == 128);

bool HasControlCharacter(std::string_view name)
{
    return std::ranges::any_of(
        name, [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; });
}

bool IsAscii(std::string_view name)
{
    return std::ranges::all_of(name, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::string FromCodePage437(std::string_view name)
{
    std::string decoded;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        util::AppendUtf8(decoded, byte < 0x80 ? byte : kCodePage437[byte - 0x80U]);
    }
    return decoded;
}

/// The name in the extra field, which counts only for the name that it was made for.
std::optional<std::string_view> UnicodePath(std::string_view name, std::string_view extra)
{
    constexpr std::size_t kBegin = 5; // behind version and checksum
    const auto field = FindExtraField(extra, kUnicodePathField);
    if (!field || field->size() < kBegin || field->front() != 1)
        return std::nullopt;
    if (Number<4>(*field, 1) != libdeflate_crc32(0, name.data(), name.size()))
        return std::nullopt;
    return field->substr(kBegin);
}

} // namespace

std::optional<std::string_view> FindExtraField(std::string_view extra, std::uint16_t kind)
{
    constexpr std::size_t kHead = 4; // kind and size
    while (extra.size() >= kHead) {
        const auto size = Number<2>(extra, 2);
        if (size > extra.size() - kHead)
            break;
        if (Number<2>(extra, 0) == kind)
            return extra.substr(kHead, size);
        extra.remove_prefix(kHead + size);
    }
    return std::nullopt;
}

std::optional<std::string> DecodeName(std::string_view name, std::string_view extra,
                                      std::uint16_t flags)
{
    const auto other = UnicodePath(name, extra);
    if (HasControlCharacter(name) || (other && HasControlCharacter(*other)))
        return std::nullopt;
    if (IsAscii(name))
        return other.value_or(name) == name ? std::optional(std::string(name)) : std::nullopt;
    if (other && util::IsValidUtf8(*other))
        return std::string(*other);
    if (util::IsValidUtf8(name))
        return std::string(name);
    return (flags & kNameIsUtf8) != 0 ? std::nullopt : std::optional(FromCodePage437(name));
}

} // namespace orrery::zip
