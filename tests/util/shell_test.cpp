#include "scratch_folder.h"
#include "util/error.h"
#include "util/paths.h"
#include "util/shell.h"

#include <chrono>
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vector>

namespace orrery::util {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::BytesOf;
using testing_support::ScratchFolder;

struct MessageCase {
    int result;
    std::string_view message;
};
class ShellErrorMessageTest : public testing::TestWithParam<MessageCase> {};
TEST_P(ShellErrorMessageTest, HasItsText)
{
    EXPECT_EQ(ShellErrorMessage(GetParam().result), GetParam().message);
}
INSTANTIATE_TEST_SUITE_P(
    Table, ShellErrorMessageTest,
    testing::Values(
        MessageCase{0, "Out of memory"}, MessageCase{8, "Out of memory"},
        MessageCase{2, "File not found"}, MessageCase{3, "Path not found"},
        MessageCase{5, "Path/file access error"},
        MessageCase{11, "The executable file is invalid or corrupt"},
        MessageCase{26, "A sharing violation occurred."},
        MessageCase{27, "This file type does not have a valid file association."},
        MessageCase{28,
                    "The file could not be opened due to time out.  Please try again in a moment."},
        MessageCase{29,
                    "The file could not be opened because the DDE transaction failed.  Please try "
                    "again in a moment."},
        MessageCase{30,
                    "The file could not be opened because the target application is busy.  Please "
                    "try again in a moment."},
        MessageCase{31, "No application is associated with this file type."},
        MessageCase{32, "The specified dynamic-link library was not found."}));

TEST(ShellErrorMessage, HasACatchAllForEveryOtherResult)
{
    for (const int result : {1, 4, 6, 7, 9, 10, 12, 25})
        EXPECT_EQ(ShellErrorMessage(result),
                  "An error occurred occurred whilst trying to open or print the selected file.");
}

class ListReporter : public ErrorReporter {
public:
    void Report(const std::string& text) override { texts.push_back(text); }
    std::vector<std::string> texts;
};

/// Puts a desktop opener of the test's own first in the search path.
class ShellOpenTest : public testing::Test {
protected:
    ~ShellOpenTest() override { ::setenv("PATH", oldPath_.c_str(), 1); }

    /// An opener that notes its argument and ends with that code.
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

TEST_F(ShellOpenTest, HandsTheDocumentToTheDesktop)
{
    InstallOpener(0);
    const std::string file = FromPath(scratch_.Write("a b.xls", ""));
    EXPECT_TRUE(ShellOpen(file, reporter_));
    EXPECT_THAT(reporter_.texts, IsEmpty());
    EXPECT_EQ(BytesOf(scratch_ / "argument"), file);
}

TEST_F(ShellOpenTest, HandsAddressesOnAsTheyAre)
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

TEST_F(ShellOpenTest, KeepsTheApplicationsOutputAway)
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

TEST_F(ShellOpenTest, ReportsOtherFailuresWithTheCatchAll)
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
