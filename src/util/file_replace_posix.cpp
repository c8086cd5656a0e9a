#include "util/file_replace.h"

#include "util/descriptor.h"
#include "util/file_error.h"

#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace orrery::util {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void ThrowWriteError(const fs::path& target, int code)
{
    throw MakeWriteError(target, {code, std::generic_category()});
}

/// The file that a chain of symbolic links leads to, which need not exist.
fs::path FollowLinks(fs::path path)
{
    constexpr int kMaxLinks = 40; // the system's own limit
    std::error_code failed;
    for (int i = 0; i < kMaxLinks && fs::is_symlink(path, failed); ++i) {
        const fs::path next = fs::read_symlink(path, failed);
        if (failed)
            break;
        path = path.parent_path() / next; // an absolute link replaces the folder
    }
    return path;
}

/// A file that could not be written in place is not replaced either. Its read-only mark also counts
/// for users who may write everything.
void CheckTarget(const fs::path& target)
{
    struct stat status = {};
    if (::stat(target.c_str(), &status) != 0) {
        if (errno == ENOENT)
            return; // a new file; creating the temporary one shows whether the folder is writable
        ThrowWriteError(target, errno);
    }
    if (!S_ISREG(status.st_mode)) {
        std::error_code ignored;
        throw MakeNotRegularError(target, fs::status(target, ignored).type());
    }
    if ((status.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0)
        ThrowWriteError(target, EACCES);
    if (::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0)
        ThrowWriteError(target, errno);
}

fs::path CheckedTarget(const fs::path& path)
{
    fs::path target = FollowLinks(path);
    CheckTarget(target);
    RemoveAbandonedFiles(target.parent_path());
    return target;
}

void WriteAll(const Descriptor& file, std::string_view bytes, const fs::path& target)
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(file.Number(), bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR)
            ThrowWriteError(target, errno);
        if (written > 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

/// Flushes the finished file and gives it the permissions of the file that it replaces.
void Finish(const fs::path& temporary, const fs::path& target)
{
    const Descriptor file(::open(temporary.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.IsOpen())
        ThrowWriteError(target, errno);
    struct stat old = {};
    if (::stat(target.c_str(), &old) == 0 && ::fchmod(file.Number(), old.st_mode & 07777) != 0)
        ThrowWriteError(target, errno);
    if (::fsync(file.Number()) != 0)
        ThrowWriteError(target, errno);
}

} // namespace

void CheckReplaceable(const fs::path& path)
{
    CheckTarget(FollowLinks(path));
}

void CreateEmptyFile(const fs::path& path)
{
    const Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (!file.IsOpen())
        ThrowWriteError(path, errno);
}

FileReplacement::FileReplacement(const fs::path& target)
    : target_(CheckedTarget(target)), temporary_(target_)
{
}

void FileReplacement::Commit()
{
    Finish(temporary_.Path(), target_);
    if (::rename(temporary_.Path().c_str(), target_.c_str()) != 0)
        ThrowWriteError(target_, errno);
    // The folder is not flushed: after a crash the name refers to the old file or the new one, and
    // both are complete.
    temporary_.Keep();
}

void ReplaceFile(const fs::path& target, std::string_view bytes)
{
    FileReplacement replacement(target);
    {
        const Descriptor file(
            ::open(replacement.TemporaryPath().c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC));
        if (!file.IsOpen())
            ThrowWriteError(target, errno);
        WriteAll(file, bytes, target);
    }
    replacement.Commit();
}

} // namespace orrery::util
