#include "scratch_folder.h"
#include "util/paths.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orrery::util {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::ScratchFolder;

/// Replaces every "/" with the system's separator.
std::string Native(std::string text)
{
    for (char& c : text) {
        if (c == '/')
            c = kSeparator;
    }
    return text;
}

struct PathCase {
    const char* name;
    std::string_view path;
    std::string_view expected;
};
std::string CaseName(const testing::TestParamInfo<PathCase>& info)
{
    return info.param.name;
}

class BaseNameTest : public testing::TestWithParam<PathCase> {};
TEST_P(BaseNameTest, DropsFolderAndExtension)
{
    EXPECT_EQ(BaseName(GetParam().path), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(Paths, BaseNameTest,
                         testing::Values(PathCase{"LastDotOnly", R"(C:\t\My.Cal.xls)", "My.Cal"},
                                         PathCase{"NoExtension", "Year2009", "Year2009"},
                                         PathCase{"NoFolder", "Year.xls", "Year"},
                                         PathCase{"DotInFolder", R"(C:\a.b\Year)", "Year"},
                                         PathCase{"OnlyExtension", R"(C:\.xls)", ""},
                                         PathCase{"Folder", R"(C:\t\)", ""},
                                         PathCase{"Empty", "", ""}),
                         CaseName);

class ParentFolderTest : public testing::TestWithParam<PathCase> {};
TEST_P(ParentFolderTest, EndsBeforeTheLastSeparator)
{
    EXPECT_EQ(ParentFolder(GetParam().path), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(Paths, ParentFolderTest,
                         testing::Values(PathCase{"File", R"(C:\t\Year.xls)", R"(C:\t)"},
                                         PathCase{"Folder", R"(C:\t\)", R"(C:\t)"},
                                         PathCase{"NoSeparator", "Year.xls", ""},
                                         PathCase{"Root", R"(\Year.xls)", ""},
                                         PathCase{"Empty", "", ""}),
                         CaseName);

TEST(FileName, FollowsTheLastSeparator)
{
    EXPECT_EQ(FileName(R"(C:\t\My.Cal.xls)"), "My.Cal.xls");
    EXPECT_EQ(FileName(Native("/t/a.xls")), "a.xls");
    EXPECT_EQ(FileName("a.xls"), "a.xls");
    EXPECT_EQ(FileName(R"(C:\t\)"), "");
}

TEST(Separators, DependOnTheSystem)
{
    EXPECT_EQ(BaseName(Native("/home/a/Desk.xls")), "Desk");
    EXPECT_EQ(ParentFolder(Native("/home/a/Desk.xls")), Native("/home/a"));
    EXPECT_EQ(BaseName(Native("/home/a") + R"(\Desk.xls)"), "Desk");
}

TEST(IsNetworkPath, NeedsTwoSlashesOfEitherKind)
{
    for (const char* path : {R"(\\server\f.txt)", "//server", R"(\/)", R"(/\x)"})
        EXPECT_TRUE(IsNetworkPath(path)) << path;
    for (const char* path : {"", R"(\)", "/", R"(\a\)", R"(C:\\)", "a//b"})
        EXPECT_FALSE(IsNetworkPath(path)) << path;
}

struct ResolveCase {
    const char* name;
    std::string_view base;
    std::string_view path;
    std::string_view expected; ///< with "/" for the system's separator
};
class ResolvePathTest : public testing::TestWithParam<ResolveCase> {};
TEST_P(ResolvePathTest, AppliesComponents)
{
    const ResolveCase& row = GetParam();
    EXPECT_EQ(ResolvePath(row.base, row.path), Native(std::string(row.expected)));
}
INSTANTIATE_TEST_SUITE_P(
    Relative, ResolvePathTest,
    testing::Values(
        ResolveCase{"File", R"(C:\Cal\holiday\)", "holiday.txt", R"(C:\Cal\holiday/holiday.txt)"},
        ResolveCase{"NoTrailingSeparator", R"(C:\Cal)", "x.txt", R"(C:\Cal/x.txt)"},
        ResolveCase{"Up", R"(C:\Cal\holiday\)", R"(..\x.txt)", R"(C:\Cal/x.txt)"},
        ResolveCase{"Here", R"(C:\Cal\)", R"(.\x.txt)", R"(C:\Cal/x.txt)"},
        ResolveCase{"DownAndUp", R"(C:\Cal\)", R"(a\b\..\.\x.txt)", R"(C:\Cal/a/x.txt)"},
        ResolveCase{"UpFromADrive", R"(C:\)", R"(..\..\x.txt)", "C:/x.txt"},
        ResolveCase{"EmptyComponent", R"(C:\Cal\)", R"(a\\x.txt)", R"(C:\Cal/a/x.txt)"},
        ResolveCase{"Empty", R"(C:\Cal\)", "", R"(C:\Cal)"},
        ResolveCase{"DotsInAName", R"(C:\Cal\)", "...", R"(C:\Cal/...)"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(ResolvePath, LeavesAbsolutePaths)
{
    for (const char* path : {R"(C:\other.txt)", R"(\\server\share\f.txt)", "//server/f.txt",
                             "C:x.txt", R"(\rooted.txt)", "9:", R"(C:\a\..\b)"})
        EXPECT_EQ(ResolvePath(R"(D:\base\)", path), path);
    EXPECT_EQ(ResolvePath(R"(D:\base\)", Native("/rooted/x")), Native("/rooted/x"));
}

TEST(ResolvePath, WorksWithTheSystemsSeparator)
{
    EXPECT_EQ(ResolvePath(Native("/home/a/"), Native("../b/x.txt")), Native("/home/b/x.txt"));
    EXPECT_EQ(ResolvePath(Native("/"), Native("../x.txt")), Native("/x.txt"));
}

TEST(WithTrailingSeparator, AddsAMissingSeparator)
{
    EXPECT_EQ(WithTrailingSeparator(R"(D:\Cal)"), Native(R"(D:\Cal/)"));
    EXPECT_EQ(WithTrailingSeparator(R"(D:\Cal\)"), R"(D:\Cal\)");
    EXPECT_EQ(WithTrailingSeparator(Native("/cal/")), Native("/cal/"));
    EXPECT_EQ(WithTrailingSeparator(""), "");
}

TEST(ToPath, AcceptsBothSeparators)
{
    EXPECT_EQ(ToPath(R"(a\b)"), std::filesystem::path("a") / "b");
    EXPECT_EQ(ToPath(Native("a/b")), std::filesystem::path("a") / "b");
    EXPECT_EQ(FromPath(ToPath("M\xC3\xA4rz.xlsx")), "M\xC3\xA4rz.xlsx");
}

TEST(IsSameFolder, ComparesFoldersNotTexts)
{
    const ScratchFolder scratch;
    std::filesystem::create_directories(scratch / "a/b");
    const std::string folder = FromPath(scratch / "a");
    EXPECT_TRUE(IsSameFolder(folder, WithTrailingSeparator(folder)));
    EXPECT_TRUE(IsSameFolder(folder + "\\b\\..\\", folder));
    EXPECT_FALSE(IsSameFolder(folder, folder + "\\b"));
    EXPECT_FALSE(IsSameFolder(folder + "\\c", folder + "\\c")) << "is not there";
}

TEST(EnsureFolder, CreatesEveryFolderOfThePath)
{
    const ScratchFolder scratch;
    const std::string folder = FromPath(scratch / "a") + R"(\b\c\)";
    EXPECT_TRUE(EnsureFolder(folder));
    EXPECT_TRUE(std::filesystem::is_directory(scratch / "a/b/c"));
    EXPECT_TRUE(EnsureFolder(folder)) << "existing folders are no failure";
}

TEST(EnsureFolder, IgnoresFailures)
{
    const ScratchFolder scratch;
    scratch.Write("file", "x");
    EXPECT_TRUE(EnsureFolder(FromPath(scratch / "file/folder")));
    EXPECT_TRUE(EnsureFolder(""));
    EXPECT_FALSE(std::filesystem::exists(scratch / "file/folder"));
}

TEST(ListFiles, ListsFilesByNameWithoutFolders)
{
    const ScratchFolder scratch;
    std::filesystem::create_directory(scratch / "0folder");
    for (const char* name : {"us.txt", "de.txt", "at.txt", ".hidden", "noextension"})
        scratch.Write(name, "");
    const std::string folder = FromPath(scratch.Path());
    EXPECT_THAT(ListFiles(folder), ElementsAre("at.txt", "de.txt", "noextension", "us.txt"));
    EXPECT_EQ(FirstFileOfFolder(folder), Native(folder + "/at.txt"));
    EXPECT_EQ(FirstFileOfFolder(Native(folder + "/")), Native(folder + "/at.txt"));
}

TEST(ListFiles, IsEmptyWithoutFiles)
{
    const ScratchFolder scratch;
    std::filesystem::create_directory(scratch / "folder");
    EXPECT_THAT(ListFiles(FromPath(scratch.Path())), IsEmpty());
    EXPECT_EQ(FirstFileOfFolder(FromPath(scratch.Path())), "");
    EXPECT_THAT(ListFiles(FromPath(scratch / "missing")), IsEmpty());
    EXPECT_EQ(FirstFileOfFolder(FromPath(scratch / "missing")), "");
}

TEST(FindListEntry, ReturnsTheFirstEqualEntry)
{
    const std::vector<std::string> entries = {"a.xls", "B.xls", "b.xls"};
    EXPECT_EQ(FindListEntry(entries, "b.xls", CompareMode::Exact), 2);
    EXPECT_EQ(FindListEntry(entries, "b.xls", CompareMode::IgnoreCase), 1);
    EXPECT_EQ(FindListEntry(entries, "b", CompareMode::IgnoreCase), -1);
    EXPECT_EQ(FindListEntry({}, "", CompareMode::Exact), -1);
}

} // namespace
} // namespace orrery::util
