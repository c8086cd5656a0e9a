#include "engines/builtin/xlsx/formula/formula_lexer.h"

#include <gtest/gtest.h>

#include <string>

namespace orrery::xlsx {
namespace {

/// The tokens as "kind:text", separated by blanks; single characters as they are.
std::string Tokens(std::string_view formula)
{
    constexpr const char* kNames[] = {
        "prefix:",   "cell:", "columns:", "rows:",  "name:", "function:",
        "brackets:", "text:", "number:",  "error:", ""};
    std::string tokens;
    FormulaLexer lexer(formula);
    while (const auto token = lexer.Next()) {
        if (!tokens.empty())
            tokens += ' ';
        tokens += kNames[static_cast<int>(token->kind)];
        tokens += lexer.TextOf(*token);
    }
    return tokens;
}

struct TokensCase {
    const char* name;
    std::string_view formula;
    std::string_view expected;
};
class FormulaLexerTest : public testing::TestWithParam<TokensCase> {};
TEST_P(FormulaLexerTest, Splits)
{
    EXPECT_EQ(Tokens(GetParam().formula), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Prefixes, FormulaLexerTest,
    testing::Values(
        TokensCase{"Plain", "Sheet1!A1", "prefix:Sheet1! cell:A1"},
        TokensCase{"Quoted", "'It''s'!A1", "prefix:'It''s'! cell:A1"},
        TokensCase{"Range", "Jan:Dec!A1", "prefix:Jan:Dec! cell:A1"},
        TokensCase{"QuotedRange", "'A 1:B 2'!x", "prefix:'A 1:B 2'! name:x"},
        TokensCase{"RangeOfOneLetter", "A:B!C1", "prefix:A:B! cell:C1"},
        TokensCase{"BothEndsQuoted", "'A 1':'B 2'!x", "prefix:'A 1':'B 2'! name:x"},
        TokensCase{"OtherBook", "[1]Sheet1!A1", "prefix:[1]Sheet1! cell:A1"},
        TokensCase{"OtherBookRange", "[1]A:B!A1", "prefix:[1]A:B! cell:A1"},
        TokensCase{"OtherBookQuoted", "'[1]My Sheet'!A1", "prefix:'[1]My Sheet'! cell:A1"},
        TokensCase{"Path", R"('C:\dir\[b.xlsx]S'!A1)", R"(prefix:'C:\dir\[b.xlsx]S'! cell:A1)"},
        TokensCase{"ThisBook", "[0]!Total", "prefix:[0]! name:Total"},
        TokensCase{"DeletedReference", "Sheet1!#REF!", "prefix:Sheet1! error:#REF!"},
        TokensCase{"BeyondAscii", "基础!$F$2", "prefix:基础! cell:$F$2"},
        TokensCase{"DigitFirst", "2027!A1", "prefix:2027! cell:A1"},
        TokensCase{"Twice", "Sheet1!A1:Sheet1!B2",
                   "prefix:Sheet1! cell:A1 : prefix:Sheet1! cell:B2"},
        TokensCase{"AfterCell", "A1:Sheet2!B1", "cell:A1 : prefix:Sheet2! cell:B1"},
        TokensCase{"AfterNumber", "1+Sheet2!B1", "number:1 + prefix:Sheet2! cell:B1"},
        TokensCase{"AfterError", "#N/A/Sheet2!B1", "error:#N/A / prefix:Sheet2! cell:B1"},
        TokensCase{"AfterLowerError", "#div/0!+S!B1", "error:#div/0! + prefix:S! cell:B1"},
        TokensCase{"DdeItem", "[1]!'!Sheet1!R1C1'", "prefix:[1]! text:'!Sheet1!R1C1'"}),
    [](const auto& row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(
    References, FormulaLexerTest,
    testing::Values(TokensCase{"Absolute", "$A$1+A$1", "cell:$A$1 + cell:A$1"},
                    TokensCase{"LastCell", "XFD1048576", "cell:XFD1048576"},
                    TokensCase{"BeyondLastColumn", "XFE1", "name:XFE1"},
                    TokensCase{"BeyondLastRow", "A1048577", "name:A1048577"},
                    TokensCase{"RowZero", "A0", "name:A0"}, TokensCase{"Lower", "b6", "cell:b6"},
                    TokensCase{"Range", "A1:B2", "cell:A1 : cell:B2"},
                    TokensCase{"Columns", "A:$C", "columns:A:$C"},
                    TokensCase{"Rows", "$1:3", "rows:$1:3"},
                    TokensCase{"ColumnsOfSheet", "S!A:A", "prefix:S! columns:A:A"},
                    TokensCase{"RowsBeyond", "1:1048577", "number:1 : number:1048577"},
                    TokensCase{"Spilled", "A1#+@B2", "cell:A1 # + @ cell:B2"},
                    TokensCase{"Intersection", "A1:B2 B1", "cell:A1 : cell:B2   cell:B1"}),
    [](const auto& row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Others, FormulaLexerTest,
    testing::Values(
        TokensCase{"Empty", "", ""},
        TokensCase{"FunctionLikeCell", "LOG10(A1)", "function:LOG10 ( cell:A1 )"},
        TokensCase{"FunctionWithDigit", "DEC2BIN(A1)", "function:DEC2BIN ( cell:A1 )"},
        TokensCase{"FutureFunction", "_xlfn.XLOOKUP(A1)", "function:_xlfn.XLOOKUP ( cell:A1 )"},
        TokensCase{"Text", R"("a""Sheet1!A1"&B1)", R"(text:"a""Sheet1!A1" & cell:B1)"},
        TokensCase{"TextWithoutEnd", R"(A1&"b)", R"(cell:A1 & text:"b)"},
        TokensCase{"Array", R"({1,"x;y";TRUE})", R"({ number:1 , text:"x;y" ; name:TRUE })"},
        TokensCase{"Exponent", "1E+5+2.5e-3", "number:1E+5 + number:2.5e-3"},
        TokensCase{"NoExponent", "1+A1E+5", "number:1 + name:A1E + number:5"},
        TokensCase{"NameWithDots", "my.name_1?+\\x+Größe",
                   "name:my.name_1? + name:\\x + name:Größe"},
        TokensCase{"R1C1IsAName", "R1C1", "name:R1C1"},
        TokensCase{"Structured", "T[[#This Row],[Col'[x]]",
                   "name:T brackets:[[#This Row],[Col'[x]]"},
        TokensCase{"StructuredPair", "T[[A]:[B]]+1", "name:T brackets:[[A]:[B]] + number:1"},
        TokensCase{"StructuredOfItself", "[Day]*[Rate]", "brackets:[Day] * brackets:[Rate]"},
        TokensCase{"StructuredLikeCell", "A1[Day]", "name:A1 brackets:[Day]"},
        TokensCase{"SheetInBrackets", "T[Sheet1!A1]", "name:T brackets:[Sheet1!A1]"},
        TokensCase{"BracketsWithoutEnd", "T[[A", "name:T brackets:[[A"},
        TokensCase{"NewError", "#SPILL!+#NAME?", "error:#SPILL! + error:#NAME?"},
        TokensCase{"ErrorWithoutMark", "#GETTING_DATA", "error:#GETTING_DATA"}),
    [](const auto& row) { return std::string(row.param.name); });

struct PrefixCase {
    const char* name;
    std::string_view token;
    std::string_view book;
    std::string_view first;
    std::string_view last;
};
class SheetPrefixTest : public testing::TestWithParam<PrefixCase> {};
TEST_P(SheetPrefixTest, Decodes)
{
    const auto prefix = ParseSheetPrefix(GetParam().token);
    ASSERT_TRUE(prefix);
    EXPECT_EQ(prefix->Book, GetParam().book);
    EXPECT_EQ(prefix->First, GetParam().first);
    EXPECT_EQ(prefix->Last, GetParam().last);
}
INSTANTIATE_TEST_SUITE_P(OfThisBook, SheetPrefixTest,
                         testing::Values(PrefixCase{"Plain", "Desk!", "", "Desk", ""},
                                         PrefixCase{"Apostrophe", "'It''s'!", "", "It's", ""},
                                         PrefixCase{"OnlyApostrophes", "'a''''b'!", "", "a''b", ""},
                                         PrefixCase{"Range", "'A 1:B'!", "", "A 1", "B"},
                                         PrefixCase{"RangeInPieces", "'A 1':'B'!", "", "A 1", "B"},
                                         PrefixCase{"ExclamationMark", "'Go!'!", "", "Go!", ""},
                                         PrefixCase{"Book", "[0]!", "[0]", "", ""},
                                         PrefixCase{"BookAndSheet", "'[0]My Sheet'!", "[0]",
                                                    "My Sheet", ""}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(SheetPrefixTest, OtherBooksAreIgnored)
{
    for (const std::string_view token :
         {"[1]Desk!", "[1]!", "'[1]My Desk'!", "'[Book.xlsx]Desk'!", R"('C:\dir\[b.xlsx]S'!)",
          R"('C:\dir\b.xlsx'!)", "'http://host/b.xlsx'!", "'a:b:c'!"})
        EXPECT_FALSE(ParseSheetPrefix(token)) << token;
}

} // namespace
} // namespace orrery::xlsx
