#include "util/paths.h"

#include "util/text.h"

#include <algorithm>
#include <system_error>

namespace orrery::util {

namespace fs = std::filesystem;

namespace {

/// "\" everywhere, and the system's own separator.
bool IsSeparator(char c)
{
    return c == '\\' || c == kSeparator;
}

/// Index of the last separator, or npos.
std::size_t LastSeparator(std::string_view path)
{
    for (std::size_t i = path.size(); i > 0; --i) {
        if (IsSeparator(path[i - 1]))
            return i - 1;
    }
    return std::string_view::npos;
}

bool IsAbsolute(std::string_view path)
{
    return (path.size() >= 2 && path[1] == ':') || IsNetworkPath(path) ||
           (!path.empty() && IsSeparator(path[0]));
}

/// Applies one component of a relative path to the folder.
void ApplyComponent(std::string& folder, std::string_view component)
{
    if (component.empty() || component == ".")
        return;
    if (component != "..") {
        folder += kSeparator;
        folder += component;
        return;
    }
    // A folder without a separator is a drive or the root and has no parent.
    if (const std::size_t last = LastSeparator(folder); last != std::string::npos)
        folder.resize(last);
}

} // namespace

std::string FileName(std::string_view path)
{
    const std::size_t last = LastSeparator(path);
    return std::string(last == std::string_view::npos ? path : path.substr(last + 1));
}

std::string BaseName(std::string_view path)
{
    std::string name = FileName(path);
    if (const std::size_t dot = name.rfind('.'); dot != std::string::npos)
        name.resize(dot);
    return name;
}

std::string ParentFolder(std::string_view path)
{
    const std::size_t last = LastSeparator(path);
    return std::string(last == std::string_view::npos ? std::string_view() : path.substr(0, last));
}

bool IsNetworkPath(std::string_view path)
{
    const auto isSlash = [](char c) { return c == '\\' || c == '/'; };
    return path.size() >= 2 && isSlash(path[0]) && isSlash(path[1]);
}

std::string ResolvePath(std::string_view base, std::string_view path)
{
    if (IsAbsolute(path))
        return std::string(path);
    std::string result(WithoutTrailingSeparator(base));
    while (!path.empty()) {
        const auto* end = std::find_if(path.begin(), path.end(), IsSeparator);
        const auto length = static_cast<std::size_t>(end - path.begin());
        ApplyComponent(result, path.substr(0, length));
        path.remove_prefix(std::min(length + 1, path.size()));
    }
    return result;
}

std::string_view WithoutTrailingSeparator(std::string_view path)
{
    if (!path.empty() && IsSeparator(path.back()))
        path.remove_suffix(1);
    return path;
}

std::string WithTrailingSeparator(std::string_view folder)
{
    std::string result(folder);
    if (!result.empty() && !IsSeparator(result.back()))
        result += kSeparator;
    return result;
}

bool EnsureFolder(std::string_view path)
{
    std::error_code ignored;
    fs::create_directories(ToPath(path), ignored);
    return true;
}

std::string FirstFileOfFolder(std::string_view folder)
{
    const auto names = ListFiles(folder);
    return names.empty() ? std::string() : WithTrailingSeparator(folder) + names.front();
}

int FindListEntry(const std::vector<std::string>& entries, std::string_view text, CompareMode mode)
{
    const auto found = std::find_if(entries.begin(), entries.end(), [&](const std::string& entry) {
        return mode == CompareMode::Exact ? entry == text : EqualIgnoringCase(entry, text);
    });
    return found == entries.end() ? -1 : static_cast<int>(found - entries.begin());
}

} // namespace orrery::util
