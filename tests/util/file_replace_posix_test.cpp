#include "ordinary_user.h"
#include "replace_failure.h"
#include "scratch_folder.h"
#include "util/error.h"
#include "util/file_replace.h"
#include "util/process.h"

#include <cerrno>
#include <cstring>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orrery::util {
namespace {

namespace fs = std::filesystem;
using testing_support::BytesOf;
using testing_support::OrdinaryUser;
using testing_support::ScratchFolder;

mode_t ModeOf(const fs::path& path)
{
    struct stat status = {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return status.st_mode & 07777;
}

TEST(ReplaceFile, KeepsThePermissions)
{
    const ScratchFolder scratch;
    const fs::path file = scratch.Write("a", "old");
    fs::permissions(file, fs::perms(0640));
    ReplaceFile(file, "new");
    EXPECT_EQ(ModeOf(file), 0640U);
}

TEST(ReplaceFile, GivesANewFileDefaultPermissions)
{
    const ScratchFolder scratch;
    const mode_t old = ::umask(027);
    ReplaceFile(scratch / "a", "new");
    ::umask(old);
    EXPECT_EQ(ModeOf(scratch / "a"), 0640U);
}

TEST(ReplaceFile, FollowsSymbolicLinks)
{
    const ScratchFolder scratch;
    fs::create_directory(scratch / "real");
    scratch.Write("real/a", "old");
    fs::create_symlink("real/a", scratch / "link");
    fs::create_symlink(scratch / "link", scratch / "second");
    ReplaceFile(scratch / "second", "new");
    EXPECT_TRUE(fs::is_symlink(scratch / "link"));
    EXPECT_TRUE(fs::is_symlink(scratch / "second"));
    EXPECT_EQ(BytesOf(scratch / "real/a"), "new");
}

TEST(ReplaceFile, CreatesTheMissingTargetOfALink)
{
    const ScratchFolder scratch;
    fs::create_symlink("later", scratch / "link");
    ReplaceFile(scratch / "link", "new");
    EXPECT_TRUE(fs::is_symlink(scratch / "link"));
    EXPECT_EQ(BytesOf(scratch / "later"), "new");
}

TEST(ReplaceFile, RefusesALinkToItself)
{
    const ScratchFolder scratch;
    fs::create_symlink("loop", scratch / "loop");
    EXPECT_EQ(KindThrownBy(scratch / "loop"), ErrorKind::FileNotWritable);
    EXPECT_EQ(scratch.Entries(), 1) << "nothing left behind";
}

TEST(ReplaceFile, KeepsAReadOnlyFile)
{
    const ScratchFolder scratch;
    fs::permissions(scratch.Path(), fs::perms(0777));
    const fs::path file = scratch.Write("a", "old");
    fs::permissions(file, fs::perms(0444));
    {
        const OrdinaryUser user;
        EXPECT_EQ(KindThrownBy(file), ErrorKind::FileNotWritable);
    }
    EXPECT_EQ(BytesOf(file), "old");
    EXPECT_EQ(scratch.Entries(), 1);
}

TEST(ReplaceFile, KeepsAFileWithoutWritePermission)
{
    const ScratchFolder scratch;
    const fs::path file = scratch.Write("a", "old");
    fs::permissions(file, fs::perms(0444)); // root could still write it
    EXPECT_EQ(KindThrownBy(file), ErrorKind::FileNotWritable);
    EXPECT_EQ(BytesOf(file), "old");
    EXPECT_EQ(scratch.Entries(), 1);
}

TEST(ReplaceFile, KeepsSpecialFiles)
{
    const ScratchFolder scratch;
    ASSERT_EQ(::mkfifo((scratch / "pipe").c_str(), 0666), 0);
    fs::create_symlink("/dev/zero", scratch / "device");
    EXPECT_EQ(KindThrownBy(scratch / "pipe"), ErrorKind::NotARegularFile);
    EXPECT_THROW(CheckReplaceable(scratch / "device"), Error);
    EXPECT_TRUE(fs::is_fifo(scratch / "pipe"));
    EXPECT_TRUE(fs::is_symlink(scratch / "device"));
    EXPECT_EQ(scratch.Entries(), 2) << "nothing left behind";
}

TEST(CreateEmptyFile, DoesNotFollowADanglingLink)
{
    const ScratchFolder scratch;
    fs::create_symlink("nowhere", scratch / "link");
    EXPECT_THROW(CreateEmptyFile(scratch / "link"), Error);
    EXPECT_EQ(scratch.Entries(), 1);
}

/// Limits the size of files until the scope ends.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        ::getrlimit(RLIMIT_FSIZE, &old_);
        const rlimit limit{bytes, old_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() { ::setrlimit(RLIMIT_FSIZE, &old_); }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit old_ = {};
};

TEST(ReplaceFile, ReportsTheFileSizeLimit)
{
    PrepareProcess();
    const ScratchFolder scratch;
    const fs::path file = scratch.Write("a", "old");
    std::optional<AnyErrorKind> kind;
    {
        const FileSizeLimit limit(2048);
        try {
            ReplaceFile(file, std::string(5000, 'x'));
        }
        catch (const Error& error) {
            kind = error.Kind();
        }
    }
    EXPECT_EQ(kind, ErrorKind::FileSizeLimit);
    EXPECT_EQ(BytesOf(file), "old");
    EXPECT_EQ(scratch.Entries(), 1) << "nothing left behind";
}

TEST(ReplaceFile, KeepsAFileInAReadOnlyFolder)
{
    const ScratchFolder scratch;
    const fs::path file = scratch.Write("a", "old");
    fs::permissions(file, fs::perms(0666));
    fs::permissions(scratch.Path(), fs::perms(0555));
    {
        const OrdinaryUser user;
        EXPECT_EQ(KindThrownBy(file), ErrorKind::FileNotWritable);
    }
    fs::permissions(scratch.Path(), fs::perms(0755));
    EXPECT_EQ(BytesOf(file), "old");
}

TEST(ReplaceFile, KeepsTheOldFileOnAFullDisk)
{
    const ScratchFolder scratch;
    if (::mount("tmpfs", scratch.Path().c_str(), "tmpfs", 0, "size=64k") != 0)
        GTEST_SKIP() << "no small disk can be mounted here: " << std::strerror(errno);
    const fs::path file = scratch.Write("a", "old");
    EXPECT_THROW(
        try { ReplaceFile(file, std::string(1000000, 'x')); } catch (const Error& error) {
            EXPECT_EQ(error.Kind(), ErrorKind::DiskFull);
            throw;
        },
        Error);
    EXPECT_EQ(BytesOf(file), "old");
    EXPECT_EQ(scratch.Entries(), 1) << "nothing left behind";
    EXPECT_EQ(::umount(scratch.Path().c_str()), 0);
}

} // namespace
} // namespace orrery::util
