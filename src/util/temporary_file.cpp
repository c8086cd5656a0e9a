#include "util/temporary_file.h"

#include "util/file_error.h"
#include "util/paths.h"

#include <algorithm>
#include <atomic>
#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace orrery::util {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kPrefix = ".orrery-";
constexpr std::string_view kSuffix = ".tmp";
constexpr std::size_t kSystemIdSize = 8;

/// Removes a number from the start of the text and returns it.
std::optional<std::uint64_t> TakeNumber(std::string_view& text)
{
    std::uint64_t number = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (failure != std::errc())
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

bool TakeDash(std::string_view& text)
{
    const bool found = text.starts_with('-');
    text.remove_prefix(found ? 1 : 0);
    return found;
}

/// Parses a name such as ".orrery-1b4e28ba-4711-0.tmp", or ".orrery-4711-0.tmp" from an earlier
/// version, which had no system id. Returns nothing for other names.
std::optional<TemporaryName> ReadTemporaryName(std::string_view name)
{
    if (!name.starts_with(kPrefix) || !name.ends_with(kSuffix) ||
        name.size() < kPrefix.size() + kSuffix.size())
        return std::nullopt;
    name.remove_prefix(kPrefix.size());
    name.remove_suffix(kSuffix.size());
    TemporaryName result;
    if (std::count(name.begin(), name.end(), '-') > 1) {
        const std::string_view mark = name.substr(0, name.find('-'));
        if (mark.size() != kSystemIdSize ||
            mark.find_first_not_of("0123456789abcdef") != std::string_view::npos)
            return std::nullopt;
        result.isFromThisSystem = mark == SystemId();
        name.remove_prefix(kSystemIdSize + 1);
    }
    const auto process = TakeNumber(name);
    const bool hasDash = TakeDash(name);
    const auto number = TakeNumber(name);
    if (!process || !hasDash || !number || !name.empty())
        return std::nullopt;
    result.process = *process;
    result.number = *number;
    return result;
}

std::string NewName()
{
    static std::atomic<std::uint64_t> counter = FirstFileNumber();
    const std::string mark = SystemId();
    return std::string(kPrefix) + (mark.empty() ? mark : mark + '-') +
           std::to_string(ProcessNumber()) + '-' + std::to_string(counter++) + std::string(kSuffix);
}

} // namespace

TemporaryFile::TemporaryFile(const fs::path& target)
{
    constexpr int kMaxTries = 1000;
    std::error_code failure;
    for (int i = 0; i < kMaxTries; ++i) {
        const fs::path path = target.parent_path() / NewName();
        use_ = CreateInUse(path, failure);
        if (!failure) {
            path_ = path;
            return;
        }
        if (failure != std::errc::file_exists)
            break;
    }
    throw MakeWriteError(target, failure);
}

TemporaryFile::~TemporaryFile()
{
    std::error_code ignored; // a destructor cannot report it; a later process removes the file
    if (!path_.empty())
        fs::remove(path_, ignored);
}

void RemoveAbandonedFiles(const fs::path& folder)
{
    std::error_code failure;
    for (fs::directory_iterator entry(folder.empty() ? "." : folder, failure), end;
         !failure && entry != end; entry.increment(failure)) {
        const fs::path& path = entry->path();
        if (const auto name = ReadTemporaryName(FromPath(path.filename())))
            RemoveIfAbandoned(path, *name);
    }
}

} // namespace orrery::util
