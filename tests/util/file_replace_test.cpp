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

ErrorKind KindThrownBy(const fs::path& target)
{
    try {
        ReplaceFile(target, "new");
    }
    catch (const Error& error) {
        EXPECT_EQ(error.Subject(), target.string());
        return error.Kind();
    }
    ADD_FAILURE() << "nothing thrown for " << target;
    return ErrorKind::WrongUsage;
}

TEST(ReadFile, GivesTheBytes)
{
    const ScratchFolder scratch;
    std::string bytes(200000, 'x');
    bytes[70000] = '\0';
    EXPECT_TRUE(ReadFile(scratch.Write("a", bytes)) == bytes);
    EXPECT_EQ(ReadFile(scratch.Write("b", "")), "");
}

TEST(ReadFile, GivesNothingForWhatIsNoFile)
{
    const ScratchFolder scratch;
    EXPECT_EQ(ReadFile(scratch / "missing"), std::nullopt);
    EXPECT_EQ(ReadFile(scratch.Path()), std::nullopt);
}

TEST(ReplaceFile, MakesAndReplaces)
{
    const ScratchFolder scratch;
    const fs::path file = scratch / "a.ini";
    ReplaceFile(file, "first and long");
    EXPECT_EQ(BytesOf(file), "first and long");
    ReplaceFile(file, "2");
    EXPECT_EQ(BytesOf(file), "2");
    EXPECT_EQ(scratch.Entries(), 1);
}

TEST(ReplaceFile, TakesTheLongestNames)
{
    const ScratchFolder scratch;
    const fs::path file = scratch / std::string(255, 'n');
    ReplaceFile(file, "x");
    EXPECT_EQ(BytesOf(file), "x");
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

TEST(ReplaceFile, RefusesWhatIsNoFile)
{
    const ScratchFolder scratch;
    scratch.Write("file", "old");
    fs::create_directory(scratch / "folder");
    fs::create_symlink("loop", scratch / "loop");
    EXPECT_EQ(KindThrownBy(scratch / "folder"), ErrorKind::FileNotWritable);
    EXPECT_EQ(KindThrownBy(scratch / "missing/a"), ErrorKind::FileNotWritable);
    EXPECT_EQ(KindThrownBy(scratch / "file/a"), ErrorKind::FileNotWritable);
    EXPECT_EQ(KindThrownBy(scratch / "loop"), ErrorKind::FileNotWritable);
    EXPECT_EQ(scratch.Entries(), 3) << "nothing left behind";
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

TEST(FileReplacement, ReservesANameOfItsOwn)
{
    const ScratchFolder scratch;
    const FileReplacement first(scratch / "a");
    const FileReplacement second(scratch / "a");
    EXPECT_NE(first.TemporaryPath(), second.TemporaryPath());
    EXPECT_EQ(first.TemporaryPath().parent_path(), scratch.Path());
    EXPECT_EQ(BytesOf(first.TemporaryPath()), "");
}

TEST(FileReplacement, PassesOverNamesThatAreTaken)
{
    const ScratchFolder scratch;
    fs::path taken;
    {
        const FileReplacement probe(scratch / "a");
        taken = probe.TemporaryPath();
    }
    // The counter goes up by one each time; the next name exists already.
    std::string next = taken.filename().string();
    const std::size_t dash = next.rfind('-') + 1;
    const int number = std::stoi(next.substr(dash));
    next = next.substr(0, dash) + std::to_string(number + 1) + ".tmp";
    scratch.Write(next, "somebody else's");
    const FileReplacement replacement(scratch / "a");
    EXPECT_NE(replacement.TemporaryPath().filename(), next);
    EXPECT_EQ(BytesOf(scratch / next), "somebody else's");
}

TEST(FileReplacement, DoesNothingWithoutACommit)
{
    const ScratchFolder scratch;
    const fs::path file = scratch.Write("a", "old");
    {
        const FileReplacement replacement(file);
        std::ofstream(replacement.TemporaryPath()) << "half";
    }
    EXPECT_EQ(BytesOf(file), "old");
    EXPECT_EQ(scratch.Entries(), 1);
}

TEST(FileReplacement, TakesAFileThatAnotherWriterRenamedIntoPlace)
{
    const ScratchFolder scratch;
    const fs::path file = scratch.Write("a", "old");
    FileReplacement replacement(file);
    fs::rename(scratch.Write("b", "new"), replacement.TemporaryPath());
    replacement.Commit();
    EXPECT_EQ(BytesOf(file), "new");
    EXPECT_EQ(scratch.Entries(), 1);
}

TEST(FileReplacement, ReportsATemporaryFileThatIsGone)
{
    const ScratchFolder scratch;
    const fs::path file = scratch.Write("a", "old");
    FileReplacement replacement(file);
    fs::remove(replacement.TemporaryPath());
    EXPECT_THROW(replacement.Commit(), Error);
    EXPECT_EQ(BytesOf(file), "old");
}

} // namespace
} // namespace orrery::util
