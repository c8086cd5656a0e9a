#include "util/paths.h"

#include <algorithm>

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

} // namespace orrery::util
