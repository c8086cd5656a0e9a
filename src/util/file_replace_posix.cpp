#include "util/file_replace.h"

#include "util/error.h"
#include "util/paths.h"
#include "util/system_message.h"

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

/// An open file descriptor.
class Descriptor {
public:
    Descriptor(const fs::path& path, int flags, mode_t mode = 0)
        : number_(::open(path.c_str(), flags | O_CLOEXEC, mode))
    {
    }
    ~Descriptor()
    {
        if (number_ >= 0)
            ::close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    bool IsOpen() const { return number_ >= 0; }
    int Number() const { return number_; }

private:
    int number_;
};

[[noreturn]] void ThrowNotWritten(const fs::path& target, int code)
{
    if (MeansDiskFull(code))
        throw Error(ErrorKind::DiskFull, FromPath(target));
    throw Error(ErrorKind::FileNotWritable, FromPath(target),
                std::generic_category().message(code));
}

/// The file that a chain of symbolic links leads to, which need not exist.
fs::path FollowLinks(fs::path path)
{
    constexpr int kMostLinks = 40; // as many as the system itself follows
    std::error_code failed;
    for (int i = 0; i < kMostLinks && fs::is_symlink(path, failed); ++i) {
        const fs::path next = fs::read_symlink(path, failed);
        if (failed)
            break;
        path = path.parent_path() / next; // an absolute link replaces the folder
    }
    return path;
}

fs::path FolderOf(const fs::path& path)
{
    return path.has_parent_path() ? path.parent_path() : fs::path(".");
}

/// A file that could not be written in place is not replaced either.
void CheckTarget(const fs::path& target)
{
    struct stat status = {};
    if (::stat(target.c_str(), &status) != 0) {
        if (errno == ENOENT)
            return; // a new file; making the temporary one tells whether the folder takes it
        ThrowNotWritten(target, errno);
    }
    if (S_ISDIR(status.st_mode))
        ThrowNotWritten(target, EISDIR);
    if (::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0)
        ThrowNotWritten(target, errno);
}

/// Makes an empty file of a new name beside the target.
fs::path MakeTemporary(const fs::path& target)
{
    static unsigned counter = 0;
    for (;;) {
        const std::string name =
            ".orrery-" + std::to_string(::getpid()) + '-' + std::to_string(counter++) + ".tmp";
        fs::path path = FolderOf(target) / name;
        const Descriptor file(path, O_WRONLY | O_CREAT | O_EXCL, 0666);
        if (file.IsOpen())
            return path;
        if (errno != EEXIST)
            ThrowNotWritten(target, errno);
    }
}

void WriteAll(const Descriptor& file, std::string_view bytes, const fs::path& target)
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(file.Number(), bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR)
            ThrowNotWritten(target, errno);
        if (written > 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

/// Flushes the finished file and gives it the permissions of the file that it replaces.
void Finish(const fs::path& temporary, const fs::path& target)
{
    const Descriptor file(temporary, O_RDONLY);
    if (!file.IsOpen())
        ThrowNotWritten(target, errno);
    struct stat old = {};
    if (::stat(target.c_str(), &old) == 0 && ::fchmod(file.Number(), old.st_mode & 07777) != 0)
        ThrowNotWritten(target, errno);
    if (::fsync(file.Number()) != 0)
        ThrowNotWritten(target, errno);
}

} // namespace

FileReplacement::FileReplacement(fs::path target) : target_(FollowLinks(std::move(target)))
{
    CheckTarget(target_);
    temporary_ = MakeTemporary(target_);
}

void FileReplacement::Commit()
{
    Finish(temporary_, target_);
    if (::rename(temporary_.c_str(), target_.c_str()) != 0)
        ThrowNotWritten(target_, errno);
    // The folder is not flushed: after a crash the name means the old file or the new one, and
    // both are whole.
    committed_ = true;
}

void ReplaceFile(const fs::path& target, std::string_view bytes)
{
    FileReplacement replacement(target);
    {
        const Descriptor file(replacement.TemporaryPath(), O_WRONLY | O_TRUNC);
        if (!file.IsOpen())
            ThrowNotWritten(target, errno);
        WriteAll(file, bytes, target);
    }
    replacement.Commit();
}

} // namespace orrery::util
