#include "util/file_read.h"

#include "ordinary_user.h"
#include "scratch_folder.h"
#include "util/paths.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

namespace orrery::util {
namespace {

namespace fs = std::filesystem;
using testing_support::OrdinaryUser;
using testing_support::ScratchFolder;

std::string CauseOf(const fs::path& path)
{
    const auto error = FindReadError(path);
    if (!error)
        return "none";
    EXPECT_EQ(error->Kind(), ErrorKind::NotARegularFile);
    return error->Cause();
}

void MakeSocket(const fs::path& path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    path.string().copy(&address.sun_path[0], sizeof(address.sun_path) - 1);
    const int number = ::socket(AF_UNIX, SOCK_STREAM, 0);
    EXPECT_EQ(::bind(number, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
    ::close(number);
}

TEST(ReadFile, DoesNotWaitForPipesOrReadDevices)
{
    const ScratchFolder scratch;
    ASSERT_EQ(::mkfifo((scratch / "pipe").c_str(), 0666), 0);
    fs::create_symlink("pipe", scratch / "link");
    fs::create_symlink("/dev/zero", scratch / "zeros");
    MakeSocket(scratch / "socket");
    for (const char* name : {"pipe", "link", "zeros", "socket"}) {
        EXPECT_EQ(ReadFile(scratch / name), std::nullopt) << name;
        EXPECT_EQ(ReadTextFile(scratch / name), std::nullopt) << name;
        EXPECT_FALSE(FileExists(FromPath(scratch / name))) << name;
        EXPECT_FALSE(IsMissing(scratch / name)) << name;
    }
    EXPECT_EQ(CauseOf(scratch / "link"), "it is a named pipe");
    EXPECT_EQ(CauseOf(scratch / "zeros"), "it is a device");
    EXPECT_EQ(CauseOf(scratch / "socket"), "it is a socket");
}

TEST(ReadFile, FollowsLinksToRegularFiles)
{
    const ScratchFolder scratch;
    scratch.Write("a", "text");
    fs::create_symlink("a", scratch / "link");
    EXPECT_EQ(ReadFile(scratch / "link"), "text");
}

TEST(FindReadError, ReportsMissingPermissions)
{
    const ScratchFolder scratch;
    const fs::path file = scratch.Write("a", "text");
    fs::permissions(scratch.Path(), fs::perms(0755));
    fs::permissions(file, fs::perms(0));
    std::optional<Error> ofFile;
    std::optional<Error> inFolder;
    bool isMissing = true;
    {
        const OrdinaryUser user;
        ofFile = FindReadError(file);
    }
    fs::permissions(scratch.Path(), fs::perms(0));
    {
        const OrdinaryUser user;
        inFolder = FindReadError(file);
        isMissing = IsMissing(file);
    }
    fs::permissions(scratch.Path(), fs::perms(0755));
    for (const auto& error : {ofFile, inFolder}) {
        ASSERT_TRUE(error);
        EXPECT_EQ(error->Kind(), ErrorKind::FileNotReadable);
        EXPECT_EQ(error->Cause(), "Permission denied");
    }
    EXPECT_FALSE(isMissing);
}

} // namespace
} // namespace orrery::util
