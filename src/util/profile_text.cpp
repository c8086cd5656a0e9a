#include "util/profile_text.h"

#include "util/text.h"

#include <algorithm>

namespace orrery::util {

namespace {

/// The name of a section header, or nothing for any other line.
std::optional<std::string_view> SectionName(std::string_view line)
{
    line = Trim(line);
    const std::size_t end = line.rfind(']');
    if (!line.starts_with('[') || end == std::string_view::npos)
        return std::nullopt;
    return Trim(line.substr(1, end - 1));
}

std::string_view WithoutQuotes(std::string_view value)
{
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == '"' || value.front() == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

std::string_view FirstCharacters(std::string_view utf8, std::size_t count)
{
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const bool startsCharacter = (static_cast<unsigned char>(utf8[i]) & 0xC0) != 0x80;
        if (startsCharacter && count-- == 0)
            return utf8.substr(0, i);
    }
    return utf8;
}

/// The line end that the text uses.
std::string_view LineEnd(std::string_view text)
{
    const std::size_t first = text.find_first_of("\r\n");
    if (first == std::string_view::npos)
        return "\n";
    return text.substr(first, text.substr(first).starts_with("\r\n") ? 2 : 1);
}

std::size_t EndOfLine(std::string_view text, std::size_t pos)
{
    return std::min(text.find_first_of("\r\n", pos), text.size());
}

} // namespace

ProfileIndex::ProfileIndex(std::string_view text) : text_(text)
{
    Section* current = nullptr; // none before the first header and in a repeated section
    for (const std::string_view line : SplitLines(text)) {
        const auto start = static_cast<std::size_t>(line.data() - text.data());
        if (const auto name = SectionName(line)) {
            const auto [place, isNew] = sections_.emplace(ToUpperAscii(*name), Section{});
            current = isNew ? &place->second : nullptr;
        }
        if (!current || Trim(line).empty())
            continue;
        current->end = start + line.size();
        const std::size_t equals = line.find('=');
        if (equals != std::string_view::npos && !Trim(line).starts_with(';') && !SectionName(line))
            current->keys.emplace(ToUpperAscii(Trim(line.substr(0, equals))), start + equals);
    }
}

std::optional<std::size_t> ProfileIndex::EndOfSection(std::string_view section) const
{
    const auto found = sections_.find(ToUpperAscii(section));
    return found == sections_.end() ? std::nullopt : std::optional(found->second.end);
}

std::optional<std::size_t> ProfileIndex::FindEquals(std::string_view section,
                                                    std::string_view key) const
{
    const auto found = sections_.find(ToUpperAscii(section));
    if (found == sections_.end())
        return std::nullopt;
    const auto place = found->second.keys.find(ToUpperAscii(key));
    return place == found->second.keys.end() ? std::nullopt : std::optional(place->second);
}

std::optional<std::string> ProfileIndex::FindValue(std::string_view section,
                                                   std::string_view key) const
{
    const auto equals = FindEquals(section, key);
    if (!equals)
        return std::nullopt;
    const std::size_t start = *equals + 1;
    const std::string_view value = Trim(text_.substr(start, EndOfLine(text_, start) - start));
    return std::string(FirstCharacters(WithoutQuotes(value), kMaxProfileValue));
}

std::optional<std::string> FindProfileValue(std::string_view text, std::string_view section,
                                            std::string_view key)
{
    return ProfileIndex(text).FindValue(section, key);
}

std::string WithProfileValue(std::string_view text, std::string_view section, std::string_view key,
                             std::string_view value)
{
    const std::string lineEnd(LineEnd(text));
    const std::string line = std::string(key) + '=' + std::string(value);
    const ProfileIndex index(text);
    std::string result(text);
    if (const auto equals = index.FindEquals(section, key)) {
        const std::size_t end = EndOfLine(text, *equals);
        const std::size_t start = std::min(text.find_first_not_of(" \t", *equals + 1), end);
        result.replace(start, end - start, value);
    }
    else if (const auto sectionEnd = index.EndOfSection(section)) {
        result.insert(*sectionEnd, lineEnd + line);
    }
    else {
        if (!result.empty() && result.back() != '\n' && result.back() != '\r')
            result += lineEnd;
        result += '[' + std::string(section) + ']' + lineEnd + line + lineEnd;
    }
    return result;
}

} // namespace orrery::util
