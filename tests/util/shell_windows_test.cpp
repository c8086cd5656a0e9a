#include <windows.h>
#undef ShellExecute // a macro of <windows.h>; here it is our own function

#include "list_reporter.h"
#include "places/places.h"
#include "scratch_folder.h"
#include "util/error.h"
#include "util/file_read.h"
#include "util/paths.h"
#include "util/shell.h"
#include "util/wide.h"

#include <array>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace orrery::util {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::BytesOf;
using testing_support::ScratchFolder;

constexpr const wchar_t* kExtension = L".orrerytest";
constexpr const wchar_t* kType = L"orrery.test";

/// The registered document classes: those of the user and those of all users. Some systems only
/// read the latter, others let no ordinary user write them.
struct Classes {
    HKEY root;
    std::wstring path;
};
const std::array<Classes, 2> kClasses = {
    {{HKEY_CURRENT_USER, L"Software\\Classes\\"}, {HKEY_CLASSES_ROOT, L""}}};

void SetDefault(const std::wstring& key, const std::wstring& value)
{
    const auto size = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
    for (const Classes& classes : kClasses)
        RegSetKeyValueW(classes.root, (classes.path + key).c_str(), nullptr, REG_SZ, value.c_str(),
                        size);
}

/// Registers a document type whose application copies the document.
class ShellOpenTest : public testing::Test {
protected:
    ~ShellOpenTest() override
    {
        for (const Classes& classes : kClasses) {
            RegDeleteTreeW(classes.root, (classes.path + kExtension).c_str());
            RegDeleteTreeW(classes.root, (classes.path + kType).c_str());
        }
    }

    void InstallApplication() const
    {
        InstallCommand(L"cmd.exe /c copy \"%1\" \"" + ToWide(FromPath(scratch_ / "opened")) +
                       L"\"");
    }
    void InstallCommand(const std::wstring& command) const
    {
        SetDefault(kExtension, kType);
        SetDefault(std::wstring(kType) + L"\\shell\\open\\command", command);
    }
    /// Copies the program that writes how it is shown into the scratch folder.
    std::string InstallProgram(const char* name) const
    {
        std::filesystem::copy_file(places::ShowModeProgram(), scratch_ / name);
        return FromPath(scratch_ / name);
    }

    /// The content of the document that was opened; waits until the application has copied it.
    std::string Opened() const
    {
        WaitForFile("opened");
        return BytesOf(scratch_ / "opened");
    }
    /// How that program was shown: the number of the system's mode.
    std::string ShownAs() const
    {
        WaitForFile("shown");
        const std::string mode = BytesOf(scratch_ / "shown");
        std::filesystem::remove(scratch_ / "shown");
        return mode;
    }
    void WaitForFile(const char* name) const
    {
        constexpr DWORD kPause = 100;
        for (int i = 0; i < 100 && !FileExists(FromPath(scratch_ / name)); ++i)
            Sleep(kPause);
        Sleep(kPause);
    }

    ScratchFolder scratch_;
    ListReporter reporter_;
};

TEST_F(ShellOpenTest, PassesTheDocumentToItsApplication)
{
    InstallApplication();
    const std::string file = FromPath(scratch_.Write("a b.orrerytest", "content"));
    EXPECT_TRUE(ShellOpen(file, reporter_));
    EXPECT_THAT(reporter_.texts, IsEmpty());
    EXPECT_EQ(Opened(), "content");
}

TEST_F(ShellOpenTest, OpensDocumentsOfNamesOutsideTheCodePage)
{
    InstallApplication();
    const auto file = scratch_.Write("\xE4\xB8\x80\xE6\x9C\x88 \xD0\xB6.orrerytest", "other");
    EXPECT_TRUE(ShellOpen(FromPath(file), reporter_));
    EXPECT_THAT(reporter_.texts, IsEmpty());
    EXPECT_EQ(Opened(), "other");
}

TEST_F(ShellOpenTest, ReportsAMissingFile)
{
    InstallApplication();
    EXPECT_FALSE(ShellOpen(FromPath(scratch_ / "gone.orrerytest"), reporter_));
    EXPECT_THAT(reporter_.texts, ElementsAre("File not found"));
    EXPECT_EQ(ErrorReportText(reporter_.texts.front()), "Error!\r\nError Info: File not found");
}

TEST_F(ShellOpenTest, ReportsADocumentWithoutApplication)
{
    const std::string file = FromPath(scratch_.Write("a.orrerytest", ""));
    EXPECT_FALSE(ShellOpen(file, reporter_));
    EXPECT_THAT(reporter_.texts, ElementsAre("No application is associated with this file type."));
}

TEST_F(ShellOpenTest, ThrowsWithTheMessageAsCause)
{
    try {
        ShellExecute(FromPath(scratch_ / "gone.orrerytest"), "", "", "open");
        FAIL() << "nothing thrown";
    }
    catch (const Error& error) {
        EXPECT_EQ(error.Kind(), ErrorKind::ShellFailure);
        EXPECT_EQ(error.Cause(), "File not found");
    }
}

TEST_F(ShellOpenTest, LooksForTheFileInTheGivenFolder)
{
    InstallApplication();
    scratch_.Write("a.orrerytest", "in the folder");
    EXPECT_NO_THROW(ShellExecute("a.orrerytest", "", FromPath(scratch_.Path()), "open"));
    EXPECT_EQ(Opened(), "in the folder");
}

// ---- without waiting

TEST_F(ShellOpenTest, TellsLaterThatAFileIsMissing)
{
    const auto opening = StartShellOpen(FromPath(scratch_ / "gone.orrerytest"));
    std::string cause;
    try {
        constexpr DWORD kPause = 20;
        for (int i = 0; i < 500 && !opening->HasEnded(); ++i)
            Sleep(kPause);
    }
    catch (const Error& error) {
        cause = error.Cause();
    }
    EXPECT_EQ(cause, "File not found");
    EXPECT_TRUE(opening->HasEnded());
}

TEST_F(ShellOpenTest, OpensTheDocumentThatNobodyWaitsFor)
{
    InstallApplication();
    StartShellOpen(FromPath(scratch_.Write("a.orrerytest", "content"))).reset();
    EXPECT_EQ(Opened(), "content");
}

// ---- how programs are shown

TEST_F(ShellOpenTest, AProgramIsStartedHidden)
{
    const std::string program = InstallProgram("Show.eXe");
    ShellExecute(program, "argument", "", "open");
    EXPECT_EQ(ShownAs(), std::to_string(SW_HIDE));
    ShellExecute(program, "", FromPath(scratch_.Path()), "open");
    EXPECT_EQ(ShownAs(), std::to_string(SW_HIDE)) << "with a folder as well";
}

TEST_F(ShellOpenTest, AProgramThatIsOpenedLikeADocumentIsShown)
{
    EXPECT_TRUE(ShellOpen(InstallProgram("show.exe"), reporter_));
    EXPECT_EQ(ShownAs(), std::to_string(SW_SHOWNORMAL));
}

TEST_F(ShellOpenTest, ADocumentIsShownNormallyAndInAFolderAsTheSystemLikes)
{
    InstallCommand(L'"' + ToWide(InstallProgram("show.exe")) + L"\" \"%1\"");
    const auto document = scratch_.Write("a.orrerytest", "");
    EXPECT_TRUE(ShellOpen(FromPath(document), reporter_));
    EXPECT_EQ(ShownAs(), std::to_string(SW_SHOWNORMAL));
    ShellExecute("a.orrerytest", "", FromPath(scratch_.Path()), "open");
    EXPECT_EQ(ShownAs(), std::to_string(SW_SHOWDEFAULT));
}

} // namespace
} // namespace orrery::util
