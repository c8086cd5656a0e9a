#include "look/text/line_break.h"

#include "look/text/characters.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orrery::look {
namespace {

/// Lines of a text in which each of the user's characters is one pixel wide.
std::vector<std::string> Lines(const std::string& text, double room)
{
    const auto width = [&text](TextSpan span) {
        double count = 0;
        for (std::size_t at = span.begin; at < span.end; ++count)
            at = ClusterEnd(std::string_view(text).substr(0, span.end), at);
        return count;
    };
    std::vector<std::string> lines;
    for (const TextSpan line : BreakLines(text, room, width))
        lines.push_back(text.substr(line.begin, line.end - line.begin));
    return lines;
}

struct BreakCase {
    const char* name;
    std::string text;
    double room;
    std::vector<std::string> expected;
};

class BreakLinesTest : public testing::TestWithParam<BreakCase> {};

TEST_P(BreakLinesTest, Breaks)
{
    EXPECT_EQ(Lines(GetParam().text, GetParam().room), GetParam().expected);
}

using Expected = std::vector<std::string>;

INSTANTIATE_TEST_SUITE_P(
    Texts, BreakLinesTest,
    testing::Values(
        BreakCase{"OneLine", "one two", 7, Expected{"one two"}},
        BreakCase{"Empty", "", 7, Expected{""}},
        BreakCase{"AfterBlanks", "one two three", 7, Expected{"one two", "three"}},
        BreakCase{"BlanksAtTheEndTakeNoRoom", "one   two", 3, Expected{"one", "two"}},
        BreakCase{"AfterHyphens", "week-end day", 6, Expected{"week-", "end", "day"}},
        BreakCase{"NotBeforeDigitsOfANumber", "ab -12", 4, Expected{"ab", "-12"}},
        BreakCase{"LongWord", "abcdefgh", 3, Expected{"abc", "def", "gh"}},
        BreakCase{"LongWordAfterAnother", "a bcdefgh", 3, Expected{"a", "bcd", "efg", "h"}},
        BreakCase{"MarksStayWithTheirLetter", "e\u0301e\u0301e\u0301", 2,
                  Expected{"e\u0301e\u0301", "e\u0301"}},
        BreakCase{"NoRoom", "ab", 0, Expected{"a", "b"}},
        BreakCase{"LineEnds", "a\nb\r\nc\rd", 9, Expected{"a", "b", "c", "d"}},
        BreakCase{"EmptyLines", "a\n\nb\n", 9, Expected{"a", "", "b", ""}},
        BreakCase{"BetweenEastAsian", "日曜日月曜日", 4, Expected{"日曜日月", "曜日"}},
        BreakCase{"FullStopStays", "日曜日月。曜", 4, Expected{"日曜日", "月。曜"}},
        BreakCase{"OpeningBracketStays", "日曜日（月）", 4, Expected{"日曜日", "（月）"}},
        BreakCase{"LatinBesideEastAsian", "日曜day日", 4, Expected{"日曜", "day日"}}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(BreakLines, IsLinear)
{
    EXPECT_EQ(Lines(std::string(32767, 'x'), 1).size(), 32767U);
    EXPECT_EQ(Lines(std::string(32767, ' '), 1).size(), 1U);
}

TEST(SplitAtLineEnds, GivesOneLineMoreThanEnds)
{
    EXPECT_EQ(SplitAtLineEnds("a\r\nb"), (std::vector<TextSpan>{{0, 1}, {3, 4}}));
    EXPECT_EQ(SplitAtLineEnds(""), (std::vector<TextSpan>{{0, 0}}));
}

} // namespace
} // namespace orrery::look
