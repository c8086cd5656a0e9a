#include "replace_failure.h"
#include "scratch_folder.h"
#include "util/error.h"
#include "util/file_replace.h"

#include <cerrno>
#include <cstring>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orrery::util {
namespace {

namespace fs = std::filesystem;
using testing_support::BytesOf;
using testing_support::ScratchFolder;

/// Acts as an ordinary user until the scope ends, so that permissions count for root too.
class OrdinaryUser {
public:
    OrdinaryUser()
    {
        if (root_) {
            EXPECT_EQ(::seteuid(kNobody), 0);
        }
    }
    ~OrdinaryUser()
    {
        if (root_) {
            EXPECT_EQ(::seteuid(0), 0);
        }
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    static constexpr uid_t kNobody = 65534;
    bool root_ = ::geteuid() == 0;
};

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

TEST(ReplaceFile, GivesANewFileThePermissionsOfAnyNewFile)
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

TEST(ReplaceFile, MakesTheFileThatALinkWaitsFor)
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

TEST(ReplaceFile, LeavesAReadOnlyFile)
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

TEST(ReplaceFile, LeavesAFileOfAReadOnlyFolder)
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

TEST(ReplaceFile, LeavesTheOldFileOnAFullDisk)
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
