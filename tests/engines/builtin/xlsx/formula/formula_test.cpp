#include "engines/builtin/xlsx/formula/formula.h"

#include "engines/common/sheet_names.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace orrery::xlsx {

using engines::FoldCase;

namespace {

std::function<std::optional<std::string>(std::string_view)>
Names(std::map<std::string, std::string, std::less<>> names)
{
    return [names = std::move(names)](std::string_view name) -> std::optional<std::string> {
        const auto found = names.find(name);
        return found == names.end() ? std::nullopt : std::optional(found->second);
    };
}

struct QuoteCase {
    const char* name;
    std::string_view sheet;
    std::string_view expected;
};
class QuoteSheetNameTest : public testing::TestWithParam<QuoteCase> {};
TEST_P(QuoteSheetNameTest, QuotesIfTheGrammarNeedsIt)
{
    EXPECT_EQ(QuoteSheetName(GetParam().sheet), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(
    Names, QuoteSheetNameTest,
    testing::Values(
        QuoteCase{"Word", "Desk", "Desk"}, QuoteCase{"Number", "Desk2027", "Desk2027"},
        QuoteCase{"Underscore", "_x.y", "_x.y"}, QuoteCase{"Blank", "My Desk", "'My Desk'"},
        QuoteCase{"Apostrophe", "It's", "'It''s'"}, QuoteCase{"Sign", "a-b", "'a-b'"},
        QuoteCase{"LeadingDigit", "2027", "'2027'"}, QuoteCase{"LeadingDot", ".a", "'.a'"},
        QuoteCase{"Cell", "A1", "'A1'"}, QuoteCase{"MonthThatIsACell", "Jan2027", "'Jan2027'"},
        QuoteCase{"LastColumn", "XFD1", "'XFD1'"}, QuoteCase{"NoColumn", "XFE1", "XFE1"},
        QuoteCase{"R1C1", "r1c1", "'r1c1'"}, QuoteCase{"RowSign", "R", "'R'"},
        QuoteCase{"ColumnSign", "c", "'c'"}, QuoteCase{"RowAndColumnSign", "RC", "'RC'"},
        QuoteCase{"OtherLetter", "D", "D"}, QuoteCase{"TruthValue", "True", "'True'"},
        QuoteCase{"BeyondAscii", "März", "'März'"}, QuoteCase{"Copy", "Desk (2)", "'Desk (2)'"},
        QuoteCase{"Empty", "", "''"}),
    [](const auto& row) { return std::string(row.param.name); });

class RenameColumnsTest : public testing::TestWithParam<QuoteCase> {};
TEST_P(RenameColumnsTest, FollowsTheHeaders)
{
    TableNames tables;
    tables.Set("Plan", {"Plan", {}, {{FoldCase("Day"), "Sun"}, {FoldCase("a#b"), "x]y"}}, {}});
    const auto renamed = RenameInFormula(GetParam().sheet, {}, tables.Inside("Plan"));
    EXPECT_EQ(renamed.value_or(std::string(GetParam().sheet)), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(
    Columns, RenameColumnsTest,
    testing::Values(QuoteCase{"Whole", "SUM(Plan[Day])", "SUM(Plan[Sun])"},
                    QuoteCase{"WithoutRegardToCase", "plan[DAY]", "plan[Sun]"},
                    QuoteCase{"ThisRow", "Plan[[#This Row],[Day]]*2", "Plan[[#This Row],[Sun]]*2"},
                    QuoteCase{"Range", "Plan[[Day]:[Work]]", "Plan[[Sun]:[Work]]"},
                    QuoteCase{"InsideItsTable", "[Day]+[Work]", "[Sun]+[Work]"},
                    QuoteCase{"SignsNeedTwoBrackets", "Plan[a'#b]", "Plan[[x']y]]"},
                    QuoteCase{"OtherTable", "Other[Day]", "Other[Day]"},
                    QuoteCase{"OtherColumn", "Plan[Work]", "Plan[Work]"},
                    QuoteCase{"Keyword", "Plan[#All]", "Plan[#All]"},
                    QuoteCase{"InText", "\"Plan[Day]\"", "\"Plan[Day]\""}),
    [](const auto& row) { return std::string(row.param.name); });

struct RenameCase {
    const char* name;
    std::string_view formula;
    std::string_view expected; ///< empty if nothing changes
};
class RenameInFormulaTest : public testing::TestWithParam<RenameCase> {};
TEST_P(RenameInFormulaTest, FollowsTheNames)
{
    const auto sheets = Names({{"Desk", "Jan"},
                               {"My Desk", "Feb"},
                               {"It's", "Mar"},
                               {"Old", "My New"},
                               {"Year", "Year's"},
                               {"Same", "Same"},
                               {"b", "Wrong"},
                               {"C", "Wrong"},
                               {"1", "Wrong"}});
    TableNames tables;
    tables.Set("Days", {"Days_2", {}, {}, {}});
    const auto renamed = RenameInFormula(GetParam().formula, sheets, tables);
    EXPECT_EQ(renamed.value_or(""), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(
    Sheets, RenameInFormulaTest,
    testing::Values(RenameCase{"Plain", "Desk!A1+1", "Jan!A1+1"},
                    RenameCase{"Quoted", "'Desk'!A1", "Jan!A1"},
                    RenameCase{"DropsQuotes", "'My Desk'!A1", "Feb!A1"},
                    RenameCase{"AddsQuotes", "Old!A1", "'My New'!A1"},
                    RenameCase{"ApostropheInOld", "'It''s'!A1", "Mar!A1"},
                    RenameCase{"ApostropheInNew", "Year!A1", "'Year''s'!A1"},
                    RenameCase{"EveryPlace", "SUM(Desk!A1:A3,Desk!B$2)*Old!$C$1",
                               "SUM(Jan!A1:A3,Jan!B$2)*'My New'!$C$1"},
                    RenameCase{"BothEndsOfCells", "Desk!A1:Desk!B2", "Jan!A1:Jan!B2"},
                    RenameCase{"RangeFirst", "SUM(Desk:Other!A1)", "SUM(Jan:Other!A1)"},
                    RenameCase{"RangeLast", "SUM(Other:Desk!A1)", "SUM(Other:Jan!A1)"},
                    RenameCase{"RangeQuoted", "SUM(Desk:Old!A1)", "SUM('Jan:My New'!A1)"},
                    RenameCase{"RangeInQuotes", "SUM('My Desk:It''s'!A1)", "SUM(Feb:Mar!A1)"},
                    RenameCase{"RangeOfQuoted", "SUM('My Desk':'It''s'!A1)", "SUM(Feb:Mar!A1)"},
                    RenameCase{"DeletedReference", "Desk!#REF!", "Jan!#REF!"},
                    RenameCase{"Name", "Desk!Total", "Jan!Total"},
                    RenameCase{"ThisBook", "[0]Desk!A1", "[0]Jan!A1"},
                    RenameCase{"ThisBookQuoted", "[0]Old!A1", "'[0]My New'!A1"},
                    RenameCase{"AfterText", R"("Desk!A1"&Desk!A1)", R"("Desk!A1"&Jan!A1)"},
                    RenameCase{"InArrayFunction", R"(MATCH(Desk!A1,{1,"Desk!A1"},0))",
                               R"(MATCH(Jan!A1,{1,"Desk!A1"},0))"},
                    RenameCase{"AfterErrorValue", "IF(#N/A,#DIV/0!,Desk!A1)",
                               "IF(#N/A,#DIV/0!,Jan!A1)"},
                    RenameCase{"AfterStructured", "T[[#This Row],[Desk'[!]]+Desk!A1",
                               "T[[#This Row],[Desk'[!]]+Jan!A1"},
                    RenameCase{"Union", "(Desk!A1,Desk!B1)", "(Jan!A1,Jan!B1)"},
                    RenameCase{"ImplicitIntersection", "@Desk!A:A", "@Jan!A:A"}),
    [](const auto& row) { return std::string(row.param.name); });
INSTANTIATE_TEST_SUITE_P(
    Untouched, RenameInFormulaTest,
    testing::Values(
        RenameCase{"NoSheet", "A1+SUM(B:B)", ""}, RenameCase{"UnknownSheet", "Other!A1", ""},
        RenameCase{"SameName", "'Same'!A1", ""}, RenameCase{"OtherBook", "[1]Desk!A1", ""},
        RenameCase{"OtherBookQuoted", "'[1]My Desk'!A1", ""},
        RenameCase{"OtherBookRange", "[1]Desk:Old!A1", ""},
        RenameCase{"OtherBookTable", "[1]!Days[Day]", ""},
        RenameCase{"Path", R"('C:\dir\[b.xlsx]Desk'!A1)", ""},
        RenameCase{"PathWithoutSheet", R"('C:\dir\b'!Total)", ""},
        RenameCase{"Text", R"("Desk!A1")", ""}, RenameCase{"TextWithQuote", R"("a"" Desk!A1")", ""},
        RenameCase{"Column", "T[Desk!A1]", ""}, RenameCase{"TableColumn", "T[Days]", ""},
        RenameCase{"Function", "Days(1)", ""}, RenameCase{"Item", "[1]!'Desk!A1'", ""},
        RenameCase{"NameLikeSheet", "Desk+1", ""}, RenameCase{"RowsAreNoSheet", "SUM(1:1)", ""}),
    [](const auto& row) { return std::string(row.param.name); });
INSTANTIATE_TEST_SUITE_P(Tables, RenameInFormulaTest,
                         testing::Values(RenameCase{"Column", "SUM(Days[Day])", "SUM(Days_2[Day])"},
                                         RenameCase{"WholeTable", "ROWS(Days)", "ROWS(Days_2)"},
                                         RenameCase{"Empty", "ROWS(Days[])", "ROWS(Days_2[])"},
                                         RenameCase{"ThisRow", "Days[[#This Row],[Days]]*2",
                                                    "Days_2[[#This Row],[Days]]*2"},
                                         RenameCase{"Both", "Days[Day]+Desk!A1",
                                                    "Days_2[Day]+Jan!A1"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(RenameInFormulaTest, ChangesNothingWithoutNames)
{
    EXPECT_FALSE(RenameInFormula("Desk!A1+Days[Day]", {}, {}));
}

struct FactsCase {
    const char* name;
    std::string_view formula;
    std::set<std::string, std::less<>> sheets;
    bool readsElsewhere;
};
class CollectFactsTest : public testing::TestWithParam<FactsCase> {};
TEST_P(CollectFactsTest, TellsWhatIsRead)
{
    FormulaFacts facts;
    CollectFacts(GetParam().formula, facts);
    EXPECT_EQ(facts.sheets, GetParam().sheets);
    EXPECT_EQ(facts.readsElsewhere, GetParam().readsElsewhere);
}
INSTANTIATE_TEST_SUITE_P(
    Formulas, CollectFactsTest,
    testing::Values(FactsCase{"OwnCells", "SUM(A1:B2)+C:C", {}, false},
                    FactsCase{"TruthValues", R"(IF(TRUE,"x",false))", {}, false},
                    FactsCase{"Sheets", "Desk!A1+'It''s'!B1", {"Desk", "It's"}, false},
                    FactsCase{"ThisBook", "[0]Desk!A1", {"Desk"}, false},
                    FactsCase{"RangeOfSheets", "SUM(Jan:Dec!A1)", {"Jan", "Dec"}, true},
                    FactsCase{"OtherBook", "[1]Desk!A1+'[2]a b'!x", {}, false},
                    FactsCase{"DefinedName", "Total*2", {}, true},
                    FactsCase{"NameOfSheet", "Desk!Total", {"Desk"}, true},
                    FactsCase{"NameOfBook", "[0]!Total", {}, true},
                    FactsCase{"Table", "SUM(Days[Day])", {}, true},
                    FactsCase{"OwnTable", "[Day]*2", {}, true},
                    FactsCase{"Indirect", R"(INDIRECT("Desk!A1"))", {}, true},
                    FactsCase{"LowerCase", "today()", {}, true},
                    FactsCase{"FutureFunction", "_xlfn.RANDARRAY(2)", {}, true},
                    FactsCase{"OrdinaryFutureFunction", "_xlfn.CONCAT(A1)", {}, false},
                    FactsCase{"VariableOfLet", "_xlfn.LET(_xlpm.x,A1,_xlpm.x*2)", {}, false},
                    FactsCase{"NowInText", "\"NOW()\"", {}, false},
                    FactsCase{"Lost", "#REF!+Desk!#REF!", {"Desk"}, false}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(CollectFactsTest, AddsUp)
{
    FormulaFacts facts;
    CollectFacts("NOW()", facts);
    CollectFacts("Desk!A1", facts);
    EXPECT_TRUE(facts.readsElsewhere);
    EXPECT_EQ(facts.sheets.size(), 1U);
}

} // namespace
} // namespace orrery::xlsx
