#include "engines/builtin/open_by_content.h"

#include "util/file_read.h"

#include <cstdint>

namespace orrery::builtin {

void CheckCompoundSize(const std::filesystem::path& path)
{
    constexpr std::uint64_t kMax = std::uint64_t{1} << 30U;
    if (util::InputFile(path).Size() > kMax)
        throw util::Error(book::ErrorKind::TooLargeUnpacked, util::FromPath(path),
                          "more than 1 GiB");
}

} // namespace orrery::builtin
