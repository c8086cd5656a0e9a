#include "util/temporary_file.h"

#include "util/descriptor.h"

#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <fstream>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace orrery::util {

namespace fs = std::filesystem;

namespace {

enum class Lock { Taken, Held, Unknown };

/// Locks a byte far beyond the content: some network disks refuse writes to a locked range even to
/// the process that holds the lock. The lock belongs to this open file and ends with it, however
/// the process ends. fcntl(2), "Open file description locks"
Lock TryLock(const Descriptor& file)
{
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = off_t{1} << 62U;
    lock.l_len = 1;
    if (::fcntl(file.Number(), F_OFD_SETLK, &lock) == 0)
        return Lock::Taken;
    return errno == EAGAIN || errno == EACCES ? Lock::Held : Lock::Unknown;
}

bool IsOld(const struct stat& status)
{
    constexpr std::time_t kDay = 86400; // seconds
    return status.st_mtime < std::time(nullptr) - kDay;
}

bool IsOurs(const struct stat& status)
{
    return S_ISREG(status.st_mode) && status.st_uid == ::geteuid();
}

} // namespace

/// The kernel's boot id: all processes on the same kernel see the same locks, also in containers.
std::string SystemId()
{
    constexpr std::size_t kDigits = 8;
    static const std::string mark = [] {
        std::string id;
        std::getline(std::ifstream("/proc/sys/kernel/random/boot_id"), id);
        id = id.substr(0, kDigits);
        const bool isWhole =
            id.size() == kDigits && id.find_first_not_of("0123456789abcdef") == std::string::npos;
        return isWhole ? id : std::string();
    }();
    return mark;
}

std::uint64_t ProcessNumber()
{
    return static_cast<std::uint64_t>(::getpid());
}

std::uint64_t FirstFileNumber()
{
    return 0; // not needed: locks show what is in use
}

std::shared_ptr<void> CreateInUse(const fs::path& path, std::error_code& failure)
{
    failure.clear();
    auto file = std::make_shared<Descriptor>(
        ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (!file->IsOpen()) {
        failure = {errno, std::generic_category()};
        return {};
    }
    // Another process may have removed it as abandoned before it was locked. On a disk without
    // locks the file stays unlocked.
    struct stat status = {};
    if (TryLock(*file) == Lock::Held || ::lstat(path.c_str(), &status) != 0) {
        ::unlink(path.c_str());
        failure = std::make_error_code(std::errc::file_exists);
        return {};
    }
    return file;
}

void RemoveIfAbandoned(const fs::path& path, const TemporaryName& name)
{
    struct stat status = {};
    if (::lstat(path.c_str(), &status) != 0 || !IsOurs(status))
        return;
    const Descriptor file(
        ::open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!file.IsOpen() || ::fstat(file.Number(), &status) != 0 || !IsOurs(status))
        return;
    const Lock lock = TryLock(file);
    if (lock != Lock::Held && ((lock == Lock::Taken && name.isFromThisSystem) || IsOld(status)))
        ::unlink(path.c_str());
}

} // namespace orrery::util
