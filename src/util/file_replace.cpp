#include "util/file_replace.h"

#include "util/error.h"
#include "util/paths.h"

namespace orrery::util {

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
