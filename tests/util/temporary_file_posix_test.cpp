#include "util/temporary_file.h"

#include "ordinary_user.h"
#include "scratch_folder.h"
#include "util/descriptor.h"

#include <array>
#include <chrono>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orrery::util {
namespace {

namespace fs = std::filesystem;
using testing_support::OrdinaryUser;
using testing_support::ScratchFolder;

std::string OwnName()
{
    return ".orrery-" + SystemId() + "-1-0.tmp";
}

/// Another process that keeps a temporary file in the folder until it is killed.
class Writer {
public:
    explicit Writer(const fs::path& folder)
    {
        std::array<int, 2> ends = {-1, -1};
        EXPECT_EQ(::pipe(ends.data()), 0);
        const Descriptor reading(ends[0]);
        Descriptor writing(ends[1]);
        process_ = ::fork();
        if (process_ == 0) {
            const TemporaryFile file(folder / "target");
            static_cast<void>(!::write(writing.Number(), "x", 1));
            for (;;)
                ::pause();
        }
        char ready = 0;
        EXPECT_EQ(::read(reading.Number(), &ready, 1), 1);
    }
    ~Writer() { Kill(); }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    void Kill()
    {
        if (process_ <= 0)
            return;
        ::kill(process_, SIGKILL);
        ::waitpid(process_, nullptr, 0);
        process_ = 0;
    }

private:
    pid_t process_ = 0;
};

TEST(RemoveAbandonedFiles, RemovesAFileAsSoonAsItsWriterIsKilled)
{
    const ScratchFolder scratch;
    Writer writer(scratch.Path());
    RemoveAbandonedFiles(scratch.Path());
    EXPECT_EQ(scratch.Entries(), 1) << "it is in use";
    writer.Kill();
    EXPECT_EQ(scratch.Entries(), 1) << "nobody could remove it";
    RemoveAbandonedFiles(scratch.Path());
    EXPECT_EQ(scratch.Entries(), 0);
}

TEST(RemoveAbandonedFiles, RemovesAFileWhoseProcessNumberIsReused)
{
    const ScratchFolder scratch; // process 1 always runs
    scratch.Write(OwnName(), "half");
    RemoveAbandonedFiles(scratch.Path());
    EXPECT_EQ(scratch.Entries(), 0);
}

TEST(RemoveAbandonedFiles, KeepsLinksAndPipes)
{
    const ScratchFolder scratch;
    const fs::path own = scratch.Write("own", "the user's");
    fs::create_symlink("own", scratch / OwnName());
    ASSERT_EQ(::mkfifo((scratch / ".orrery-1-0.tmp").c_str(), 0666), 0);
    RemoveAbandonedFiles(scratch.Path());
    EXPECT_EQ(scratch.Entries(), 3);
}

TEST(RemoveAbandonedFiles, KeepsFilesOfOtherUsers)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can be two users";
    const ScratchFolder scratch;
    const fs::path file = scratch.Write(OwnName(), "half");
    fs::permissions(scratch.Path(), fs::perms(0777));
    fs::permissions(file, fs::perms(0666));
    {
        const OrdinaryUser user;
        RemoveAbandonedFiles(scratch.Path());
    }
    EXPECT_EQ(scratch.Entries(), 1);
}

} // namespace
} // namespace orrery::util
