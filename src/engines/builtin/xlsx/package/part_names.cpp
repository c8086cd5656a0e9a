#include "engines/builtin/xlsx/package/part_names.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <vector>

namespace orrery::xlsx {
namespace {

char ToLower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// The character of the escape ("%20") at the beginning of `text`.
std::optional<char> ReadEscape(std::string_view text)
{
    if (text.size() < 3 || text[0] != '%')
        return std::nullopt;
    unsigned value = 0;
    const char* const end = text.data() + 3;
    const auto [behind, error] = std::from_chars(text.data() + 1, end, value, 16);
    if (error != std::errc() || behind != end || value == '/' || value == '\\' || value == 0)
        return std::nullopt;
    return static_cast<char>(value);
}

/// Appends a name without its escapes, which are rare.
void AppendDecoded(std::string_view name, std::string& decoded)
{
    for (auto at = name.find('%'); at != name.npos; at = name.find('%')) {
        decoded += name.substr(0, at);
        const auto escaped = ReadEscape(name.substr(at));
        decoded += escaped.value_or('%');
        name.remove_prefix(at + (escaped ? 3 : 1));
    }
    decoded += name;
}

/// The folder of a part, "/" at its end.
std::string_view FolderOf(std::string_view part)
{
    return part.substr(0, part.rfind('/') + 1);
}

} // namespace

std::string PartKey(std::string_view name)
{
    std::string key;
    key.reserve(name.size() + 1);
    if (!name.starts_with('/') && !name.starts_with('\\'))
        key += '/';
    AppendDecoded(name, key);
    for (char& c : key)
        c = c == '\\' ? '/' : ToLower(c);
    return key;
}

std::string ResolveTarget(std::string_view fromPart, std::string_view target)
{
    std::string path(target);
    std::replace(path.begin(), path.end(), '\\', '/');
    if (!path.starts_with('/'))
        path.insert(0, fromPart.empty() ? "/" : FolderOf(fromPart));
    std::vector<std::string_view> steps;
    for (std::size_t at = 1; at <= path.size();) {
        const std::size_t end = std::min(path.find('/', at), path.size());
        const std::string_view step = std::string_view(path).substr(at, end - at);
        if (step == ".." && !steps.empty()) {
            steps.pop_back();
        }
        else if (!step.empty() && step != "." && step != "..") {
            steps.push_back(step);
        }
        at = end + 1;
    }
    std::string part;
    for (const std::string_view step : steps)
        part.append("/").append(step);
    return part;
}

std::string RelationshipsPartName(std::string_view part)
{
    const std::string_view folder = part.empty() ? "/" : FolderOf(part);
    const std::string_view name = part.empty() ? part : part.substr(folder.size());
    return std::string(folder) + "_rels/" + std::string(name) + ".rels";
}

std::string RelativeTarget(std::string_view fromPart, std::string_view toPart)
{
    if (fromPart.empty())
        return std::string(toPart.substr(1));
    const std::string_view from = FolderOf(fromPart);
    const std::string_view to = FolderOf(toPart);
    const auto [differs, unused] = std::mismatch(from.begin(), from.end(), to.begin(), to.end());
    const auto same = static_cast<std::size_t>(differs - from.begin());
    const std::size_t shared = from.substr(0, same).rfind('/') + 1; // whole folders only
    if (shared == 1 && from != to)
        return std::string(toPart);
    std::string target;
    for (auto steps =
             std::count(from.begin() + static_cast<std::ptrdiff_t>(shared), from.end(), '/');
         steps > 0; --steps)
        target += "../";
    return target.append(toPart.substr(shared));
}

bool IsMainNamespace(std::string_view uri)
{
    return uri == "http://schemas.openxmlformats.org/spreadsheetml/2006/main" ||
           uri == "http://purl.oclc.org/ooxml/spreadsheetml/main";
}

} // namespace orrery::xlsx
