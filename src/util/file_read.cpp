#include "util/file_read.h"

#include "util/file_error.h"
#include "util/paths.h"

#include <algorithm>
#include <cerrno>
#include <limits>
#include <system_error>
#include <utility>

namespace orrery::util {

namespace fs = std::filesystem;

namespace {

constexpr std::uint64_t kNoLimit = std::numeric_limits<std::uint64_t>::max();

void CheckTextSize(const fs::path& path, std::uint64_t size, std::uint64_t most)
{
    if (size > most)
        throw Error(ErrorKind::TextFileTooLarge, FromPath(path));
}

std::optional<std::string> ReadIfPossible(const fs::path& path, std::uint64_t most)
{
    try {
        return InputFile(path).ReadAll(most);
    }
    catch (const Error&) {
        return std::nullopt; // the caller asks for the obstacle where it matters
    }
}

std::optional<Error> ObstacleTo(const fs::path& path, std::uint64_t most)
{
    try {
        CheckTextSize(path, InputFile(path).Size(), most);
        return std::nullopt;
    }
    catch (const Error& obstacle) {
        return obstacle;
    }
}

} // namespace

std::size_t InputFile::Read(char* buffer, std::size_t count)
{
    errno = 0;
    const std::size_t read = std::fread(buffer, 1, count, file_.get());
    if (read < count && std::ferror(file_.get()) != 0)
        throw NotRead(path_, {errno, std::generic_category()});
    return read;
}

void InputFile::CheckUnchanged() const
{
    if (StampOf(file_.get()) != stamp_)
        throw Error(ErrorKind::FileNotReadable, FromPath(path_),
                    "another program changes it at this moment");
}

std::string InputFile::ReadAll(std::uint64_t most)
{
    constexpr std::size_t kChunk = 65536;
    CheckTextSize(path_, Size(), most);
    std::string bytes;
    std::size_t size = 0;
    do {
        // One byte more than expected, so that the end is found without another turn.
        bytes.resize(std::max(static_cast<std::size_t>(Size()) + 1, size + kChunk));
        size += Read(bytes.data() + size, bytes.size() - size);
        CheckTextSize(path_, size, most);
    } while (size == bytes.size());
    CheckUnchanged();
    bytes.resize(size);
    return bytes;
}

std::optional<std::string> ReadFile(const fs::path& path)
{
    return ReadIfPossible(path, kNoLimit);
}

std::optional<std::string> ReadTextFile(const fs::path& path)
{
    return ReadIfPossible(path, kMostText);
}

std::optional<Error> ReadingObstacle(const fs::path& path)
{
    return ObstacleTo(path, kNoLimit);
}

std::optional<Error> TextObstacle(const fs::path& path)
{
    return ObstacleTo(path, kMostText);
}

std::optional<Error> ObstacleOfExistingText(const fs::path& path)
{
    std::error_code unknown; // what lies in a folder of somebody else's is not known to be there
    if (!fs::exists(fs::symlink_status(path, unknown)))
        return std::nullopt;
    auto obstacle = TextObstacle(path);
    const bool leadsNowhere = obstacle && obstacle->Kind() == ErrorKind::FileNotFound;
    return leadsNowhere ? std::nullopt : std::move(obstacle);
}

std::optional<Error> ListingObstacle(const fs::path& folder)
{
    std::error_code failure;
    const fs::directory_iterator entries(folder, failure);
    if (!failure)
        return std::nullopt;
    const fs::path name = folder.has_filename() ? folder : folder.parent_path();
    // Some systems say then that the folder is not found.
    std::error_code unknown;
    const fs::file_type type = fs::status(name, unknown).type();
    if (type == fs::file_type::regular || fs::is_other(fs::file_status(type)))
        return Error(ErrorKind::FileNotReadable, FromPath(folder), "it is not a folder");
    return NotRead(folder, failure);
}

bool IsMissing(const fs::path& path)
{
    std::error_code failure;
    return fs::status(path, failure).type() == fs::file_type::not_found;
}

} // namespace orrery::util
