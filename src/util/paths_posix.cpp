#include "util/paths.h"

#include "util/error.h"

#include <algorithm>
#include <system_error>

namespace orrery::util {

const char kSeparator = '/';

std::filesystem::path ToPath(std::string_view text)
{
    std::string path(text);
    std::replace(path.begin(), path.end(), '\\', kSeparator);
    return path;
}

std::string FromPath(const std::filesystem::path& path)
{
    return path.string();
}

std::string AbsolutePath(std::string_view path)
{
    std::error_code failure;
    const auto absolute = std::filesystem::absolute(ToPath(path), failure);
    if (failure)
        throw Error(ErrorKind::FileNotFound, "the current folder");
    return FromPath(absolute.lexically_normal());
}

bool IsSameFolder(std::string_view left, std::string_view right)
{
    std::error_code unknown; // a missing folder is never the same
    return std::filesystem::equivalent(ToPath(left), ToPath(right), unknown);
}

std::vector<std::string> ListFiles(std::string_view folder)
{
    namespace fs = std::filesystem;
    std::vector<std::string> names;
    std::error_code failed;
    for (fs::directory_iterator entry(ToPath(folder), failed), end; !failed && entry != end;
         entry.increment(failed)) {
        std::error_code unknown; // an entry that is gone by now does not count
        std::string name = FromPath(entry->path().filename());
        if (entry->is_regular_file(unknown) && !name.starts_with('.'))
            names.push_back(std::move(name));
    }
    std::sort(names.begin(), names.end()); // the system has no order of its own
    return names;
}

} // namespace orrery::util
