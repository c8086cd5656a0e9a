#include "look/evaluate/evaluator.h"

#include "look/evaluate/fake_workbook.h"

#include <gtest/gtest.h>

#include <string>

namespace orrery::look {
namespace {

using book::CellError;

/// A value as a table's row shows it: "#N/A", "TRUE", "\"text\"", digits; "?" for none.
std::string Shown(const std::optional<Value>& value)
{
    if (!value)
        return "?";
    if (const auto* text = std::get_if<std::string>(&*value))
        return "\"" + *text + "\"";
    if (const auto* logical = std::get_if<bool>(&*value))
        return *logical ? "TRUE" : "FALSE";
    if (const auto* error = std::get_if<CellError>(&*value)) {
        switch (*error) {
        case CellError::Null:
            return "#NULL!";
        case CellError::DivisionByZero:
            return "#DIV/0!";
        case CellError::Value:
            return "#VALUE!";
        case CellError::Reference:
            return "#REF!";
        case CellError::Name:
            return "#NAME?";
        case CellError::Number:
            return "#NUM!";
        default:
            return *error == CellError::NotAvailable ? "#N/A" : "#other";
        }
    }
    if (const auto* number = std::get_if<double>(&*value)) {
        std::string digits = std::to_string(*number); // six decimals are enough here
        digits.erase(digits.find_last_not_of('0') + 1);
        if (digits.ends_with('.'))
            digits.pop_back();
        return digits == "-0" ? "0" : digits;
    }
    return "empty";
}

/// Column A: 1 to 5; column B: texts; column C: nothing but C3, an error.
void Fill(FakeWorkbook& book)
{
    for (std::int32_t row = 1; row <= 5; ++row)
        book.Set({row, 1}, static_cast<double>(row));
    const char* const texts[] = {"pear", "Apple", "apricot", "fig", "Fig*"};
    for (std::int32_t row = 1; row <= 5; ++row)
        book.Set({row, 2}, std::string(texts[row - 1]));
    book.Set({3, 3}, CellError::NotAvailable);
    book.Set({1, 4}, true);
    book.Set({2, 4}, std::string("7"));
}

struct FormulaCase {
    const char* formula;
    const char* expected;
};
void PrintTo(const FormulaCase& row, std::ostream* out)
{
    *out << row.formula;
}

class FormulaTest : public testing::TestWithParam<FormulaCase> {};

/// As a formula of cell E2 of a day in 2026.
TEST_P(FormulaTest, GivesTheValue)
{
    FakeWorkbook book;
    Fill(book);
    book.SetFormula({2, 5}, GetParam().formula);
    Evaluator evaluator(book, 46349.25);
    const EvaluatedCell cell = evaluator.ValueOf(0, {2, 5});
    EXPECT_EQ(Shown(cell.source == EvaluatedCell::Source::Computed ? std::optional(cell.value)
                                                                   : std::nullopt),
              GetParam().expected);
}

// Operators: ECMA-376 18.17.2.2, and Excel's habits.
INSTANTIATE_TEST_SUITE_P(
    Operators, FormulaTest,
    testing::Values(
        FormulaCase{"1+2*3", "7"}, FormulaCase{"(1+2)*3", "9"}, FormulaCase{"-2^2", "4"},
        FormulaCase{"2^3^2", "64"}, FormulaCase{"50%", "0.5"}, FormulaCase{"2^50%", "1.414214"},
        FormulaCase{"--\"3\"", "3"}, FormulaCase{"\"3\"+\"4\"", "7"}, FormulaCase{"1&2", "\"12\""},
        FormulaCase{"TRUE&\"!\"", "\"TRUE!\""}, FormulaCase{"1/3&\"\"", "\"0.333333333333333\""},
        FormulaCase{"0.1+0.2=0.3", "TRUE"}, FormulaCase{"1-0.9-0.1", "0"},
        FormulaCase{"\"a\"=\"A\"", "TRUE"}, FormulaCase{"\"a\"<\"B\"", "TRUE"},
        FormulaCase{"\"10\">9", "TRUE"}, FormulaCase{"TRUE>\"z\"", "TRUE"},
        FormulaCase{"C1=0", "TRUE"}, FormulaCase{"C1=\"\"", "TRUE"},
        FormulaCase{"C1&\"x\"", "\"x\""}, FormulaCase{"C1", "0"}, FormulaCase{"1/0", "#DIV/0!"},
        FormulaCase{"\"x\"+1", "#VALUE!"}, FormulaCase{"0^0", "#NUM!"}, FormulaCase{"C3+1", "#N/A"},
        FormulaCase{"#REF!+1", "#REF!"}, FormulaCase{"#REF!A1", "#REF!"},
        FormulaCase{"Gone!A1", "#REF!"}, FormulaCase{"nothing", "#NAME?"},
        FormulaCase{"SUM(A1:A3 A2:A5)", "5"}, FormulaCase{"A1:A2 B1:B2", "#NULL!"},
        FormulaCase{"SUM((A1,A3:A4))", "8"}, FormulaCase{"SUM(A1:INDEX(A1:A5,3))", "6"},
        FormulaCase{"1E3", "1000"}, FormulaCase{"\"say \"\"hi\"\"\"", "\"say \"hi\"\""},
        FormulaCase{" 1 + 1 ", "2"}, FormulaCase{"1+", "?"}, FormulaCase{"RAND()", "?"},
        FormulaCase{"[1]Sheet1!A1", "?"}, FormulaCase{"UNKNOWN(1)", "?"},
        FormulaCase{"IF(FALSE,UNKNOWN(1),2)", "2"}));

// A range beside the cell, and tables: ECMA-376 18.17.2.7
INSTANTIATE_TEST_SUITE_P(
    Tables, FormulaTest,
    testing::Values(
        FormulaCase{"A1:A5", "2"}, FormulaCase{"A1:A5*10", "20"}, FormulaCase{"A3:A5", "#VALUE!"},
        FormulaCase{"A1:B3", "#VALUE!"}, FormulaCase{"SUM(A1:A5*10)", "20"},
        FormulaCase{"SUMPRODUCT(A1:A5*10)", "150"}, FormulaCase{"SUM({1,2,3}*2)", "12"},
        FormulaCase{"{1,2;3,4}", "1"}, FormulaCase{"SUM({1,2;3,4}*{10;100})", "730"},
        FormulaCase{"SUM(LEN({\"a\",\"bb\"}))", "3"}, FormulaCase{"SUMPRODUCT(A:A,A:A)", "55"},
        FormulaCase{"SUMPRODUCT((B1:B5=\"fig\")*A1:A5)", "4"},
        FormulaCase{"SUMPRODUCT({1,2}*{1;2;3})", "18"}, FormulaCase{"COUNT({1,2,3}+{1,2})", "2"},
        FormulaCase{"MATCH(3,{1,3,5},0)", "2"}, FormulaCase{"INDEX({1,2;3,4},2,1)", "3"},
        FormulaCase{"ROWS({1;2;3})", "3"}, FormulaCase{"SUM(ROW(1:4))", "10"},
        FormulaCase{"ROW()", "2"}, FormulaCase{"COLUMN(D1)", "4"},
        FormulaCase{"VLOOKUP(2,CHOOSE({1,2},A1:A5,B1:B5),2,0)", "\"Apple\""}));

// Whole columns and rows are as long as the sheet, however little of it is used.
INSTANTIATE_TEST_SUITE_P(WholeColumns, FormulaTest,
                         testing::Values(FormulaCase{"SUMPRODUCT((A:A=1)*(ROW(A:A)>0))", "1"},
                                         FormulaCase{"SUMPRODUCT((A:A>3)*ROW(A:A))", "9"},
                                         FormulaCase{"SUMPRODUCT((A:A>3)*1,ROW(A:A))", "9"},
                                         FormulaCase{"SUMPRODUCT((1:1=1)*COLUMN(1:1))", "1"},
                                         FormulaCase{"SUMPRODUCT((1:1=\"pear\")*COLUMN(1:1))", "2"},
                                         FormulaCase{"SUMPRODUCT((A:A=\"\")*1)", "1048571"},
                                         FormulaCase{"SUMPRODUCT((A:A<>\"\")*{1,10})", "55"},
                                         FormulaCase{"SUMPRODUCT(ISNUMBER(A:A)*1)", "5"},
                                         FormulaCase{"SUMPRODUCT(-ISBLANK(A:A))", "-1048571"},
                                         FormulaCase{"SUMPRODUCT(IF(A:A>3,ROW(A:A),0))", "9"},
                                         FormulaCase{"SUMPRODUCT((A:A=1)*(B1:B5=\"pear\"))",
                                                     "#N/A"},
                                         FormulaCase{"SUMPRODUCT(A:A,A1:A5)", "#VALUE!"},
                                         FormulaCase{"MATCH(0,INDEX(A:A*1,0),0)", "6"}));

/// A sheet whose cell B1 alone is used.
TEST(WholeColumnTest, AUsedRowIsNotRepeated)
{
    FakeWorkbook book({"Sheet1", "Other"});
    book.Set({1, 2}, 1.0);
    book.Set({3, 2}, 1.0, 1);
    Evaluator evaluator(book, 46349.25);
    const auto compute = [&](const char* formula) {
        return Shown(evaluator.Compute(formula, 0, {9, 9}, {9, 9}));
    };
    EXPECT_EQ(compute("SUMPRODUCT((B:B=1)*(ROW(B:B)>0))"), "1");
    EXPECT_EQ(compute("SUMPRODUCT((1:1=1)*(COLUMN(1:1)>0))"), "1");
    EXPECT_EQ(compute("SUMPRODUCT((B:B=1)*(Other!B:B=0))"), "1");
    EXPECT_EQ(compute("SUMPRODUCT(B:B,Other!B:B)"), "0");
    EXPECT_EQ(compute("SUM((B:B=\"\")*1)"), "1048575");
    EXPECT_EQ(compute("COUNT(B:B+1)"), "1048576");
    EXPECT_EQ(compute("MIN(B:B*1)"), "0");
    EXPECT_EQ(compute("AVERAGE(IF(B:B>0,B:B))"), "1");
    EXPECT_EQ(evaluator.ValuesOf("Sheet1!B:B", 0), (std::vector<Value>{1.0}));
}

/// Columns of which one sheet uses ten rows, the other one twenty.
TEST(WholeColumnTest, CriteriaMayBeOnLongerSheets)
{
    FakeWorkbook book({"Sheet1", "Other"});
    for (std::int32_t row = 1; row <= 20; ++row) {
        if (row <= 10)
            book.Set({row, 1}, static_cast<double>(row));
        book.Set({row, 2}, static_cast<double>(row), 1);
    }
    Evaluator evaluator(book, 46349.25);
    const auto compute = [&](const char* formula) {
        return Shown(evaluator.Compute(formula, 0, {9, 9}, {9, 9}));
    };
    EXPECT_EQ(compute("COUNTIFS(A:A,\">3\",Other!B:B,\">5\")"), "5");
    EXPECT_EQ(compute("COUNTIFS(A:A,\"\",Other!B:B,\">5\")"), "10");
    EXPECT_EQ(compute("COUNTIFS(A:A,\"\",Other!B:B,\"\")"), "1048556");
    EXPECT_EQ(compute("COUNTIFS(A1:A10,\">3\",Other!B1:B20,\">5\")"), "#VALUE!");
    EXPECT_EQ(compute("COUNTIFS(A:A,\">3\",Other!B1:B20,\">5\")"), "#VALUE!");
    EXPECT_EQ(compute("SUMIFS(Other!B:B,A:A,\">3\")"), "49");
    EXPECT_EQ(compute("SUMIFS(A:A,Other!B:B,\">3\")"), "49");
    EXPECT_EQ(compute("AVERAGEIFS(Other!B:B,A:A,\"\")"), "15.5");
    EXPECT_EQ(compute("SUMIF(A:A,\"\",Other!B:B)"), "155");
    EXPECT_EQ(compute("SUMIF(A:A,\">3\",Other!B1)"), "49");
}

// Tokens of functions that stand for one value: [MS-XLS] 2.2.2
INSTANTIATE_TEST_SUITE_P(
    OneValue, FormulaTest,
    testing::Values(FormulaCase{"AVERAGE(ABS(IF(FREQUENCY({2,2,4},{2,2,4})-1>0,1)))", "1"},
                    FormulaCase{"AVERAGE(IF(FREQUENCY({2,2,4},{2,2,4})-1>0,1))", "1"},
                    FormulaCase{"AVERAGE(IF(FREQUENCY({2,2,4},{2,2,4})>1,1,0))", "0.25"},
                    FormulaCase{"SUM(IF({1,0},1,0)+{1,2,3})", "9"},
                    FormulaCase{"SUM(IF({1,0},3,4))", "7"},
                    FormulaCase{"COUNT(ABS(FREQUENCY({2,2,4},{2,2,4})))", "4"},
                    FormulaCase{"SUMPRODUCT(IF({1,0},3,4)*1)", "7"},
                    FormulaCase{"VLOOKUP(\"fig\",IF({1,0},B1:B5,A1:A5),2,0)+1", "5"}));

INSTANTIATE_TEST_SUITE_P(
    Logical, FormulaTest,
    testing::Values(FormulaCase{"IF(1>2,\"a\")", "FALSE"}, FormulaCase{"IF(TRUE,,5)", "0"},
                    FormulaCase{"AND(TRUE,1,\"TRUE\")", "TRUE"}, FormulaCase{"AND(TRUE,)", "FALSE"},
                    FormulaCase{"AND(B1:B5)", "#VALUE!"}, FormulaCase{"OR(FALSE,0)", "FALSE"},
                    FormulaCase{"XOR(TRUE,TRUE,TRUE)", "TRUE"}, FormulaCase{"NOT(0)", "TRUE"},
                    FormulaCase{"IFERROR(1/0,\"no\")", "\"no\""}, FormulaCase{"IFNA(NA(),3)", "3"},
                    FormulaCase{"IFNA(1/0,3)", "#DIV/0!"},
                    FormulaCase{"CHOOSE(2,\"a\",\"b\")", "\"b\""},
                    FormulaCase{"CHOOSE(3,\"a\",\"b\")", "#VALUE!"},
                    FormulaCase{"IFS(FALSE,1,TRUE,2)", "2"},
                    FormulaCase{"SWITCH(2,1,\"a\",2,\"b\",\"c\")", "\"b\""},
                    FormulaCase{"_xlfn.LET(x,2,y,x+1,x*y)", "6"}));

// The dates are those of ECMA-376 18.17.4 and of ISO 8601.
INSTANTIATE_TEST_SUITE_P(
    Dates, FormulaTest,
    testing::Values(
        FormulaCase{"DATE(1900,1,1)", "1"}, FormulaCase{"DATE(1900,2,29)", "60"},
        FormulaCase{"DATE(1900,3,1)", "61"}, FormulaCase{"DATE(2026,11,23)", "46349"},
        FormulaCase{"DATE(108,1,2)", "39449"}, FormulaCase{"DATE(2026,14,1)", "46419"},
        FormulaCase{"DATE(2026,1,0)", "46022"}, FormulaCase{"DATE(9999,12,32)", "#NUM!"},
        FormulaCase{"DAY(60)", "29"}, FormulaCase{"MONTH(60)", "2"}, FormulaCase{"DAY(0)", "0"},
        FormulaCase{"YEAR(0)", "1900"}, FormulaCase{"YEAR(-1)", "#NUM!"},
        FormulaCase{"TODAY()", "46349"}, FormulaCase{"NOW()", "46349.25"},
        FormulaCase{"WEEKDAY(46349)", "2"}, FormulaCase{"WEEKDAY(46349,2)", "1"},
        FormulaCase{"WEEKDAY(46349,3)", "0"}, FormulaCase{"WEEKDAY(46349,11)", "1"},
        FormulaCase{"WEEKDAY(46349,17)", "2"}, FormulaCase{"WEEKDAY(1)", "1"},
        FormulaCase{"WEEKNUM(DATE(2027,1,3))", "2"}, FormulaCase{"WEEKNUM(DATE(2027,1,3),2)", "1"},
        FormulaCase{"WEEKNUM(DATE(2027,1,3),21)", "53"},
        FormulaCase{"ISOWEEKNUM(DATE(2027,1,4))", "1"},
        FormulaCase{"ISOWEEKNUM(DATE(2026,12,31))", "53"},
        FormulaCase{"EDATE(DATE(2027,1,31),1)", "46446"},
        FormulaCase{"EOMONTH(DATE(2028,1,15),1)", "46812"},
        FormulaCase{"NETWORKDAYS(DATE(2027,1,1),DATE(2027,1,31))", "21"},
        FormulaCase{"NETWORKDAYS(DATE(2027,1,1),DATE(2027,1,31),{46388,46389})", "20"},
        FormulaCase{"NETWORKDAYS.INTL(DATE(2027,1,1),DATE(2027,1,31),11)", "26"},
        FormulaCase{"WORKDAY(DATE(2027,1,1),5)", "46395"},
        FormulaCase{"DATEDIF(DATE(2001,6,1),DATE(2002,8,15),\"D\")", "440"},
        FormulaCase{"DATEDIF(DATE(2001,6,1),DATE(2002,8,15),\"YD\")", "75"},
        FormulaCase{"DATEDIF(DATE(2001,6,1),DATE(2003,1,1),\"Y\")", "1"},
        FormulaCase{"DATEDIF(DATE(2001,1,31),DATE(2001,3,1),\"M\")", "1"},
        FormulaCase{"YEARFRAC(DATE(2012,1,1),DATE(2012,7,30))", "0.580556"},
        FormulaCase{"YEARFRAC(DATE(2012,1,1),DATE(2012,7,30),1)", "0.576503"},
        FormulaCase{"YEARFRAC(DATE(2012,1,1),DATE(2012,7,30),3)", "0.578082"},
        FormulaCase{"DAYS360(DATE(2011,1,30),DATE(2011,2,1))", "1"},
        FormulaCase{"TIME(12,0,0)", "0.5"}, FormulaCase{"HOUR(0.75)", "18"},
        FormulaCase{"MINUTE(0.5006944)", "1"}, FormulaCase{"SECOND(0.9999999)", "0"},
        FormulaCase{"DATEVALUE(\"2027-01-31\")", "46418"},
        FormulaCase{"DATEVALUE(\"1/31/2027\")", "46418"},
        FormulaCase{"DATEVALUE(\"31-Jan-27\")", "46418"},
        FormulaCase{"DATEVALUE(\"January 31, 2027\")", "46418"},
        FormulaCase{"\"6:00 PM\"+0", "0.75"}, FormulaCase{"TIMEVALUE(\"1/1/2027 6:00\")", "0.25"}));

INSTANTIATE_TEST_SUITE_P(
    Texts, FormulaTest,
    testing::Values(
        FormulaCase{"LEFT(\"calendar\",3)", "\"cal\""}, FormulaCase{"RIGHT(\"calendar\")", "\"r\""},
        FormulaCase{"MID(\"calendar\",4,3)", "\"end\""}, FormulaCase{"MID(\"abc\",9,1)", "\"\""},
        FormulaCase{"LEN(\"\xC3\xA9t\xC3\xA9\")", "3"},
        FormulaCase{"LEN(\"\xF0\x9F\x93\x85\")", "2"}, FormulaCase{"FIND(\"n\",\"calendar\")", "5"},
        FormulaCase{"FIND(\"N\",\"calendar\")", "#VALUE!"},
        FormulaCase{"SEARCH(\"N?A\",\"calendar\")", "5"},
        FormulaCase{"SUBSTITUTE(\"a-b-c\",\"-\",\"+\",2)", "\"a-b+c\""},
        FormulaCase{"REPLACE(\"abcdef\",2,3,\"*\")", "\"a*ef\""},
        FormulaCase{"REPT(\"ab\",3)", "\"ababab\""}, FormulaCase{"REPT(\"a\",1E9)", "#VALUE!"},
        FormulaCase{"UPPER(\"stra\xC3\x9F"
                    "e \xC3\xA9\")",
                    "\"STRA\xC3\x9F"
                    "E \xC3\x89\""},
        FormulaCase{"PROPER(\"two-day o'neil\")", "\"Two-Day O'Neil\""},
        FormulaCase{"TRIM(\"  a   b \")", "\"a b\""}, FormulaCase{"CHAR(128)", "\"\xE2\x82\xAC\""},
        FormulaCase{"CODE(\"\xE2\x82\xAC\")", "128"},
        FormulaCase{"UNICHAR(9731)", "\"\xE2\x98\x83\""},
        FormulaCase{"EXACT(\"a\",\"A\")", "FALSE"},
        FormulaCase{"CONCATENATE(1,\"a\",TRUE)", "\"1aTRUE\""},
        FormulaCase{"TEXTJOIN(\"-\",TRUE,A1:A3,\"\",\"x\")", "\"1-2-3-x\""},
        FormulaCase{"VALUE(\"$1,234.50\")", "1234.5"}, FormulaCase{"VALUE(\"12%\")", "0.12"},
        FormulaCase{"VALUE(\"1,23\")", "#VALUE!"}, FormulaCase{"FIXED(1234.567,1)", "\"1,234.6\""},
        FormulaCase{"TEXT(46349,\"yyyy-mm-dd\")", "\"2026-11-23\""},
        FormulaCase{"TEXT(-1,\"yyyy\")", "#VALUE!"},
        FormulaCase{"TEXT(0.285,\"0.0%\")", "\"28.5%\""}, FormulaCase{"T(5)", "\"\""}));

INSTANTIATE_TEST_SUITE_P(
    Numbers, FormulaTest,
    testing::Values(
        FormulaCase{"ROUND(2.675,2)", "2.68"}, FormulaCase{"ROUND(-2.5,0)", "-3"},
        FormulaCase{"ROUND(1234,-2)", "1200"}, FormulaCase{"ROUNDUP(3.14159,3)", "3.142"},
        FormulaCase{"ROUNDDOWN(-31.7,0)", "-31"}, FormulaCase{"TRUNC(8.9)", "8"},
        FormulaCase{"INT(-8.9)", "-9"}, FormulaCase{"MOD(-3,2)", "1"},
        FormulaCase{"MOD(3,0)", "#DIV/0!"}, FormulaCase{"CEILING(2.5,1)", "3"},
        FormulaCase{"FLOOR(-2.5,-2)", "-2"}, FormulaCase{"MROUND(10,3)", "9"},
        FormulaCase{"EVEN(-1)", "-2"}, FormulaCase{"ODD(0)", "1"}, FormulaCase{"FACT(5)", "120"},
        FormulaCase{"COMBIN(8,2)", "28"}, FormulaCase{"GCD(24,36)", "12"},
        FormulaCase{"LCM(5,2)", "10"}, FormulaCase{"LOG(8,2)", "3"},
        FormulaCase{"SQRT(-1)", "#NUM!"}, FormulaCase{"ROMAN(499,0)", "\"CDXCIX\""},
        FormulaCase{"ROMAN(499,1)", "\"LDVLIV\""}, FormulaCase{"ROMAN(499,4)", "\"ID\""},
        FormulaCase{"ARABIC(\"LVII\")", "57"}, FormulaCase{"DEC2HEX(-54)", "\"FFFFFFFFCA\""},
        FormulaCase{"HEX2DEC(\"FFFFFFFF5B\")", "-165"}, FormulaCase{"DEC2BIN(9,4)", "\"1001\""},
        FormulaCase{"BASE(7,2)", "\"111\""},
        FormulaCase{"SUMX2MY2({2,3,9,1,8,7,5},{6,5,11,7,5,4,4})", "-55"},
        FormulaCase{"SUMX2PY2({2,3,9,1,8,7,5},{6,5,11,7,5,4,4})", "521"},
        FormulaCase{"SUMXMY2({2,3,9,1,8,7,5},{6,5,11,7,5,4,4})", "79"},
        FormulaCase{"SUM(MMULT({1,3;7,2},{2,0;0,2}))", "26"},
        FormulaCase{"MDETERM({1,3,8,5;1,3,6,1;1,1,1,0;7,3,10,2})", "88"}));

INSTANTIATE_TEST_SUITE_P(
    Statistics, FormulaTest,
    testing::Values(
        FormulaCase{"SUM(A1:A5,\"3\",TRUE)", "19"}, FormulaCase{"SUM(D1:D2)", "0"},
        FormulaCase{"COUNT(A1:D5)", "5"}, FormulaCase{"COUNTA(A1:D5)", "13"},
        FormulaCase{"COUNTBLANK(A1:D5)", "7"}, FormulaCase{"SUM(C1:C5)", "#N/A"},
        FormulaCase{"AVERAGE(B1:B5)", "#DIV/0!"}, FormulaCase{"MAX(B1:B5)", "0"},
        FormulaCase{"MAXA(D1:D2)", "1"}, FormulaCase{"MEDIAN(A1:A4)", "2.5"},
        FormulaCase{"MODE(5.6,4,4,3,2,4)", "4"}, FormulaCase{"MODE(1,2,\"1\")", "#N/A"},
        FormulaCase{"STDEV(A1:A5)", "1.581139"}, FormulaCase{"VARP(A1:A5)", "2"},
        FormulaCase{"LARGE(A1:A5,2)", "4"}, FormulaCase{"SMALL(A1:A5,6)", "#NUM!"},
        FormulaCase{"RANK(3.5,{7;3.5;3.5;1;2},1)", "3"},
        FormulaCase{"PERCENTILE(A1:A4,0.3)", "1.9"},
        FormulaCase{"QUARTILE({1,2,4,7,8,9,10,12},1)", "3.5"},
        FormulaCase{"COUNTIF(A1:A5,\">=3\")", "3"}, FormulaCase{"COUNTIF(B1:B5,\"ap*\")", "2"},
        FormulaCase{"COUNTIF(B1:B5,\"fig~*\")", "1"}, FormulaCase{"COUNTIF(B1:B5,\"FIG\")", "1"},
        FormulaCase{"COUNTIF(C1:C5,\"\")", "4"}, FormulaCase{"COUNTIF(D1:D5,7)", "1"},
        FormulaCase{"COUNTIF(A1:A5,\"<>3\")", "4"}, FormulaCase{"SUMIF(B1:B5,\"*p*\",A1)", "6"},
        FormulaCase{"SUMIFS(A1:A5,A1:A5,\">1\",B1:B5,\"a*\")", "5"},
        FormulaCase{"AVERAGEIF(A1:A5,\">3\")", "4.5"},
        FormulaCase{"MAXIFS(A1:A5,B1:B5,\"a*\")", "3"}, FormulaCase{"SUBTOTAL(9,A1:A5)", "15"},
        FormulaCase{"SUBTOTAL(3,C1:C5)", "1"}, FormulaCase{"SUBTOTAL(2,C1:C5)", "0"},
        FormulaCase{"SUBTOTAL(9,C1:C5)", "#N/A"}, FormulaCase{"AGGREGATE(3,4,C1:C5)", "1"},
        FormulaCase{"AGGREGATE(3,6,C1:C5)", "0"}, FormulaCase{"AGGREGATE(9,6,C1:C5,A1:A2)", "3"},
        FormulaCase{"SUM(FREQUENCY(A1:A5,{2,4}))", "5"}));

INSTANTIATE_TEST_SUITE_P(
    Lookups, FormulaTest,
    testing::Values(
        FormulaCase{"VLOOKUP(3,A1:B5,2,FALSE)", "\"apricot\""},
        FormulaCase{"VLOOKUP(3.5,A1:B5,2)", "\"apricot\""},
        FormulaCase{"VLOOKUP(0,A1:B5,2)", "#N/A"}, FormulaCase{"VLOOKUP(3,A1:B5,3)", "#REF!"},
        FormulaCase{"MATCH(\"F*\",B1:B5,0)", "4"}, FormulaCase{"MATCH(4.5,A1:A5)", "4"},
        FormulaCase{"MATCH(2,{5,4,2,1},-1)", "3"},
        FormulaCase{"LOOKUP(2,1/{1,0,1,0},{10,20,30,40})", "30"},
        FormulaCase{"HLOOKUP(\"b\",{\"a\",\"b\";1,2},2,0)", "2"},
        FormulaCase{"INDEX(A1:B5,2,2)", "\"Apple\""}, FormulaCase{"SUM(INDEX(A1:B5,0,1))", "15"},
        FormulaCase{"INDEX(A1:A5,9)", "#REF!"}, FormulaCase{"SUM(OFFSET(A1,1,0,2))", "5"},
        FormulaCase{"OFFSET(A1,-1,0)", "#REF!"}, FormulaCase{"INDIRECT(\"A\"&3)", "3"},
        FormulaCase{"INDIRECT(\"R[-1]C1\",FALSE)", "1"}, FormulaCase{"INDIRECT(\"x y\")", "#REF!"},
        FormulaCase{"ADDRESS(2,3)", "\"$C$2\""}, FormulaCase{"ADDRESS(2,3,2,FALSE)", "\"R2C[3]\""},
        FormulaCase{"ADDRESS(2,3,1,TRUE,\"My Sheet\")", "\"'My Sheet'!$C$2\""},
        FormulaCase{"XLOOKUP(9,A1:A5,B1:B5,\"none\")", "\"none\""},
        FormulaCase{"XMATCH(3.5,A1:A5,1)", "4"},
        FormulaCase{"SUM(_xlfn._xlws.FILTER(A1:A5,A1:A5>3))", "9"},
        FormulaCase{"SUM(TRANSPOSE(A1:A5))", "15"}, FormulaCase{"SUM(_xlfn.SEQUENCE(3,2))", "21"},
        FormulaCase{"ISREF(A1)", "TRUE"}, FormulaCase{"ISBLANK(C1)", "TRUE"},
        FormulaCase{"ERROR.TYPE(NA())", "7"}, FormulaCase{"TYPE({1,2})", "64"},
        FormulaCase{"N(\"7\")", "0"}, FormulaCase{"CELL(\"address\",B3)", "\"$B$3\""}));

// Values of the documents of these functions.
INSTANTIATE_TEST_SUITE_P(
    Finances, FormulaTest,
    testing::Values(FormulaCase{"ROUND(PMT(0.08/12,10,10000),2)", "-1037.03"},
                    FormulaCase{"ROUND(FV(0.06/12,10,-200,-500,1),2)", "2581.4"},
                    FormulaCase{"ROUND(PV(0.08/12,12*20,500,,0),2)", "-59777.15"},
                    FormulaCase{"ROUND(NPER(0.12/12,-100,-1000,10000,1),4)", "59.6739"},
                    FormulaCase{"ROUND(RATE(48,-200,8000),4)", "0.0077"},
                    FormulaCase{"ROUND(NPV(0.1,-10000,3000,4200,6800),2)", "1188.44"},
                    FormulaCase{"ROUND(IRR({-70000,12000,15000,18000,21000,26000}),3)", "0.087"},
                    FormulaCase{"ROUND(IPMT(0.1,1,3,8000),2)", "-800"}));

} // namespace
} // namespace orrery::look
