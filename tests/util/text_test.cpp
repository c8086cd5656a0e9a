#include "util/code_page.h"
#include "util/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orrery::util {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Trim, RemovesSpacesAndTabsOnly)
{
    EXPECT_EQ(Trim("  a b\t"), "a b");
    EXPECT_EQ(Trim(" \t "), "");
    EXPECT_EQ(Trim(""), "");
    EXPECT_EQ(Trim("\na\r"), "\na\r");
    EXPECT_EQ(Trim("\xC2\xA0"), "\xC2\xA0"); // a no-break space belongs to the text
}

TEST(ToUpperAscii, KeepsOtherCharacters)
{
    EXPECT_EQ(ToUpperAscii("aZ0-z\xC3\xA4"), "AZ0-Z\xC3\xA4");
}

TEST(EqualIgnoringCase, ComparesWholeTexts)
{
    EXPECT_TRUE(EqualIgnoringCase("Sheet1", "sHEET1"));
    EXPECT_TRUE(EqualIgnoringCase("", ""));
    EXPECT_FALSE(EqualIgnoringCase("Sheet1", "Sheet"));
    EXPECT_FALSE(EqualIgnoringCase("Sheet", "Sheet1"));
    EXPECT_FALSE(EqualIgnoringCase("@", "`")); // 32 apart like letters, but not letters
}

TEST(Split, KeepsEmptyPieces)
{
    EXPECT_THAT(Split("a,,b,", ','), ElementsAre("a", "", "b", ""));
    EXPECT_THAT(Split("", ','), ElementsAre(""));
    EXPECT_THAT(Split("a", ','), ElementsAre("a"));
}

TEST(Join, IsTheReverseOfSplit)
{
    EXPECT_EQ(Join({}, ","), "");
    EXPECT_EQ(Join({"a"}, ","), "a");
    EXPECT_EQ(Join(Split("a,,b,", ','), ","), "a,,b,");
}

TEST(SplitLines, AcceptsEveryLineEnd)
{
    EXPECT_THAT(SplitLines("a\r\nb\nc\rd"), ElementsAre("a", "b", "c", "d"));
    EXPECT_THAT(SplitLines("a\n"), ElementsAre("a"));
    EXPECT_THAT(SplitLines("\n\r\n\r"), ElementsAre("", "", ""));
    EXPECT_THAT(SplitLines("a\r"), ElementsAre("a"));
    EXPECT_THAT(SplitLines(""), IsEmpty());
}

TEST(JoinLines, PutsASpaceBetweenLines)
{
    EXPECT_EQ(JoinLines("Failed.\r\nThe disk is full."), "Failed. The disk is full.");
    EXPECT_EQ(JoinLines("one"), "one");
    EXPECT_EQ(JoinLines(""), "");
}

struct Utf8Case {
    const char* name;
    std::string_view bytes;
    bool valid;
};
class IsValidUtf8Test : public testing::TestWithParam<Utf8Case> {};
TEST_P(IsValidUtf8Test, ChecksSequences)
{
    EXPECT_EQ(IsValidUtf8(GetParam().bytes), GetParam().valid);
}
INSTANTIATE_TEST_SUITE_P(Sequences, IsValidUtf8Test,
                         testing::Values(Utf8Case{"Empty", "", true},
                                         Utf8Case{"Ascii", "abc", true},
                                         Utf8Case{"TwoBytes", "\xC3\xA4", true},
                                         Utf8Case{"ThreeBytes", "\xE2\x82\xAC", true},
                                         Utf8Case{"FourBytes", "\xF0\x9F\x98\x80", true},
                                         Utf8Case{"LastCharacter", "\xF4\x8F\xBF\xBF", true},
                                         Utf8Case{"BeyondTheLast", "\xF4\x90\x80\x80", false},
                                         Utf8Case{"LoneContinuation", "\x80", false},
                                         Utf8Case{"CutShort", "\xE2\x82", false},
                                         Utf8Case{"LeadWithoutContinuation", "\xC3(", false},
                                         Utf8Case{"OverlongTwoBytes", "\xC1\x81", false},
                                         Utf8Case{"OverlongThreeBytes", "\xE0\x80\xAF", false},
                                         Utf8Case{"OverlongFourBytes", "\xF0\x80\x80\xAF", false},
                                         Utf8Case{"Surrogate", "\xED\xA0\x80", false},
                                         Utf8Case{"NeverALead", "\xFF", false}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(DecodeTextFile, KeepsUtf8)
{
    EXPECT_EQ(DecodeTextFile("Ostern \xC3\xA4"), "Ostern \xC3\xA4");
}

TEST(DecodeTextFile, DropsAByteOrderMark)
{
    EXPECT_EQ(DecodeTextFile("\xEF\xBB\xBF[A]"), "[A]");
}

TEST(DecodeTextFile, ReadsOtherBytesAsTheCodePage)
{
    EXPECT_EQ(DecodeTextFile("M\xE4rz"), "M\xC3\xA4rz");
    EXPECT_EQ(DecodeTextFile("\x80 \x99"), "\xE2\x82\xAC \xE2\x84\xA2"); // the euro and trade mark
}

TEST(EncodeTextFile, LosesNothing)
{
    for (const std::string text :
         {"plain", "M\xC3\xA4rz", "\xE4\xB8\x80\xE6\x9C\x88", "\xE2\x82\xAC"})
        EXPECT_EQ(DecodeTextFile(EncodeTextFile(text)), text);
}

TEST(CodePage, RoundTripsEveryByte)
{
    std::string bytes;
    for (int i = 0; i < 256; ++i)
        bytes += static_cast<char>(i);
    const std::string text = DecodeCodePage(bytes);
    EXPECT_TRUE(IsValidUtf8(text));
    EXPECT_EQ(EncodeCodePage(text), bytes);
}

TEST(CodePage, HasNoOtherCharacters)
{
    EXPECT_EQ(EncodeCodePage("\xE4\xB8\x80"), std::nullopt);
    EXPECT_EQ(EncodeCodePage("\xF0\x9F\x98\x80"), std::nullopt);
    EXPECT_EQ(EncodeCodePage("\xC4\x80"), std::nullopt); // U+0100, just beyond
}

} // namespace
} // namespace orrery::util
