#include "util/text.h"

#include "util/code_page.h"

#include <algorithm>
#include <cstdint>

namespace orrery::util {

namespace {

constexpr std::string_view kBlanks = " \t";

char UpperAscii(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

/// Length of the well-formed UTF-8 sequence at the start of the text, 0 when there is none.
std::size_t SequenceLength(std::string_view text)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80)
        return 1;
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length)
        return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80)
            return 0;
    }
    // Overlong forms, surrogates, and values beyond U+10FFFF.
    const unsigned char second = byte(1);
    if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
        (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F))
        return 0;
    return length;
}

} // namespace

std::string_view Trim(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string ToUpperAscii(std::string_view text)
{
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), UpperAscii);
    return upper;
}

std::string ToLowerAscii(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char c) {
        return 'A' <= c && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return lower;
}

bool EqualIgnoringCase(std::string_view left, std::string_view right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return UpperAscii(a) == UpperAscii(b); });
}

std::vector<std::string> Split(std::string_view text, char separator)
{
    std::vector<std::string> pieces;
    for (;;) {
        const std::size_t end = text.find(separator);
        pieces.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos)
            return pieces;
        text.remove_prefix(end + 1);
    }
}

std::string Join(const std::vector<std::string>& pieces, std::string_view separator)
{
    std::string text;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        if (i > 0)
            text += separator;
        text += pieces[i];
    }
    return text;
}

std::vector<std::string_view> SplitLines(std::string_view text)
{
    const auto endsLine = [](char c) { return c == '\n' || c == '\r'; };
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const auto found = std::find_if(text.begin(), text.end(), endsLine);
        const auto end = static_cast<std::size_t>(found - text.begin());
        lines.push_back(text.substr(0, end));
        const bool pair = text.substr(end).starts_with("\r\n");
        text.remove_prefix(std::min(end + (pair ? 2 : 1), text.size()));
    }
    return lines;
}

std::string JoinLines(std::string_view text)
{
    std::string line;
    for (const std::string_view part : SplitLines(text))
        line += (line.empty() ? "" : " ") + std::string(part);
    return line;
}

bool IsValidUtf8(std::string_view text)
{
    while (!text.empty()) {
        const std::size_t length = SequenceLength(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

std::string DecodeTextFile(std::string_view bytes)
{
    if (!IsValidUtf8(bytes))
        return DecodeCodePage(bytes);
    if (bytes.starts_with(kByteOrderMark))
        bytes.remove_prefix(kByteOrderMark.size());
    return std::string(bytes);
}

std::string EncodeTextFile(std::string_view utf8)
{
    if (kWritesCodePage && IsValidUtf8(utf8)) {
        if (auto bytes = EncodeCodePage(utf8))
            return *std::move(bytes);
    }
    return std::string(utf8);
}

} // namespace orrery::util
