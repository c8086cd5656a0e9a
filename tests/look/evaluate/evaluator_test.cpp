#include "look/evaluate/evaluator.h"

#include "look/evaluate/fake_workbook.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace orrery::look {
namespace {

using Source = EvaluatedCell::Source;
using book::CellError;

TEST(EvaluatorTest, ConstantsAreThemselves)
{
    FakeWorkbook book;
    book.Set({1, 1}, std::string("x"));
    Evaluator evaluator(book, 0);
    EXPECT_EQ(evaluator.ValueOf(0, {1, 1}).value, Value("x"));
    EXPECT_EQ(evaluator.ValueOf(0, {1, 1}).source, Source::Constant);
    EXPECT_EQ(evaluator.ValueOf(0, {2, 1}).value, Value());
}

TEST(EvaluatorTest, ReadsOtherSheetsAndThreeDimensions)
{
    FakeWorkbook book({"Jan", "Feb 2", "Mar"});
    for (std::size_t sheet = 0; sheet < 3; ++sheet)
        book.Set({1, 1}, 10.0 * static_cast<double>(sheet + 1), sheet);
    book.SetFormula({2, 1}, "'feb 2'!A1+Mar!$A$1");
    book.SetFormula({3, 1}, "SUM(Jan:Mar!A1)");
    book.SetFormula({4, 1}, "Jan:Mar!A1");
    Evaluator evaluator(book, 0);
    EXPECT_EQ(evaluator.ValueOf(0, {2, 1}).value, Value(50.0));
    EXPECT_EQ(evaluator.ValueOf(0, {3, 1}).value, Value(60.0));
    EXPECT_EQ(evaluator.ValueOf(0, {4, 1}).value, Value(CellError::Value));
}

TEST(EvaluatorTest, OwnNamesComeFirstAndRelativeOnesMove)
{
    FakeWorkbook book({"One", "Two"});
    book.Set({1, 1}, 7.0);
    book.Set({1, 2}, 8.0);
    book.Name("Rate", "2");
    book.Name("Rate", "3", 1);
    book.Name("Left", "One!A1"); // written for A1
    book.Name("Days", "{1,2,3}");
    book.SetFormula({2, 2}, "Rate*10");
    book.SetFormula({2, 2}, "rate*10", {}, 1);
    book.SetFormula({1, 3}, "SUM(Days*2)");
    book.SetFormula({5, 1}, "One!Left");
    Evaluator evaluator(book, 0);
    EXPECT_EQ(evaluator.ValueOf(0, {2, 2}).value, Value(20.0));
    EXPECT_EQ(evaluator.ValueOf(1, {2, 2}).value, Value(30.0));
    EXPECT_EQ(evaluator.ValueOf(0, {1, 3}).value, Value(12.0));
    EXPECT_EQ(evaluator.Compute("Left", 0, {1, 2}, {1, 2}), Value(8.0));
    EXPECT_EQ(evaluator.Compute("A1", 0, {1, 2}, {1, 1}), Value(8.0));
}

TEST(EvaluatorTest, NamesThatLeadToThemselvesAreNotComputed)
{
    FakeWorkbook book;
    book.Name("A_", "B_+1");
    book.Name("B_", "A_+1");
    Evaluator evaluator(book, 0);
    EXPECT_EQ(evaluator.Compute("A_", 0, {1, 1}, {1, 1}), std::nullopt);
}

TEST(EvaluatorTest, FindsTablesAndTheirColumns)
{
    FakeWorkbook book;
    book::Table table;
    table.name = "Plan";
    table.range = {{1, 1}, {4, 2}};
    table.totalRows = 1;
    table.columns = {"Day", "Hours [h]"};
    book.Look().tables.push_back(table);
    for (std::int32_t row = 2; row <= 3; ++row)
        book.Set({row, 2}, static_cast<double>(row));
    book.SetFormula({4, 2}, "SUBTOTAL(109,Plan[Hours '[h']])");
    book.SetFormula({2, 3}, "Plan[[#This Row],[Hours '[h']]]*2");
    book.SetFormula({5, 3}, "ROWS(Plan[#All])");
    book.SetFormula({6, 3}, "SUM(Plan)");
    book.SetFormula({7, 3}, "Plan[Gone]");
    Evaluator evaluator(book, 0);
    EXPECT_EQ(evaluator.ValueOf(0, {4, 2}).value, Value(5.0));
    EXPECT_EQ(evaluator.ValueOf(0, {2, 3}).value, Value(4.0));
    EXPECT_EQ(evaluator.ValueOf(0, {5, 3}).value, Value(4.0));
    EXPECT_EQ(evaluator.ValueOf(0, {6, 3}).value, Value(5.0));
    EXPECT_EQ(evaluator.ValueOf(0, {7, 3}).value, Value(CellError::Reference));
}

TEST(EvaluatorTest, ArrayFormulasFillTheirCells)
{
    FakeWorkbook book;
    for (std::int32_t row = 1; row <= 3; ++row)
        book.Set({row, 1}, static_cast<double>(row));
    book.SetFormula({1, 2}, "A1:A3*10", {}, 0, book::CellRange{{1, 2}, {4, 2}});
    book.Set({2, 2}, -1.0); // stored results
    book.Set({3, 2}, -1.0);
    book.Set({4, 2}, -1.0);
    book.SetFormula({1, 3}, "SUM(B1:B3)");
    book.SetFormula({1, 4}, "SUM(IF(A1:A3>1,A1:A3))", {}, 0, book::CellRange{{1, 4}, {1, 4}});
    Evaluator evaluator(book, 0);
    EXPECT_EQ(evaluator.ValueOf(0, {2, 2}).value, Value(20.0));
    EXPECT_EQ(evaluator.ValueOf(0, {2, 2}).source, Source::Computed);
    EXPECT_EQ(evaluator.ValueOf(0, {4, 2}).value, Value(CellError::NotAvailable));
    EXPECT_EQ(evaluator.ValueOf(0, {1, 3}).value, Value(60.0));
    EXPECT_EQ(evaluator.ValueOf(0, {1, 4}).value, Value(5.0));
}

TEST(EvaluatorTest, TakesTheStoredResultOfWhatItCannotCompute)
{
    FakeWorkbook book;
    book.SetFormula({1, 1}, "RAND()", 0.5);
    book.SetFormula({2, 1}, "A1*2", 7.0);
    book.SetFormula({3, 1}, "RAND()");
    Evaluator evaluator(book, 0);
    EXPECT_EQ(evaluator.ValueOf(0, {1, 1}).value, Value(0.5));
    EXPECT_EQ(evaluator.ValueOf(0, {1, 1}).source, Source::Stored);
    EXPECT_EQ(evaluator.ValueOf(0, {2, 1}).value, Value(1.0));
    EXPECT_EQ(evaluator.ValueOf(0, {3, 1}).source, Source::NotComputed);
}

TEST(EvaluatorTest, NoStoredResultWhereAWrittenCellFeedsIt)
{
    FakeWorkbook book({"One", "Two"});
    book.Set({1, 1}, 1.0);
    book.SetFormula({1, 2}, "A1+1", 2.0);
    book.SetFormula({1, 3}, "UNKNOWN(B1)", 3.0);             // through B1
    book.SetFormula({1, 4}, "UNKNOWN(Z9)", 4.0);             // not fed
    book.SetFormula({1, 5}, "UNKNOWN(Feed)", 5.0);           // through a name
    book.SetFormula({1, 6}, "RAND()+INDIRECT(\"Z9\")", 6.0); // cannot be told
    book.SetFormula({1, 1}, "UNKNOWN(One!A:A)", 7.0, 1);
    book.Name("Feed", "One!$C$1");
    Evaluator evaluator(book, 0);
    EXPECT_EQ(evaluator.ValueOf(0, {1, 3}).source, Source::Stored);
    evaluator.MarkWritten(0, {1, 1});
    EXPECT_EQ(evaluator.ValueOf(0, {1, 2}).source, Source::Computed);
    EXPECT_EQ(evaluator.ValueOf(0, {1, 3}).source, Source::NotComputed);
    EXPECT_EQ(evaluator.ValueOf(0, {1, 4}).source, Source::Stored);
    EXPECT_EQ(evaluator.ValueOf(0, {1, 5}).source, Source::NotComputed);
    EXPECT_EQ(evaluator.ValueOf(0, {1, 6}).source, Source::NotComputed);
    EXPECT_EQ(evaluator.ValueOf(1, {1, 1}).source, Source::NotComputed);
}

TEST(EvaluatorTest, CellsThatReadThemselvesAreNotComputed)
{
    FakeWorkbook book;
    book.SetFormula({1, 1}, "B1+1", 5.0);
    book.SetFormula({1, 2}, "A1+1", 6.0);
    book.SetFormula({1, 3}, "SUM(A1:C1)");
    book.SetFormula({1, 4}, "IF(TRUE,1,D1)");
    Evaluator evaluator(book, 0);
    EXPECT_EQ(evaluator.ValueOf(0, {1, 1}).source, Source::Stored);
    EXPECT_EQ(evaluator.ValueOf(0, {1, 2}).source, Source::Stored);
    EXPECT_EQ(evaluator.ValueOf(0, {1, 3}).source, Source::NotComputed);
    EXPECT_EQ(evaluator.ValueOf(0, {1, 4}).value, Value(1.0));
}

TEST(EvaluatorTest, AWideCircleEnds)
{
    FakeWorkbook book;
    constexpr std::int32_t kCells = 1001;
    for (std::int32_t row = 1; row <= kCells; ++row)
        book.SetFormula({row, 1}, "A" + std::to_string(row % kCells + 1) + "+1");
    Evaluator evaluator(book, 0);
    for (std::int32_t row = 1; row <= kCells; row += 250)
        EXPECT_EQ(evaluator.ValueOf(0, {row, 1}).source, Source::NotComputed);
}

TEST(EvaluatorTest, BothDateSystems)
{
    FakeWorkbook book({"Sheet1"}, book::DateSystem::From1904);
    book.SetFormula({1, 1}, "DATE(2026,11,23)");
    book.SetFormula({2, 1}, "DATE(1904,1,1)");
    book.SetFormula({3, 1}, "WEEKDAY(44887,2)");
    book.SetFormula({4, 1}, "DATE(1904,2,29)-DATE(1904,2,28)");
    book.SetFormula({5, 1}, "TEXT(0,\"yyyy-mm-dd\")");
    Evaluator evaluator(book, 0);
    EXPECT_EQ(evaluator.ValueOf(0, {1, 1}).value, Value(44887.0));
    EXPECT_EQ(evaluator.ValueOf(0, {2, 1}).value, Value(0.0));
    EXPECT_EQ(evaluator.ValueOf(0, {3, 1}).value, Value(1.0));
    EXPECT_EQ(evaluator.ValueOf(0, {4, 1}).value, Value(1.0));
    EXPECT_EQ(evaluator.ValueOf(0, {5, 1}).value, Value("1904-01-01"));
}

TEST(EvaluatorTest, ALongChainOfCellsIsComputed)
{
    FakeWorkbook book;
    constexpr std::int32_t kCells = 20'000;
    book.Set({1, 1}, 1.0);
    for (std::int32_t row = 2; row <= kCells; ++row)
        book.SetFormula({row, 1}, "A" + std::to_string(row - 1) + "+1");
    Evaluator evaluator(book, 0);
    EXPECT_EQ(evaluator.ValueOf(0, {kCells, 1}).value, Value(static_cast<double>(kCells)));
}

TEST(EvaluatorTest, ManyFormulasOverOneRangeReadItOnce)
{
    FakeWorkbook book;
    constexpr std::int32_t kCells = 20'000;
    for (std::int32_t row = 1; row <= kCells; ++row) {
        const std::string own = "A" + std::to_string(row);
        book.Set({row, 1}, static_cast<double>(row));
        book.SetFormula({row, 2}, own + "/SUM($A$1:$A$20000)");
        book.SetFormula({row, 3}, "MATCH(" + own + ",$A$1:$A$20000,0)");
    }
    EvaluationLimits limits;
    limits.steps = 60 * kCells;
    Evaluator evaluator(book, 0, limits);
    for (std::int32_t row = 1; row <= kCells; ++row) {
        ASSERT_EQ(evaluator.ValueOf(0, {row, 2}).source, Source::Computed);
        ASSERT_EQ(evaluator.ValueOf(0, {row, 3}).value, Value(static_cast<double>(row)));
    }
}

// Formulas that no person writes end soon, and as ones that cannot be computed.
TEST(EvaluatorTest, HostileFormulasEnd)
{
    const auto repeated = [](const std::string& text, int count) {
        std::string all;
        for (int at = 0; at < count; ++at)
            all += text;
        return all;
    };
    FakeWorkbook book;
    book.Set({1, 1}, 1.0);
    Evaluator evaluator(book, 0);
    const auto compute = [&](const std::string& formula) {
        return evaluator.Compute(formula, 0, {1, 2}, {1, 2});
    };
    EXPECT_EQ(compute(repeated("(", 10'000) + "1" + repeated(")", 10'000)), std::nullopt);
    EXPECT_EQ(compute(repeated("ABS(", 6'000) + "1" + repeated(")", 6'000)), std::nullopt);
    EXPECT_EQ(compute(repeated("IF(", 10'000)), std::nullopt);
    EXPECT_EQ(compute(repeated("{", 10'000)), std::nullopt);
    EXPECT_EQ(compute(repeated("-", 10'000) + "1"), Value(1.0));
    EXPECT_EQ(compute("1" + repeated("%", 10'000)), std::nullopt);
    EXPECT_EQ(compute("1" + repeated("+A1", 3'000)), Value(3001.0));
    EXPECT_EQ(compute("A1" + repeated(":A1", 3'000)), Value(1.0));
    EXPECT_EQ(compute("SUM(ROW(1:1048576)*COLUMN(A:XFD))"), std::nullopt);
    EXPECT_EQ(compute("SUM(A1:XFD1048576+1)"), Value(17179869185.0)); // one more than cells
    EXPECT_EQ(compute("MAX(A1:XFD1048576+1)"), std::nullopt);
    EXPECT_EQ(compute("SUM(A1:B1048575+1)"), std::nullopt);
    EXPECT_EQ(compute("SUM(_xlfn.SEQUENCE(1E9))"), Value(CellError::Value));
    EXPECT_EQ(compute("LEN(REPT(REPT(\"a\",32767),32767))"), Value(CellError::Value));
    EXPECT_EQ(compute("OFFSET(A1,1E300,0)"), Value(CellError::Reference));
    EXPECT_EQ(compute("WORKDAY(1,1E300)"), Value(CellError::Number));
    EXPECT_EQ(compute("COMBIN(1E300,1E299)"), Value(CellError::Number));
    EXPECT_EQ(compute(std::string(100'000, '1')), std::nullopt);
    EXPECT_EQ(compute("SEARCH(\"a*\"&REPT(\"a\",200)&\"b\",REPT(\"a\",32767))"),
              Value(CellError::Value));
}

TEST(EvaluatorTest, TextsThatAreKeptCountAsSteps)
{
    FakeWorkbook book;
    for (std::int32_t row = 1; row <= 20; ++row)
        book.SetFormula({row, 1}, "REPT(\"x\",30000)");
    EvaluationLimits limits;
    limits.steps = 100'000;
    Evaluator evaluator(book, 0, limits);
    for (std::int32_t row = 1; row <= 20; ++row)
        evaluator.ValueOf(0, {row, 1});
    EXPECT_TRUE(evaluator.HasReachedLimit());
}

TEST(EvaluatorTest, LookingThroughALineCountsAsSteps)
{
    for (const char* const formula :
         {"MATCH(0,A1:A1000,-1)", "LOOKUP(0,A1:A1000)", "_xlfn.XMATCH(0,A1:A1000,1)",
          "SUMXMY2(A1:A1000,A1:A1000)", "ROWS(TRANSPOSE(A1:A1000))"}) {
        FakeWorkbook book;
        for (std::int32_t row = 1; row <= 1000; ++row)
            book.Set({row, 1}, std::string("x"));
        for (std::int32_t row = 1; row <= 100; ++row)
            book.SetFormula({row, 2}, formula);
        EvaluationLimits limits;
        limits.steps = 50'000;
        Evaluator evaluator(book, 0, limits);
        for (std::int32_t row = 1; row <= 100; ++row)
            evaluator.ValueOf(0, {row, 2});
        EXPECT_TRUE(evaluator.HasReachedLimit()) << formula;
    }
}

TEST(EvaluatorTest, ManyFormulasAreForgottenWhileNamesLeadToNames)
{
    FakeWorkbook book;
    for (int at = 0; at < 20; ++at)
        book.Name("name_" + std::to_string(at), "name_" + std::to_string(at + 1) + "+$A$1");
    book.SetFormula({1, 2}, "RAND()+name_0", 5.0);
    Evaluator evaluator(book, 0);
    evaluator.MarkWritten(0, {9, 9});
    for (int at = 0; at < 4'090; ++at)
        evaluator.Compute("1+" + std::to_string(at), 0, {1, 1}, {1, 1});
    EXPECT_EQ(evaluator.ValueOf(0, {1, 2}).source, Source::Stored);
}

TEST(EvaluatorTest, TheLimitOfStepsEndsAFormula)
{
    FakeWorkbook book;
    for (std::int32_t row = 1; row <= 100; ++row)
        book.Set({row, 1}, 1.0);
    book.SetFormula({1, 2}, "SUM(A1:A100)", 5.0);
    book.SetFormula({2, 2}, "SUM(A1:A10)", 5.0);
    EvaluationLimits limits;
    limits.stepsOfFormula = 50;
    Evaluator evaluator(book, 0, limits);
    EXPECT_EQ(evaluator.ValueOf(0, {1, 2}).source, Source::Stored);
    EXPECT_EQ(evaluator.ValueOf(0, {2, 2}).value, Value(10.0));
}

TEST(EvaluatorTest, TellsThatTheStepsOfAllFormulasHaveRunOut)
{
    FakeWorkbook book;
    for (std::int32_t row = 1; row <= 100; ++row)
        book.Set({row, 1}, 1.0);
    EvaluationLimits limits;
    limits.steps = 150;
    Evaluator evaluator(book, 0, limits);
    EXPECT_EQ(evaluator.Compute("SUM(A1:A100)", 0, {1, 2}, {1, 2}), Value(100.0));
    EXPECT_FALSE(evaluator.HasReachedLimit());
    EXPECT_EQ(evaluator.Compute("SUM(A2:A100)", 0, {1, 2}, {1, 2}), std::nullopt);
    EXPECT_TRUE(evaluator.HasReachedLimit());
}

TEST(EvaluatorTest, ANameThatIsUsedTwiceInEachNameCountsAsManySteps)
{
    FakeWorkbook book;
    for (int at = 0; at < 7; ++at) {
        const std::string next = "name_" + std::to_string(at + 1);
        book.Name("name_" + std::to_string(at), next + "+" + next);
    }
    book.Name("name_7", "1");
    EXPECT_EQ(Evaluator(book, 0).Compute("NAME_0", 0, {1, 1}, {1, 1}), Value(128.0));
    EvaluationLimits limits;
    limits.stepsOfFormula = 1000;
    EXPECT_EQ(Evaluator(book, 0, limits).Compute("name_0", 0, {1, 1}, {1, 1}), std::nullopt);
}

TEST(EvaluatorTest, ConditionsWorkOnTables)
{
    FakeWorkbook book;
    for (std::int32_t row = 1; row <= 3; ++row)
        book.Set({row, 1}, static_cast<double>(row));
    Evaluator evaluator(book, 0);
    EXPECT_EQ(evaluator.Compute("OR(A$1:A$3=3)", 0, {9, 2}, {9, 2}), Value(true));
    EXPECT_EQ(evaluator.Compute("SUM(A$1:A$3*2)", 0, {9, 2}, {9, 2}), Value(12.0));
}

} // namespace
} // namespace orrery::look
