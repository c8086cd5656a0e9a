#include "util/descriptor.h"
#include "util/file_error.h"
#include "util/file_read.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <utility>

namespace orrery::util {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void ThrowReadError(const fs::path& path)
{
    throw MakeReadError(path, {errno, std::generic_category()});
}

void CheckRegular(const fs::path& path, const struct stat& status)
{
    if (S_ISREG(status.st_mode))
        return;
    switch (status.st_mode & S_IFMT) {
    case S_IFDIR:
        throw MakeNotRegularError(path, fs::file_type::directory);
    case S_IFIFO:
        throw MakeNotRegularError(path, fs::file_type::fifo);
    case S_IFSOCK:
        throw MakeNotRegularError(path, fs::file_type::socket);
    default:
        throw MakeNotRegularError(path, fs::file_type::character);
    }
}

/// Checks before opening, because some devices react to being opened, and again afterwards, because
/// another file may have taken the name. Does not wait for pipes.
Descriptor OpenRegular(const fs::path& path, struct stat& status)
{
    if (::stat(path.c_str(), &status) != 0)
        ThrowReadError(path);
    CheckRegular(path, status);
    Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!file.IsOpen() || ::fstat(file.Number(), &status) != 0)
        ThrowReadError(path);
    CheckRegular(path, status);
    return file;
}

} // namespace

InputFile::InputFile(const fs::path& path) : path_(path)
{
    struct stat status = {};
    Descriptor file = OpenRegular(path, status);
    file_.reset(::fdopen(file.Number(), "rb"));
    if (!file_)
        ThrowReadError(path);
    static_cast<void>(file.Release()); // the stream closes it
    stamp_ = StampOf(file_.get()).value_or(Stamp());
}

void InputFile::Seek(std::uint64_t offset)
{
    if (::fseeko(file_.get(), static_cast<off_t>(offset), SEEK_SET) != 0)
        ThrowReadError(path_);
}

std::optional<InputFile::Stamp> InputFile::StampOf(std::FILE* file)
{
    struct stat status = {};
    if (::fstat(::fileno(file), &status) != 0)
        return std::nullopt;
    constexpr std::int64_t kNanoseconds = 1'000'000'000;
    return Stamp{static_cast<std::uint64_t>(status.st_size),
                 status.st_mtim.tv_sec * kNanoseconds + status.st_mtim.tv_nsec};
}

} // namespace orrery::util
