#include "engines/builtin/xlsx/formula/formula.h"

#include <gtest/gtest.h>

#include <string>

namespace orrery::xlsx {
namespace {

struct MoveCase {
    const char* name;
    std::string_view formula;
    int rows;
    int columns;
    std::string_view expected;
};
class MoveFormulaTest : public testing::TestWithParam<MoveCase> {};
TEST_P(MoveFormulaTest, MovesRelativeParts)
{
    EXPECT_EQ(MoveFormula(GetParam().formula, GetParam().rows, GetParam().columns),
              GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(
    References, MoveFormulaTest,
    testing::Values(
        MoveCase{"Relative", "A1+B2", 1, 2, "C2+D3"}, MoveCase{"Absolute", "$A$1", 5, 5, "$A$1"},
        MoveCase{"MixedRow", "A$1", 5, 1, "B$1"}, MoveCase{"MixedColumn", "$A1", 5, 1, "$A6"},
        MoveCase{"Range", "SUM(A1:B$2)", 1, 1, "SUM(B2:C$2)"}, MoveCase{"Up", "B3", -2, -1, "A1"},
        MoveCase{"LettersGrow", "Z1+ZZ1", 0, 1, "AA1+AAA1"},
        MoveCase{"LettersShrink", "AA1+AAA1", 0, -1, "Z1+ZZ1"},
        MoveCase{"Columns", "SUM(A:$C)", 9, 2, "SUM(C:$C)"},
        MoveCase{"Rows", "SUM(1:$3)", 2, 9, "SUM(3:$3)"},
        MoveCase{"OfSheet", "Desk!A1+'It''s'!B2", 1, 0, "Desk!A2+'It''s'!B3"},
        MoveCase{"OfOtherBook", "[1]Desk!A1", 1, 1, "[1]Desk!B2"},
        MoveCase{"RangeOfSheets", "Jan:Dec!A1", 1, 0, "Jan:Dec!A2"},
        MoveCase{"Spilled", "A1#+@B1", 1, 0, "A2#+@B2"}),
    [](const auto& row) { return std::string(row.param.name); });
INSTANTIATE_TEST_SUITE_P(AroundTheSheet, MoveFormulaTest,
                         testing::Values(MoveCase{"BelowLastRow", "A1048576", 1, 0, "A1"},
                                         MoveCase{"AboveFirstRow", "A1", -1, 0, "A1048576"},
                                         MoveCase{"AfterLastColumn", "XFD1", 0, 1, "A1"},
                                         MoveCase{"BeforeFirstColumn", "A1", 0, -1, "XFD1"},
                                         MoveCase{"WholeColumns", "XFD:XFD", 0, 2, "B:B"},
                                         MoveCase{"WholeRows", "1048576:1048576", 1, 0, "1:1"},
                                         MoveCase{"WholeTurn", "C5", 1048576, 16384, "C5"},
                                         MoveCase{"ManyTurns", "A1", 2147483647, -2147483647 - 1,
                                                  "A1048576"}),
                         [](const auto& row) { return std::string(row.param.name); });
INSTANTIATE_TEST_SUITE_P(
    Untouched, MoveFormulaTest,
    testing::Values(MoveCase{"Text", R"("A1"&A1)", 1, 0, R"("A1"&A2)"},
                    MoveCase{"Function", "LOG10(A1)+DEC2BIN(1)", 1, 1, "LOG10(B2)+DEC2BIN(1)"},
                    MoveCase{"Structured", "T[[A1]:[B1]]", 1, 1, "T[[A1]:[B1]]"},
                    MoveCase{"TableLikeCell", "AB1[x]", 1, 1, "AB1[x]"},
                    MoveCase{"SheetLikeCell", "'A1'!B2+A1!B2", 1, 0, "'A1'!B3+A1!B3"},
                    MoveCase{"Name", "Day1_2+A1.b+XFE1", 1, 1, "Day1_2+A1.b+XFE1"},
                    MoveCase{"Number", "1E5+1.5", 1, 1, "1E5+1.5"},
                    MoveCase{"Array", R"({1,2;"A1",3})", 1, 1, R"({1,2;"A1",3})"},
                    MoveCase{"Error", "#REF!+Desk!#REF!", 1, 1, "#REF!+Desk!#REF!"},
                    MoveCase{"NotMoved", "a01+B2", 0, 0, "a01+B2"}),
    [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace orrery::xlsx
