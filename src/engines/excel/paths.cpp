#include "engines/excel/paths.h"

#include "book/error.h"
#include "util/error.h"
#include "util/paths.h"
#include "util/unicode.h"

namespace orrery::excel {

std::string PathText(const std::filesystem::path& path)
{
    return util::AbsolutePath(util::FromPath(path));
}

void CheckPathLength(const std::filesystem::path& path)
{
    constexpr std::size_t longest = 218; // UTF-16 units, in every version
    const std::string text = PathText(path);
    if (util::ToUtf16(text).size() > longest)
        throw Error(book::ErrorKind::PathTooLong, text, "Excel takes 218 characters at most");
}

} // namespace orrery::excel
