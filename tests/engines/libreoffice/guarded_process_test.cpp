#include "engines/libreoffice/plugin/guarded_process.h"

#include "processes.h"
#include "util/scratch_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace orrery::libreoffice {
namespace {

using namespace std::chrono_literals;
using test::Eventually;
using test::IsAlive;

class GuardedProcessTest : public testing::Test {
protected:
    static std::vector<std::string> Shell(const std::string& script)
    {
        return {"/bin/sh", "-c", script};
    }

    /// Appends its own number to the file `ids`.
    std::string Note() const { return "echo $$ >> " + (folder_ / "ids").string() + "; "; }

    std::vector<pid_t> Noted(std::size_t count) const
    {
        std::vector<pid_t> ids;
        EXPECT_TRUE(Eventually([&] {
            std::ifstream file(folder_ / "ids");
            ids.assign(std::istream_iterator<pid_t>(file), {});
            return ids.size() == count;
        }));
        return ids;
    }

    testing_support::ScratchFolder folder_;
};

TEST_F(GuardedProcessTest, EndsTheProgramWithAllThatItStarted)
{
    std::vector<pid_t> ids;
    {
        const GuardedProcess process(
            Shell("sh -c '" + Note() + "exec sleep 100' & " + Note() + "exec sleep 100"), -1);
        ids = Noted(2);
        EXPECT_TRUE(process.IsRunning());
    }
    for (const pid_t id : ids)
        EXPECT_FALSE(IsAlive(id));
    EXPECT_THAT(test::Descendants(), testing::IsEmpty());
}

TEST_F(GuardedProcessTest, EndsDescendantsThatLeftTheSession)
{
    std::vector<pid_t> ids;
    {
        const GuardedProcess process(
            Shell("setsid sh -c '" + Note() + "exec sleep 100' & " + Note() + "exec sleep 100"),
            -1);
        ids = Noted(2);
    }
    for (const pid_t id : ids)
        EXPECT_FALSE(IsAlive(id));
}

TEST_F(GuardedProcessTest, EndsDescendantsThatOutliveTheProgram)
{
    const GuardedProcess process(Shell("sh -c '" + Note() + "exec sleep 100' & while ! test -s " +
                                       (folder_ / "ids").string() + "; do sleep 0.01; done"),
                                 -1);
    const auto ids = Noted(1);
    EXPECT_TRUE(process.WaitForEnd(10s));
    EXPECT_FALSE(IsAlive(ids.at(0)));
}

TEST_F(GuardedProcessTest, EndsAStoppedProgram)
{
    GuardedProcess process(Shell(Note() + "exec sleep 100"), -1);
    const pid_t id = Noted(1).at(0);
    ::kill(id, SIGSTOP);
    process.End();
    EXPECT_FALSE(IsAlive(id));
    EXPECT_FALSE(process.IsRunning());
}

TEST_F(GuardedProcessTest, IsEndedByAnotherThread)
{
    const GuardedProcess process(Shell(Note() + "exec sleep 100"), -1);
    const pid_t id = Noted(1).at(0);
    process.Kill();
    EXPECT_TRUE(process.WaitForEnd(10s));
    EXPECT_FALSE(IsAlive(id));
}

TEST_F(GuardedProcessTest, NoticesTheEndOfTheProgram)
{
    const GuardedProcess process(Shell("exit 3"), -1);
    EXPECT_TRUE(process.WaitForEnd(10s));
    EXPECT_FALSE(process.IsRunning());
}

TEST_F(GuardedProcessTest, ProgramThatCannotBeRunEndsAtOnce)
{
    const GuardedProcess process({(folder_ / "missing").string()}, -1);
    EXPECT_TRUE(process.WaitForEnd(10s));
}

TEST_F(GuardedProcessTest, ReleasedProgramGoesOnAndLeavesNoZombie)
{
    pid_t id = 0;
    {
        GuardedProcess process(Shell(Note() + "exec sleep 100"), -1);
        id = Noted(1).at(0);
        process.Release();
    }
    EXPECT_TRUE(IsAlive(id));
    EXPECT_THAT(test::Descendants(), testing::IsEmpty());
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "no child is left to be waited for";
    ::kill(id, SIGKILL);
}

TEST_F(GuardedProcessTest, ReleasesAProgramThatHasEnded)
{
    GuardedProcess process(Shell("exit 0"), -1);
    EXPECT_TRUE(process.WaitForEnd(10s));
    EXPECT_NO_THROW(process.Release());
}

TEST_F(GuardedProcessTest, EndsWithAnOwnerThatIsKilled)
{
    const pid_t owner = ::fork();
    if (owner == 0) {
        const GuardedProcess process(Shell(Note() + "exec sleep 100"), -1);
        ::pause();
    }
    const pid_t id = Noted(1).at(0);
    ::kill(owner, SIGKILL);
    ::waitpid(owner, nullptr, 0);
    EXPECT_TRUE(Eventually([&] { return !IsAlive(id); }));
}

TEST_F(GuardedProcessTest, ProgramHasNoFileOfItsOwner)
{
    const int open = ::open("/dev/null", O_RDONLY); // without close-on-exec
    const auto list = folder_ / "list";
    const GuardedProcess process(
        Shell("for i in $(seq 0 99); do test -e /proc/$$/fd/$i && l=\"$l $i\"; done; echo $l > " +
              list.string()),
        -1);
    EXPECT_TRUE(process.WaitForEnd(10s));
    EXPECT_LT(open, 100);
    ::close(open);
    EXPECT_EQ(testing_support::BytesOf(list), "0 1 2\n");
}

TEST_F(GuardedProcessTest, ProgramInheritsOneDescriptorAndHasNoStreams)
{
    const auto path = folder_.Write("inherited", "");
    const int open = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
    const GuardedProcess process(
        Shell("for i in 0 1 2 4; do l=\"$l$(readlink /proc/$$/fd/$i) \"; done; echo $l >&4"), open);
    EXPECT_TRUE(process.WaitForEnd(10s));
    ::close(open);
    EXPECT_EQ(testing_support::BytesOf(path),
              "/dev/null /dev/null /dev/null " + path.string() + "\n");
}

TEST_F(GuardedProcessTest, ProgramHandlesTheSignalsThatItsOwnerIgnores)
{
    const auto before = std::signal(SIGPIPE, SIG_IGN);
    const GuardedProcess process(Shell("kill -PIPE $$; touch " + (folder_ / "survived").string()),
                                 -1);
    EXPECT_TRUE(process.WaitForEnd(10s));
    std::signal(SIGPIPE, before);
    EXPECT_FALSE(std::filesystem::exists(folder_ / "survived"));
}

TEST_F(GuardedProcessTest, KnowsHowLongTheProgramHasComputed)
{
    const GuardedProcess busy(Shell("sh -c 'while :; do :; done' & wait"), -1);
    EXPECT_TRUE(Eventually([&] { return busy.ComputedTime() > 50ms; }));
    const GuardedProcess lazy(Shell(Note() + "exec sleep 100"), -1);
    Noted(1);
    EXPECT_LT(lazy.ComputedTime(), 50ms);
}

} // namespace
} // namespace orrery::libreoffice
