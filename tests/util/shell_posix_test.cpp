#include "list_reporter.h"
#include "scratch_folder.h"
#include "util/error.h"
#include "util/paths.h"
#include "util/shell.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <thread>

namespace orrery::util {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::BytesOf;
using testing_support::ScratchFolder;

/// Puts the test's own desktop opener first in the search path.
class ShellOpenTest : public testing::Test {
protected:
    ~ShellOpenTest() override { ::setenv("PATH", oldPath_.c_str(), 1); }

    /// Installs an opener that records its argument and exits with `exitCode`.
    void InstallOpener(int exitCode)
    {
        const fs::path opener = scratch_.Write(
            "xdg-open", "#!/bin/sh\nprintf %s \"$1\" > '" + (scratch_ / "argument").string() +
                            "'\nexit " + std::to_string(exitCode) + "\n");
        fs::permissions(opener, fs::perms(0755));
        ::setenv("PATH", (scratch_.Path().string() + ':' + oldPath_).c_str(), 1);
    }
    void RemoveOpeners() { ::setenv("PATH", scratch_.Path().c_str(), 1); }

    std::string oldPath_ = std::getenv("PATH");
    ScratchFolder scratch_;
    ListReporter reporter_;
};

TEST_F(ShellOpenTest, PassesTheDocumentToTheDesktop)
{
    InstallOpener(0);
    const std::string file = FromPath(scratch_.Write("a b.xls", ""));
    EXPECT_TRUE(ShellOpen(file, reporter_));
    EXPECT_THAT(reporter_.texts, IsEmpty());
    EXPECT_EQ(BytesOf(scratch_ / "argument"), file);
}

TEST_F(ShellOpenTest, PassesAddressesUnchanged)
{
    InstallOpener(0);
    EXPECT_TRUE(ShellOpen("mailto:someone@example.org", reporter_));
    EXPECT_EQ(BytesOf(scratch_ / "argument"), "mailto:someone@example.org");
}

TEST_F(ShellOpenTest, ReportsAMissingFile)
{
    InstallOpener(0);
    EXPECT_FALSE(ShellOpen(FromPath(scratch_ / "gone.xls"), reporter_));
    EXPECT_THAT(reporter_.texts, ElementsAre("File not found"));
    EXPECT_EQ(ErrorReportText(reporter_.texts.front()), "Error!\r\nError Info: File not found");
    EXPECT_FALSE(fs::exists(scratch_ / "argument")) << "the opener was not asked";
}

TEST_F(ShellOpenTest, ReportsAnEmptyName)
{
    InstallOpener(0);
    EXPECT_FALSE(ShellOpen("", reporter_));
    EXPECT_THAT(reporter_.texts, ElementsAre("Path not found"));
}

TEST_F(ShellOpenTest, DoesNotWaitForTheApplication)
{
    InstallOpener(0);
    const fs::path opener = scratch_.Write("xdg-open", "#!/bin/sh\nexec sleep 20\n");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(ShellOpen(FromPath(opener), reporter_));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST_F(ShellOpenTest, TellsLaterThatAStartedOpenerFailed)
{
    InstallOpener(0);
    const fs::path opener = scratch_.Write("xdg-open", "#!/bin/sh\nsleep 0.5\nexit 3\n");
    const auto opening = StartShellOpen(FromPath(opener));
    ASSERT_NE(opening, nullptr);
    EXPECT_FALSE(opening->HasEnded()) << "nobody waited for it";
    std::string cause;
    for (int i = 0; i < 500 && cause.empty(); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        try {
            opening->HasEnded();
        }
        catch (const Error& error) {
            cause = error.Cause();
        }
    }
    EXPECT_EQ(cause, "No application is associated with this file type.");
    EXPECT_TRUE(opening->HasEnded());
    EXPECT_LE(::waitpid(-1, nullptr, WNOHANG), 0) << "a process was left that has ended";
}

TEST_F(ShellOpenTest, NoticesTheEndOfAnOpenerWithoutAStatus)
{
    InstallOpener(0);
    const auto before = std::signal(SIGCHLD, SIG_IGN);
    const auto opening = StartShellOpen(FromPath(scratch_ / "xdg-open"));
    ASSERT_NE(opening, nullptr);
    bool hasEnded = false;
    for (int i = 0; i < 500 && !hasEnded; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        hasEnded = opening->HasEnded();
    }
    std::signal(SIGCHLD, before);
    EXPECT_TRUE(hasEnded);
}

TEST_F(ShellOpenTest, DiscardsTheApplicationsOutput)
{
    InstallOpener(0);
    const fs::path opener = scratch_.Write("xdg-open", "#!/bin/sh\necho noise\necho noise >&2\n");
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    EXPECT_TRUE(ShellOpen(FromPath(opener), reporter_));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(ShellOpenTest, ReportsAMissingFolder)
{
    EXPECT_FALSE(ShellOpen(FromPath(scratch_ / "gone/a.xls"), reporter_));
    EXPECT_THAT(reporter_.texts, ElementsAre("Path not found"));
}

TEST_F(ShellOpenTest, ReportsADocumentWithoutApplication)
{
    const std::string file = FromPath(scratch_.Write("a.xls", ""));
    InstallOpener(3);
    EXPECT_FALSE(ShellOpen(file, reporter_));
    RemoveOpeners();
    fs::remove(scratch_ / "xdg-open");
    EXPECT_FALSE(ShellOpen(file, reporter_));
    EXPECT_THAT(reporter_.texts, ElementsAre("No application is associated with this file type.",
                                             "No application is associated with this file type."));
}

TEST_F(ShellOpenTest, ReportsOtherFailuresWithTheGeneralMessage)
{
    InstallOpener(4);
    EXPECT_FALSE(ShellOpen(FromPath(scratch_.Write("a.xls", "")), reporter_));
    EXPECT_THAT(
        reporter_.texts,
        ElementsAre(
            "An error occurred occurred whilst trying to open or print the selected file."));
}

TEST_F(ShellOpenTest, ThrowsWithTheMessageAsCause)
{
    try {
        ShellExecute(FromPath(scratch_ / "gone.xls"), "", "", "open");
        FAIL() << "nothing thrown";
    }
    catch (const Error& error) {
        EXPECT_EQ(error.Kind(), ErrorKind::ShellFailure);
        EXPECT_EQ(error.Cause(), "File not found");
    }
}

TEST_F(ShellOpenTest, LooksForTheFileInTheGivenFolder)
{
    InstallOpener(0);
    scratch_.Write("a.xls", "");
    EXPECT_NO_THROW(ShellExecute("a.xls", "", FromPath(scratch_.Path()), "open"));
    EXPECT_EQ(BytesOf(scratch_ / "argument"), FromPath(scratch_ / "a.xls"));
}

} // namespace
} // namespace orrery::util
