#include "scratch_folder.h"
#include "util/file_read.h"
#include "util/profile.h"
#include "util/profile_text.h"
#include "util/text.h"

#include <gtest/gtest.h>

namespace orrery::util {
namespace {

using testing_support::BytesOf;
using testing_support::ScratchFolder;

struct FindCase {
    const char* name;
    std::string_view text;
    std::optional<std::string> expected; ///< of the key "Key" in the section "Part"
};
class FindProfileValueTest : public testing::TestWithParam<FindCase> {};
TEST_P(FindProfileValueTest, FindsValue)
{
    EXPECT_EQ(FindProfileValue(GetParam().text, "Part", "Key"), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(
    Texts, FindProfileValueTest,
    testing::Values(FindCase{"Plain", "[Part]\nKey=a\n", "a"},
                    FindCase{"LastLineWithoutEnd", "[Part]\nKey=a", "a"},
                    FindCase{"CrLf", "[Part]\r\nKey=a\r\nb=c\r\n", "a"},
                    FindCase{"OtherCase", "[pART]\nkEY=a\n", "a"},
                    FindCase{"BlanksAround", " [ Part ] \n\tKey \t=  a b \n", "a b"},
                    FindCase{"DoubleQuotes", "[Part]\nKey= \" a \" \n", " a "},
                    FindCase{"SingleQuotes", "[Part]\nKey='a'\n", "a"},
                    FindCase{"OnePairOnly", "[Part]\nKey=\"\"a\"\"\n", "\"a\""},
                    FindCase{"UnevenQuotes", "[Part]\nKey=\"a'\n", "\"a'"},
                    FindCase{"LoneQuote", "[Part]\nKey=\"\n", "\""},
                    FindCase{"EmptyQuotes", "[Part]\nKey=\"\"\n", ""},
                    FindCase{"EmptyValue", "[Part]\nKey=\nKey=b\n", ""},
                    FindCase{"EqualsInValue", "[Part]\nKey=a=b\n", "a=b"},
                    FindCase{"SemicolonInValue", "[Part]\nKey=a;b\n", "a;b"},
                    FindCase{"FirstKeyWins", "[Part]\nKey=a\nKey=b\n", "a"},
                    FindCase{"FirstSectionWins", "[Part]\nKey=a\n[Part]\nKey=b\n", "a"},
                    FindCase{"OnlyTheFirstSection", "[Part]\nx=1\n[Part]\nKey=b\n", std::nullopt},
                    FindCase{"Comment", "[Part]\n;Key=a\n ; Key=b\n", std::nullopt},
                    FindCase{"OtherSection", "[Other]\nKey=a\n", std::nullopt},
                    FindCase{"BeforeAnySection", "Key=a\n[Part]\n", std::nullopt},
                    FindCase{"NoHeader", "[Part\nKey=a\n", std::nullopt},
                    FindCase{"NoEquals", "[Part]\nKey\n", std::nullopt},
                    FindCase{"LongerKey", "[Part]\nKey2=a\n", std::nullopt},
                    FindCase{"Empty", "", std::nullopt}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(FindProfileValue, TruncatesLongValuesBetweenCharacters)
{
    std::string value;
    for (std::size_t i = 0; i < kMaxProfileValue; ++i)
        value += "\xC3\xA4";
    const auto found = FindProfileValue("[a]\nb=" + value + "\xC3\xA4x\n", "a", "b");
    EXPECT_TRUE(found == value) << found->size();
}

struct SetCase {
    const char* name;
    std::string_view before;
    std::string_view after; ///< with "Key" in the section "Part" set to "new"
};
class WithProfileValueTest : public testing::TestWithParam<SetCase> {};
TEST_P(WithProfileValueTest, KeepsEveryOtherLine)
{
    EXPECT_EQ(WithProfileValue(GetParam().before, "Part", "Key", "new"), GetParam().after);
}
INSTANTIATE_TEST_SUITE_P(
    Texts, WithProfileValueTest,
    testing::Values(
        SetCase{"Replaced", "; c\n[Part]\na=1\nKey=old\n\n[B]\n",
                "; c\n[Part]\na=1\nKey=new\n\n[B]\n"},
        SetCase{"SpellingAndBlanksKept", "[part]\n kEy =\told ; x\nb=2",
                "[part]\n kEy =\tnew\nb=2"},
        SetCase{"EmptyValueReplaced", "[Part]\r\nKey=\r\nb=2", "[Part]\r\nKey=new\r\nb=2"},
        SetCase{"EmptyValueAtTheEnd", "[Part]\nKey=  ", "[Part]\nKey=  new"},
        SetCase{"OnlyTheFirst", "[Part]\nKey=a\nKey=b\n", "[Part]\nKey=new\nKey=b\n"},
        SetCase{"AddedToSection", "[Part]\r\na=1\r\n\r\n[B]\r\n",
                "[Part]\r\na=1\r\nKey=new\r\n\r\n[B]\r\n"},
        SetCase{"AddedToEmptySection", "[Part]\n[B]\nKey=x\n", "[Part]\nKey=new\n[B]\nKey=x\n"},
        SetCase{"AddedAtTheEnd", "[Part]\na=1", "[Part]\na=1\nKey=new"},
        SetCase{"SectionAdded", "[B]\nKey=x", "[B]\nKey=x\n[Part]\nKey=new\n"},
        SetCase{"SectionAddedWithCrLf", "[B]\r\n", "[B]\r\n[Part]\r\nKey=new\r\n"},
        SetCase{"EmptyFile", "", "[Part]\nKey=new\n"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(Profile, ReturnsTheFallbackWithoutAFile)
{
    const ScratchFolder scratch;
    const Profile profile(scratch / "orrery.ini");
    EXPECT_EQ(profile.Read("Environment", "ShowTips", "Y"), "Y");
}

TEST(Profile, DistinguishesAnEmptyValueFromAMissingKey)
{
    const ScratchFolder scratch;
    const Profile profile(scratch.Write("orrery.ini", "[Environment]\r\nTemplatePath=\r\n"));
    EXPECT_EQ(profile.Read("environment", "templatepath", "x"), "");
    EXPECT_EQ(profile.Read("Environment", "OutputPath", "x"), "x");
    EXPECT_EQ(profile.Read("Other", "TemplatePath", "x"), "x");
}

TEST(Profile, WritesAndReadsBack)
{
    const ScratchFolder scratch;
    const Profile profile(scratch / "orrery.ini");
    EXPECT_EQ(profile.Read("Environment", "ShowTips", "Y"), "Y");
    EXPECT_TRUE(profile.Write("Environment", "ShowTips", "N"));
    EXPECT_EQ(profile.Read("Environment", "ShowTips", "Y"), "N");
    EXPECT_EQ(Profile(scratch / "orrery.ini").Read("ENVIRONMENT", "SHOWTIPS", "Y"), "N");
    EXPECT_EQ(scratch.Entries(), 1) << "no temporary file stays";
}

TEST(Profile, KeepsAFileThatItCannotRead)
{
    const ScratchFolder scratch;
    const auto file = scratch.Write("a.ini", "[Part]\nKey=a\n");
    std::filesystem::resize_file(file, kMaxTextFileSize + 1);
    const Profile profile(file);
    EXPECT_EQ(profile.Read("Part", "Key", "b"), "b");
    EXPECT_FALSE(profile.Write("Part", "Key", "c"));
    EXPECT_EQ(std::filesystem::file_size(file), kMaxTextFileSize + 1);
}

TEST(Profile, KeepsTheEncoding)
{
    const ScratchFolder scratch;
    const auto file = scratch.Write("orrery.ini", "[A]\r\nx=M\xE4rz\r\ny=1\r\n");
    EXPECT_TRUE(Profile(file).Write("A", "y", "K\xC3\xB6ln"));
    EXPECT_EQ(BytesOf(file), "[A]\r\nx=M\xE4rz\r\ny=K\xF6ln\r\n");
    // A character that the code page lacks turns the file into UTF-8; nothing is lost.
    EXPECT_TRUE(Profile(file).Write("A", "y", "\xE4\xB8\x80"));
    EXPECT_EQ(BytesOf(file), "[A]\r\nx=M\xC3\xA4rz\r\ny=\xE4\xB8\x80\r\n");
}

TEST(Profile, KeepsAByteOrderMark)
{
    const ScratchFolder scratch;
    const auto file = scratch.Write("orrery.ini", "\xEF\xBB\xBF[A]\ny=1\n");
    EXPECT_EQ(Profile(file).Read("A", "y", ""), "1");
    EXPECT_TRUE(Profile(file).Write("A", "y", "2"));
    EXPECT_EQ(BytesOf(file), "\xEF\xBB\xBF[A]\ny=2\n");
}

TEST(Profile, RefusesAValueWithALineBreak)
{
    const ScratchFolder scratch;
    const auto file = scratch.Write("orrery.ini", "[A]\ny=1\n");
    EXPECT_FALSE(Profile(file).Write("A", "y", "2\n[B]"));
    EXPECT_EQ(BytesOf(file), "[A]\ny=1\n");
}

TEST(Profile, MakesTheFolderOfANewFile)
{
    const ScratchFolder scratch;
    EXPECT_TRUE(Profile(scratch / "new" / "folder" / "orrery.ini").Write("A", "y", "2"));
    EXPECT_EQ(Profile(scratch / "new" / "folder" / "orrery.ini").Read("A", "y", ""), "2");
}

TEST(Profile, ReportsAFailedWrite)
{
    const ScratchFolder scratch;
    scratch.Write("file", "");
    EXPECT_FALSE(Profile(scratch / "file/orrery.ini").Write("A", "y", "2")) << "no folder";
    EXPECT_FALSE(Profile(scratch.Path()).Write("A", "y", "2")) << "a folder";
}

} // namespace
} // namespace orrery::util
