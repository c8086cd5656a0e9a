#include "engines/builtin/xml/declaration.h"

namespace orrery::xml {
namespace {

constexpr auto kNone = std::string_view::npos;
constexpr std::string_view kBlanks = " \t\r\n";

/// Reads blanks, the name, "=" and a quoted value at `at`, and moves `at` past them.
std::optional<TextRange> ReadValue(std::string_view text, std::size_t& at, std::string_view name)
{
    std::size_t next = text.find_first_not_of(kBlanks, at);
    if (next == kNone || next == at || !text.substr(next).starts_with(name))
        return std::nullopt;
    next = text.find_first_not_of(kBlanks, next + name.size());
    if (next == kNone || text[next] != '=')
        return std::nullopt;
    next = text.find_first_not_of(kBlanks, next + 1);
    if (next == kNone || (text[next] != '"' && text[next] != '\''))
        return std::nullopt;
    const std::size_t end = text.find(text[next], next + 1);
    if (end == kNone)
        return std::nullopt;
    at = end + 1;
    return TextRange{next + 1, end};
}

bool IsVersion(std::string_view value)
{
    constexpr std::string_view kMajor = "1.";
    return value.starts_with(kMajor) && value.size() > kMajor.size() &&
           value.find_first_not_of("0123456789", kMajor.size()) == kNone;
}

bool IsEncoding(std::string_view value)
{
    constexpr std::string_view kCharacters =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789._-";
    constexpr std::size_t kLettersAmongThem = 52;
    return !value.empty() && kCharacters.find(value.front()) < kLettersAmongThem &&
           value.find_first_not_of(kCharacters) == kNone;
}

} // namespace

std::optional<Declaration> ReadDeclaration(std::string_view text)
{
    constexpr std::string_view kBegin = "<?xml";
    constexpr std::string_view kEnd = "?>";
    if (!text.starts_with(kBegin))
        return std::nullopt;
    std::size_t at = kBegin.size();
    const auto version = ReadValue(text, at, "version");
    const auto encoding = ReadValue(text, at, "encoding");
    const auto standalone = ReadValue(text, at, "standalone");
    at = text.find_first_not_of(kBlanks, at);
    if (at == kNone || !text.substr(at).starts_with(kEnd))
        return std::nullopt;
    const auto valueOf = [&](const std::optional<TextRange>& range) {
        return text.substr(range->begin, range->end - range->begin);
    };
    if (!version || !IsVersion(valueOf(version)) || (encoding && !IsEncoding(valueOf(encoding))) ||
        (standalone && valueOf(standalone) != "yes" && valueOf(standalone) != "no"))
        return std::nullopt;
    return Declaration{encoding, at + kEnd.size()};
}

} // namespace orrery::xml
