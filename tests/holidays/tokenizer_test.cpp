#include "holidays/key_line.h"
#include "holidays/tokenizer.h"

#include <gtest/gtest.h>
#include <vector>

namespace orrery::holidays {
namespace {

struct TokenCase {
    const char* name;
    std::string_view line;
    std::vector<std::string> kept;    ///< tokens with their quotes
    std::vector<std::string> dropped; ///< tokens without quotes; if empty, same as `kept`
};

/// All tokens up to the first empty one.
std::vector<std::string> Tokens(std::string_view line, bool keepQuotes)
{
    std::vector<std::string> tokens;
    std::int32_t pos = 1;
    for (;;) {
        std::string token = GetToken(line, pos, keepQuotes);
        if (token.empty())
            return tokens;
        tokens.push_back(std::move(token));
    }
}

class GetTokenTest : public testing::TestWithParam<TokenCase> {};
TEST_P(GetTokenTest, SplitsLine)
{
    const TokenCase& row = GetParam();
    EXPECT_EQ(Tokens(row.line, true), row.kept);
    EXPECT_EQ(Tokens(row.line, false), row.dropped.empty() ? row.kept : row.dropped);
}
INSTANTIATE_TEST_SUITE_P(
    Lines, GetTokenTest,
    testing::Values(
        TokenCase{"Operator", "a<=b", {"a", "<=", "b"}, {}}, TokenCase{"Slash", "x/y", {"x/y"}, {}},
        TokenCase{"SlashAtTheEnd", "x/", {"x/"}, {}}, TokenCase{"Comment", "/* c", {"/*", "c"}, {}},
        TokenCase{"CommentAfterAWord", "a/*c", {"a", "/*", "c"}, {}},
        TokenCase{"EndOfComment", "*/", {"*/"}, {}},
        TokenCase{"Parentheses", "f(x)", {"f", "(", "x", ")"}, {}},
        TokenCase{"Comma", "a,,b", {"a", ",", ",", "b"}, {}},
        TokenCase{"Equals", " Key = value ", {"Key", "=", "value"}, {}},
        TokenCase{"PairsOfOperators", "== => <> =< >>", {"==", "=>", "<>", "=<", ">>"}, {}},
        TokenCase{"ThreeOperators", "<=>", {"<=", ">"}, {}},
        TokenCase{"OperatorBeforeABlank", "= =", {"=", "="}, {}},
        TokenCase{"EveryBlank", "\ta\r\nb ", {"a", "b"}, {}},
        TokenCase{"QuotedRun", "\"a b\"c", {"\"a b\"c"}, {"a bc"}},
        TokenCase{"QuotedRunInsideAWord", "x\"a b\"y z", {"x\"a b\"y", "z"}, {"xa by", "z"}},
        TokenCase{"SingleQuotes", "'a=b'", {"'a=b'"}, {"a=b"}},
        TokenCase{"OtherQuoteInside", "\"it's\"", {"\"it's\""}, {"it's"}},
        TokenCase{"KeepsDoubledQuotes", "\"a\"\"b\"", {"\"a\"\"b\""}, {"a\"\"b"}},
        TokenCase{"Unclosed", "\"a b", {"\"a b"}, {"a b"}},
        TokenCase{"OpenedAtTheEnd", "a\"", {"a\""}, {"a"}},
        TokenCase{"OnlyDoubledQuotes", "\"\"\"\"", {"\"\"\"\""}, {"\"\""}},
        TokenCase{"Empty", "", {}, {}}, TokenCase{"Blank", " \t", {}, {}}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(GetToken, ReturnsAnEmptyTokenForEmptyQuotes)
{
    std::int32_t pos = 1;
    EXPECT_EQ(GetToken("\"\" x", pos, false), "");
    EXPECT_EQ(pos, 3);
    EXPECT_EQ(GetToken("\"\" x", pos, false), "x");
}

TEST(GetToken, MovesPastTheToken)
{
    const std::string_view line = "  Key= v";
    std::int32_t pos = 1;
    EXPECT_EQ(GetToken(line, pos, true), "Key");
    EXPECT_EQ(pos, 6);
    EXPECT_EQ(GetToken(line, pos, true), "=");
    EXPECT_EQ(pos, 7);
    EXPECT_EQ(GetToken(line, pos, true), "v");
    EXPECT_EQ(pos, 9);
    EXPECT_EQ(GetToken(line, pos, true), "");
    EXPECT_EQ(pos, 9);
}

TEST(GetToken, ReturnsNothingOutsideTheLine)
{
    for (const std::int32_t start : {-1, 0, 3, 2147483647}) {
        std::int32_t pos = start;
        EXPECT_EQ(GetToken("ab", pos, true), "");
        EXPECT_EQ(pos, start);
    }
}

TEST(SkipBlanks, StopsAtTheFirstOtherCharacter)
{
    std::int32_t pos = 1;
    SkipBlanks(" \t\r\n\vx", pos);
    EXPECT_EQ(pos, 5); // a vertical tab is an ordinary character
}

struct KeyCase {
    const char* name;
    std::string_view line;
    std::string_view key; ///< empty for a line that is ignored
    std::string_view value;
};
class ReadKeyLineTest : public testing::TestWithParam<KeyCase> {};
TEST_P(ReadKeyLineTest, ReadsKeyAndValue)
{
    const auto line = ReadKeyLine(GetParam().line);
    ASSERT_EQ(line.has_value(), !GetParam().key.empty());
    if (line) {
        EXPECT_EQ(line->key, GetParam().key);
        EXPECT_EQ(line->value, GetParam().value);
    }
}
INSTANTIATE_TEST_SUITE_P(
    Lines, ReadKeyLineTest,
    testing::Values(KeyCase{"Plain", "Output=Y", "OUTPUT", "Y"},
                    KeyCase{"BlanksAndCase", " outWeekday\t= y ", "OUTWEEKDAY", "y"},
                    KeyCase{"UnchangedValue", "SheetName=a = \"b\"", "SHEETNAME", "a = \"b\""},
                    KeyCase{"KeepsQuotesOfTheKey", "\"Output\"=Y", "\"OUTPUT\"", "Y"},
                    KeyCase{"NoValue", "Output=", "", ""},
                    KeyCase{"BlankValue", "Output=  ", "", ""},
                    KeyCase{"NoEquals", "Output", "", ""}, KeyCase{"TwoWords", "Out put=Y", "", ""},
                    KeyCase{"DoubledEquals", "Output==Y", "", ""},
                    KeyCase{"EqualsAndLess", "SheetName=<x", "", ""},
                    KeyCase{"BlankBeforeLess", "SheetName= <x", "SHEETNAME", "<x"},
                    KeyCase{"EqualsOnly", "=", "", ""}, KeyCase{"Empty", "", "", ""}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(IsHolidayKey, LooksAtSevenLetters)
{
    EXPECT_TRUE(IsHolidayKey("HOLIDAY"));
    EXPECT_TRUE(IsHolidayKey("HOLIDAY1025"));
    EXPECT_TRUE(IsHolidayKey("HOLIDAY_2"));
    EXPECT_FALSE(IsHolidayKey("HOLIDA"));
    EXPECT_FALSE(IsHolidayKey("OUTHOLIDAY"));
}

} // namespace
} // namespace orrery::holidays
