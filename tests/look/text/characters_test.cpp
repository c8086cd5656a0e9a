#include "look/text/characters.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orrery::look {
namespace {

std::vector<std::string> Clusters(std::string_view text)
{
    std::vector<std::string> clusters;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = ClusterEnd(text, at);
        clusters.emplace_back(text.substr(at, end - at));
        at = end;
    }
    return clusters;
}

TEST(ClusterEnd, KeepsMarksWithTheirLetter)
{
    EXPECT_EQ(Clusters("ae\u0301o"), (std::vector<std::string>{"a", "e\u0301", "o"}));
}

TEST(ClusterEnd, KeepsPartsOfAnEmojiTogether)
{
    const std::string family = "\U0001F468\u200D\U0001F469\u200D\U0001F467";
    EXPECT_EQ(Clusters("x" + family + "y"), (std::vector<std::string>{"x", family, "y"}));
}

TEST(ClusterEnd, PassesInvalidBytesOneByOne)
{
    EXPECT_EQ(Clusters("\xFF\xFE"), (std::vector<std::string>{"\xFF", "\xFE"}));
}

TEST(Characters, EastAsianOnesAndEmojiAreWide)
{
    for (const char32_t character : U"\u4E00\u3042\uAC00\uFF21\U0001F600")
        EXPECT_EQ(IsWide(character), character != 0) << static_cast<unsigned>(character);
    for (const char32_t character : U"A\u00E9\u0416\u05D0\uFF71")
        EXPECT_FALSE(IsWide(character)) << static_cast<unsigned>(character);
}

TEST(Characters, MarksTakeNoRoom)
{
    for (const char32_t character : std::u32string_view(U"\u0301\u200B\u200D\u05B8\uFE0F\u00AD"))
        EXPECT_TRUE(IsZeroWidth(character)) << static_cast<unsigned>(character);
    for (const char32_t character : std::u32string_view(U"a \u00A0\u4E00"))
        EXPECT_FALSE(IsZeroWidth(character)) << static_cast<unsigned>(character);
}

TEST(Directions, AreThoseOfTheBidirectionalAlgorithm)
{
    EXPECT_EQ(DirectionOf('a'), Direction::LeftToRight);
    EXPECT_EQ(DirectionOf(U'\u05D0'), Direction::RightToLeft);
    EXPECT_EQ(DirectionOf(U'\u0645'), Direction::RightToLeft);
    EXPECT_EQ(DirectionOf('7'), Direction::Digit);
    EXPECT_EQ(DirectionOf(U'\u0667'), Direction::Digit);
    EXPECT_EQ(DirectionOf(' '), Direction::Neutral);
}

TEST(Directions, TheFirstLetterDecides)
{
    EXPECT_TRUE(BeginsRightToLeft("12 \u05D0 abc"));
    EXPECT_FALSE(BeginsRightToLeft("(a) \u05D0"));
    EXPECT_FALSE(BeginsRightToLeft("2026"));
    EXPECT_TRUE(HasRightToLeft("(a) \u05D0"));
    EXPECT_FALSE(HasRightToLeft("caf\u00E9 \u4E00"));
}

} // namespace
} // namespace orrery::look
