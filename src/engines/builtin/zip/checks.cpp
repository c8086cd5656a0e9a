#include "engines/builtin/zip/checks.h"

#include "book/error.h"
#include "engines/builtin/zip/directory.h"
#include "util/error.h"
#include "util/paths.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <system_error>

namespace orrery::zip {
namespace {

using book::ErrorKind;
using util::Error;

constexpr std::uint64_t kMaxRatio = 1000;
constexpr std::uint64_t kMinSizeForRatio = std::uint64_t{10} << 20U; // below, the ratio is ignored

[[noreturn]] void ThrowTooLarge(const std::filesystem::path& path, const std::string& what)
{
    throw Error(ErrorKind::TooLargeUnpacked, util::FromPath(path), what);
}

bool IsSuspicious(std::uint64_t unpacked, std::uint64_t packed)
{
    return unpacked > kMinSizeForRatio && unpacked / kMaxRatio > packed;
}

/// Whether a name is printable ASCII, which all readers decode alike.
bool IsPlain(std::string_view name)
{
    return std::all_of(name.begin(), name.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

/// Names beyond ASCII may be in one of several encodings; no part refers to them.
bool IsBeyondAscii(std::string_view name)
{
    return std::any_of(name.begin(), name.end(),
                       [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

} // namespace

std::uint64_t CheckSizes(const std::filesystem::path& path, const std::vector<Entry>& entries)
{
    std::uint64_t total = 0;
    for (const Entry& entry : entries) {
        if (entry.size > kMaxUnpacked - total)
            ThrowTooLarge(path, "more than 1 GiB");
        total += entry.size;
        if (IsSuspicious(entry.size, entry.compressedSize))
            ThrowTooLarge(path, entry.name + " unpacks to more than 1,000 times its size");
    }
    std::error_code unknown;
    const std::uintmax_t packed = std::filesystem::file_size(path, unknown);
    if (!unknown && IsSuspicious(total, packed))
        ThrowTooLarge(path, "it unpacks to more than 1,000 times its size");
    return total;
}

void CheckIsUnambiguous(const std::filesystem::path& path, const std::vector<Entry>& entries)
{
    const auto fail = [&](const std::string& what) {
        throw Error(ErrorKind::DamagedWorkbook, util::FromPath(path), what);
    };
    const auto names = ReadDirectoryNames(path);
    if (!names)
        return; // no other reader gets this far
    if (names->size() != entries.size())
        fail("the zip container has two directories");
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const std::string& name = (*names)[i];
        if (!IsBeyondAscii(name) && (!IsPlain(name) || name != entries[i].name))
            fail("the zip container has an entry with two names, \"" + entries[i].name + "\"");
    }
}

} // namespace orrery::zip
