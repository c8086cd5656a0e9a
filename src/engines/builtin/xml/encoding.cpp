#include "engines/builtin/xml/encoding.h"

#include "book/error.h"
#include "engines/builtin/xml/declaration.h"
#include "engines/builtin/xml/text.h"
#include "util/error.h"
#include "util/text.h"
#include "util/unicode.h"

#include <array>
#include <cstddef>
#include <optional>

namespace orrery::xml {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

[[noreturn]] void Fail(std::string_view partName, const std::string& what)
{
    throw util::Error(book::ErrorKind::DamagedWorkbook, {}, std::string(partName) + ": " + what);
}

enum class ByteOrder { Little, Big };

/// From the byte-order mark, else from the zero beside the first "<".
std::optional<ByteOrder> Utf16OrderOf(std::string_view bytes)
{
    const std::string_view first = bytes.substr(0, 2);
    if (first == "\xFF\xFE" || first == std::string_view("<\0", 2))
        return ByteOrder::Little;
    if (first == "\xFE\xFF" || first == std::string_view("\0<", 2))
        return ByteOrder::Big;
    return std::nullopt;
}

std::string FromUtf16(std::string_view bytes, ByteOrder order, std::string_view partName)
{
    const auto unitAt = [&](std::size_t at) -> char32_t {
        const auto first = static_cast<unsigned char>(bytes[at]);
        const auto second = static_cast<unsigned char>(bytes[at + 1]);
        return order == ByteOrder::Little ? first | static_cast<char32_t>(second) << 8
                                          : second | static_cast<char32_t>(first) << 8;
    };
    constexpr char32_t kMark = 0xFEFF;
    const auto isHigh = [](char32_t unit) { return unit >= 0xD800 && unit < 0xDC00; };
    const auto isLow = [](char32_t unit) { return unit >= 0xDC00 && unit < 0xE000; };
    if (bytes.size() % 2 != 0)
        Fail(partName, "half a character at the end");
    std::string text;
    text.reserve(bytes.size() / 2);
    for (std::size_t at = 0; at < bytes.size(); at += 2) {
        char32_t character = unitAt(at);
        if (at == 0 && character == kMark)
            continue;
        if (isHigh(character) && at + 4 <= bytes.size() && isLow(unitAt(at + 2))) {
            character = 0x10000 + ((character - 0xD800) << 10) + (unitAt(at + 2) - 0xDC00);
            at += 2;
        }
        else if (isHigh(character) || isLow(character)) {
            Fail(partName, "bytes that are not UTF-16");
        }
        util::AppendUtf8(text, character);
    }
    return text;
}

// Windows-1252 from 0x80 to 0x9F; 0 where it has no character.
constexpr std::array<char32_t, 32> kWindows1252 = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

/// ISO-8859-1 has control characters where Windows-1252 has letters. No workbook contains those,
/// but many declare ISO-8859-1 and mean Windows-1252.
std::string FromSingleBytes(std::string_view bytes, std::string_view partName)
{
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 8);
    for (const char byte : bytes) {
        char32_t character = static_cast<unsigned char>(byte);
        if (character >= 0x80 && character < 0xA0)
            character = kWindows1252[character - 0x80];
        if (character == 0)
            Fail(partName, "a byte that is no character");
        util::AppendUtf8(text, character);
    }
    return text;
}

/// Where the XML declaration names the encoding.
std::optional<TextRange> DeclaredEncoding(std::string_view text)
{
    const auto declaration = ReadDeclaration(text);
    return declaration ? declaration->encoding : std::nullopt;
}

bool IsOneOf(std::string_view name, std::initializer_list<std::string_view> names)
{
    for (const std::string_view one : names) {
        if (util::EqualIgnoringCase(name, one))
            return true;
    }
    return false;
}

/// XML forbids U+FFFE and U+FFFF; the scanner checks control characters.
void CheckCharacters(std::string_view text, std::string_view partName)
{
    for (std::size_t at = text.find("\xEF\xBF"); at != text.npos;
         at = text.find("\xEF\xBF", at + 2)) {
        const char last = at + 2 < text.size() ? text[at + 2] : ' ';
        if (last == '\xBE' || last == '\xBF')
            Fail(partName, "a character that XML cannot hold");
    }
}

void DeclareUtf8(std::string& text)
{
    if (const auto range = DeclaredEncoding(text))
        text.replace(range->begin, range->end - range->begin, "UTF-8");
}

} // namespace

std::string DecodePart(std::string bytes, std::string_view partName)
{
    if (const auto order = Utf16OrderOf(bytes)) {
        std::string text = FromUtf16(bytes, *order, partName);
        CheckCharacters(text, partName);
        DeclareUtf8(text);
        return text;
    }
    const bool marked = bytes.starts_with(kUtf8Mark);
    if (marked)
        bytes.erase(0, kUtf8Mark.size());
    const auto range = DeclaredEncoding(bytes);
    const std::string encoding =
        range ? bytes.substr(range->begin, range->end - range->begin) : "UTF-8";
    if (!marked &&
        IsOneOf(encoding, {"ISO-8859-1", "ISO8859-1", "Latin1", "Windows-1252", "CP1252"})) {
        bytes = FromSingleBytes(bytes, partName);
        DeclareUtf8(bytes);
        return bytes;
    }
    // Some programs declare UTF-16 in a text that they write in UTF-8.
    if (IsOneOf(encoding, {"UTF-16", "UTF-16LE", "UTF-16BE"})) {
        DeclareUtf8(bytes);
    }
    else if (!marked && !IsOneOf(encoding, {"UTF-8", "UTF8", "US-ASCII", "ASCII"})) {
        Fail(partName, "the encoding \"" + encoding + "\" is not known");
    }
    if (!util::IsValidUtf8(bytes))
        Fail(partName, "bytes that are not UTF-8");
    CheckCharacters(bytes, partName);
    return bytes;
}

} // namespace orrery::xml
