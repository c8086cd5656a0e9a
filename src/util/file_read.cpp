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

void CheckTextSize(const fs::path& path, std::uint64_t size, std::uint64_t maxSize)
{
    if (size > maxSize)
        throw Error(ErrorKind::TextFileTooLarge, FromPath(path));
}

std::optional<std::string> ReadIfPossible(const fs::path& path, std::uint64_t maxSize)
{
    try {
        return InputFile(path).ReadAll(maxSize);
    }
    catch (const Error&) {
        return std::nullopt; // callers that need the reason ask for it separately
    }
}

std::optional<Error> FindErrorReading(const fs::path& path, std::uint64_t maxSize)
{
    try {
        CheckTextSize(path, InputFile(path).Size(), maxSize);
        return std::nullopt;
    }
    catch (const Error& error) {
        return error;
    }
}

} // namespace

std::size_t InputFile::Read(char* buffer, std::size_t count)
{
    errno = 0;
    const std::size_t read = std::fread(buffer, 1, count, file_.get());
    if (read < count && std::ferror(file_.get()) != 0)
        throw MakeReadError(path_, {errno, std::generic_category()});
    return read;
}

void InputFile::CheckUnchangedSince(const Stamp& stamp) const
{
    if (StampOf(file_.get()) != stamp)
        throw Error(ErrorKind::FileNotReadable, FromPath(path_),
                    "another program changes it at this moment");
}

std::string InputFile::ReadAll(std::uint64_t maxSize)
{
    constexpr std::size_t kChunk = 4096;
    CheckTextSize(path_, Size(), maxSize);
    std::string bytes;
    std::size_t size = 0;
    do {
        // One byte more than expected, so that one read also finds the end.
        bytes.resize(std::max(static_cast<std::size_t>(Size()) + 1, size + kChunk));
        size += Read(bytes.data() + size, bytes.size() - size);
        CheckTextSize(path_, size, maxSize);
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
    return ReadIfPossible(path, kMaxTextFileSize);
}

std::optional<Error> FindReadError(const fs::path& path)
{
    return FindErrorReading(path, kNoLimit);
}

std::optional<Error> FindTextReadError(const fs::path& path)
{
    return FindErrorReading(path, kMaxTextFileSize);
}

std::optional<Error> FindExistingTextReadError(const fs::path& path)
{
    std::error_code unknown; // in a folder that may not be searched, the file counts as missing
    if (!fs::exists(fs::symlink_status(path, unknown)))
        return std::nullopt;
    auto error = FindTextReadError(path);
    const bool leadsNowhere = error && error->Kind() == ErrorKind::FileNotFound;
    return leadsNowhere ? std::nullopt : std::move(error);
}

std::optional<Error> FindListError(const fs::path& folder)
{
    std::error_code failure;
    const fs::directory_iterator entries(folder, failure);
    if (!failure)
        return std::nullopt;
    const fs::path name = folder.has_filename() ? folder : folder.parent_path();
    // Some systems report such a file as a folder that is not found.
    std::error_code unknown;
    const fs::file_type type = fs::status(name, unknown).type();
    if (type == fs::file_type::regular || fs::is_other(fs::file_status(type)))
        return Error(ErrorKind::FileNotReadable, FromPath(folder), "it is not a folder");
    return MakeReadError(folder, failure);
}

bool FileExists(std::string_view path)
{
    return !FindReadError(ToPath(WithoutTrailingSeparator(path)));
}

bool IsMissing(const fs::path& path)
{
    std::error_code failure;
    return fs::status(path, failure).type() == fs::file_type::not_found;
}

} // namespace orrery::util
