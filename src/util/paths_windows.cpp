#include "util/paths.h"
#include "util/wide.h"

#include <algorithm>
#include <memory>
#include <windows.h>

namespace orrery::util {

const char kSeparator = '\\';

namespace {

// Windows accepts longer paths only with this prefix, and does not interpret "/" or ".." in them.
// The limits are 248 units for folders and 260 for files; ours leaves room for a file name.
constexpr std::string_view kLongPrefix = R"(\\?\)";
constexpr std::string_view kLongNetworkPrefix = R"(\\?\UNC\)";
constexpr std::size_t kLongPath = 180;

bool IsDrivePath(std::string_view path)
{
    return path.size() >= 3 && path[1] == ':' && path[2] == kSeparator;
}

/// Adds the prefix if the path is absolute.
std::string WithLongPrefix(const std::string& path)
{
    if (IsNetworkPath(path))
        return std::string(kLongNetworkPrefix) + path.substr(2);
    return IsDrivePath(path) ? std::string(kLongPrefix) + path : path;
}

} // namespace

std::filesystem::path ToPath(std::string_view text)
{
    std::string path(text);
    std::replace(path.begin(), path.end(), '/', kSeparator);
    if (path.size() < kLongPath || path.starts_with(kLongPrefix))
        return ToWide(path);
    return ToWide(WithLongPrefix(AbsolutePath(path)));
}

std::string FromPath(const std::filesystem::path& path)
{
    const std::string text = FromWide(path.native());
    if (text.starts_with(kLongNetworkPrefix))
        return R"(\\)" + text.substr(kLongNetworkPrefix.size());
    return text.starts_with(kLongPrefix) ? text.substr(kLongPrefix.size()) : text;
}

std::string AbsolutePath(std::string_view path)
{
    // The system's own call, because not every standard library knows paths that begin with a
    // server.
    const std::wstring wide = ToWide(path);
    std::wstring full(GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(
        GetFullPathNameW(wide.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return FromPath(full);
}

bool IsSameFolder(std::string_view left, std::string_view right)
{
    const auto whole = [](std::string_view folder) {
        return ToWide(WithTrailingSeparator(AbsolutePath(folder)));
    };
    std::error_code unknown; // a missing folder is never the same
    return std::filesystem::is_directory(ToPath(left), unknown) &&
           CompareStringOrdinal(whole(left).c_str(), -1, whole(right).c_str(), -1, TRUE) ==
               CSTR_EQUAL;
}

std::vector<std::string> ListFiles(std::string_view folder)
{
    constexpr DWORD kSkipped = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN;
    std::vector<std::string> names;
    WIN32_FIND_DATAW entry = {};
    const HANDLE found = FindFirstFileW((ToPath(folder) / L"*").c_str(), &entry);
    if (found == INVALID_HANDLE_VALUE)
        return names;
    const std::unique_ptr<void, decltype(&FindClose)> search(found, &FindClose);
    do {
        std::string name = FromWide(std::data(entry.cFileName));
        if ((entry.dwFileAttributes & kSkipped) == 0 && !name.starts_with('.'))
            names.push_back(std::move(name));
    } while (FindNextFileW(search.get(), &entry) != FALSE);
    return names;
}

} // namespace orrery::util
