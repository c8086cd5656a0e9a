#include "engines/builtin/zip/size_limits.h"

#include "book/error.h"
#include "util/error.h"
#include "util/paths.h"

#include <string>

namespace orrery::zip {
namespace {

constexpr std::uint64_t kMaxRatio = 1000;
constexpr std::uint64_t kMinSizeForRatio = std::uint64_t{10} << 20U; // below, the ratio is ignored

[[noreturn]] void ThrowTooLarge(const std::filesystem::path& path, const std::string& what)
{
    throw util::Error(book::ErrorKind::TooLargeUnpacked, util::FromPath(path), what);
}

bool IsSuspicious(std::uint64_t unpacked, std::uint64_t packed)
{
    return unpacked > kMinSizeForRatio && unpacked / kMaxRatio > packed;
}

} // namespace

std::uint64_t CheckSizes(const std::filesystem::path& path, std::uint64_t fileSize,
                         const std::vector<Entry>& entries)
{
    std::uint64_t total = 0;
    for (const Entry& entry : entries) {
        if (entry.size > kMaxUnpacked - total)
            ThrowTooLarge(path, "more than 1 GiB");
        total += entry.size;
        if (IsSuspicious(entry.size, entry.packed))
            ThrowTooLarge(path, entry.name + " unpacks to more than 1,000 times its size");
    }
    if (IsSuspicious(total, fileSize))
        ThrowTooLarge(path, "it unpacks to more than 1,000 times its size");
    return total;
}

} // namespace orrery::zip
