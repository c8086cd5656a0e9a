#include "util/file_replace.h"

#include "util/error.h"
#include "util/file_error.h"
#include "util/paths.h"

#include <cerrno>
#include <fstream>
#include <system_error>

namespace orrery::util {

void FileReplacement::CopyFrom(const std::filesystem::path& source)
{
    std::ifstream from(source, std::ios::binary);
    std::ofstream to(temporary_.Path(), std::ios::binary | std::ios::trunc);
    errno = 0;
    if (!(to << from.rdbuf()) || !to.flush())
        throw MakeWriteError(target_, {errno, std::generic_category()});
}

bool CanWriteIn(std::string_view folder)
{
    try {
        const FileReplacement probe(ToPath(WithTrailingSeparator(folder) + "orrery-probe"));
        return true;
    }
    catch (const Error&) {
        return false;
    }
}

} // namespace orrery::util
