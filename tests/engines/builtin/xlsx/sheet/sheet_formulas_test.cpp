#include "xlsx/sheet_fixture.h"

namespace orrery::xlsx {
namespace {

/// What is written into cells that share a formula.
struct FormulaCase {
    const char* name;
    std::string_view before; // of sheetData
    std::vector<Write> writes;
    std::string_view after;
    bool recalculate = false;
};
class SharedFormulaTest : public testing::TestWithParam<FormulaCase> {};
TEST_P(SharedFormulaTest, StaysInTheUnwrittenCells)
{
    const auto data = [](std::string_view rows) {
        return WorksheetXml("<sheetData>" + std::string(rows) + "</sheetData>");
    };
    const auto sheet = ReadSheet(data(GetParam().before));
    SheetCells cells(sheet);
    SetAll(cells, GetParam().writes);
    EXPECT_EQ(cells.Patch(GetParam().recalculate).Apply(sheet->Xml()), data(GetParam().after));
}
INSTANTIATE_TEST_SUITE_P(
    Formulas, SharedFormulaTest,
    testing::Values(
        FormulaCase{"PlainIsRemoved",
                    R"(<row r="1"><c r="A1" t="str"><f>B1</f><v>x</v></c></row>)",
                    {Number("A1", 1)},
                    R"(<row r="1"><c r="A1"><v>1</v></c></row>)"},
        FormulaCase{
            "DependentIsDropped",
            R"(<row r="1"><c r="A1"><f t="shared" ref="A1:B1" si="0">A9</f></c><c r="B1"><f t="shared" si="0"/></c></row>)",
            {Number("B1", 1)},
            R"(<row r="1"><c r="A1"><f t="shared" ref="A1:B1" si="0">A9</f></c><c r="B1"><v>1</v></c></row>)"},
        FormulaCase{
            "MasterHandsOver",
            R"(<row r="1"><c r="A1"><f t="shared" ref="A1:B2" si="4">A9&amp;$C$3</f><v>1</v></c><c r="B1"><f ca="1" t="shared" si="4"/><v>2</v></c></row><row r="2"><c r="A2"><f t="shared" si="4"/></c><c r="B2"><f t="shared" si="4"/></c></row>)",
            {Number("A1", 7)},
            R"(<row r="1"><c r="A1"><v>7</v></c><c r="B1"><f ca="1" t="shared" si="4" ref="A1:B2">B9&amp;$C$3</f><v>2</v></c></row><row r="2"><c r="A2"><f t="shared" si="4"/></c><c r="B2"><f t="shared" si="4"/></c></row>)"},
        FormulaCase{
            "HeirIsTheFirstThatIsLeft",
            R"(<row r="1"><c r="A1"><f t="shared" ref="A1:A4" si="0">B1</f></c></row><row r="2"><c r="A2"><f t="shared" si="0"/></c></row><row r="3"><c r="A3"><f t="shared" si="0"></f></c></row><row r="4"><c r="A4"><f t="shared" si="0"/></c></row>)",
            {Number("A2", 2), Number("A1", 1), Number("A4", 4)},
            R"(<row r="1"><c r="A1"><v>1</v></c></row><row r="2"><c r="A2"><v>2</v></c></row><row r="3"><c r="A3"><f t="shared" si="0" ref="A3">B3</f></c></row><row r="4"><c r="A4"><v>4</v></c></row>)"},
        FormulaCase{
            "NobodyIsLeft",
            R"(<row r="1"><c r="A1"><f t="shared" ref="A1:B1" si="0">C1</f></c><c r="B1"><f t="shared" si="0"/></c></row>)",
            {Number("A1", 1), Number("B1", 2)},
            R"(<row r="1"><c r="A1"><v>1</v></c><c r="B1"><v>2</v></c></row>)"},
        FormulaCase{"OnlyMaster",
                    R"(<row r="1"><c r="A1"><f t="shared" ref="A1:A9" si="0">C1</f></c></row>)",
                    {Number("A1", 1)},
                    R"(<row r="1"><c r="A1"><v>1</v></c></row>)"},
        FormulaCase{
            "GroupNumberUsedAgain",
            R"(<row r="1"><c r="A1"><f t="shared" ref="A1:B1" si="0">C1</f></c><c r="B1"><f t="shared" si="0"/></c></row><row r="2"><c r="A2"><f t="shared" ref="A2:B2" si="0">D1</f></c><c r="B2"><f t="shared" si="0"/></c></row>)",
            {Number("A1", 1), Number("A2", 2)},
            R"(<row r="1"><c r="A1"><v>1</v></c><c r="B1"><f t="shared" si="0" ref="B1">D1</f></c></row><row r="2"><c r="A2"><v>2</v></c><c r="B2"><f t="shared" si="0" ref="B2">E1</f></c></row>)"},
        FormulaCase{
            "LastMasterBeforeCounts",
            R"(<row r="1"><c r="A1"><f t="shared" ref="A1:A2" si="0">C1</f></c><c r="B1"><f t="shared" ref="B1:B2" si="0">D1</f></c></row><row r="2"><c r="A2"><f t="shared" si="0"/></c><c r="B2"><f t="shared" si="0"/></c></row>)",
            {Number("A1", 1)},
            R"(<row r="1"><c r="A1"><v>1</v></c><c r="B1"><f t="shared" ref="B1:B2" si="0">D1</f></c></row><row r="2"><c r="A2"><f t="shared" si="0"/></c><c r="B2"><f t="shared" si="0"/></c></row>)"},
        FormulaCase{
            "GroupNumbersInAnyOrder",
            R"(<row r="1"><c r="A1"><f si="5" t="shared" ref="A1:A2">C1</f></c><c r="B1"><f si="2" t="shared" ref="B1:B2">D1</f></c></row><row r="2"><c r="A2"><f si="5" t="shared"/></c><c r="B2"><f si="2" t="shared"/></c></row>)",
            {Number("A1", 1), Number("B1", 2)},
            R"(<row r="1"><c r="A1"><v>1</v></c><c r="B1"><v>2</v></c></row><row r="2"><c r="A2"><f si="5" t="shared" ref="A2">C2</f></c><c r="B2"><f si="2" t="shared" ref="B2">D2</f></c></row>)"},
        FormulaCase{
            "TextRepeatedInDependents",
            R"(<row r="1"><c r="A1"><f t="shared" ref="A1:A2" si="0">C1</f></c></row><row r="2"><c r="A2"><f t="shared" si="0">C1</f></c></row>)",
            {Number("A1", 1)},
            R"(<row r="1"><c r="A1"><v>1</v></c></row><row r="2"><c r="A2"><f t="shared" si="0" ref="A2">C2</f></c></row>)"},
        FormulaCase{
            "MasterWithoutRange",
            R"(<row r="1"><c r="A1"><f t="shared" si="0">C1</f></c></row><row r="2"><c r="A2"><f t="shared" si="0"/></c></row>)",
            {Number("A1", 1)},
            R"(<row r="1"><c r="A1"><v>1</v></c></row><row r="2"><c r="A2"><f t="shared" si="0" ref="A2">C2</f></c></row>)"},
        FormulaCase{
            "DependentWithoutMaster",
            R"(<row r="1"><c r="A1"><f t="shared" si="3"/></c><c r="B1"><f t="shared"/></c></row>)",
            {Number("A1", 1), Number("B1", 2)},
            R"(<row r="1"><c r="A1"><v>1</v></c><c r="B1"><v>2</v></c></row>)"},
        FormulaCase{
            "HeirLosesItsResult",
            R"(<row r="1"><x:c r="A1"><x:f t="shared" ref="A1:B1" si="0">C1</x:f></x:c><x:c r="B1" t="str"><x:f t="shared" si="0"/><x:v>a</x:v></x:c></row>)",
            {Number("A1", 1)},
            R"(<row r="1"><x:c r="A1"><x:v>1</x:v></x:c><x:c r="B1"><x:f t="shared" si="0" ref="B1">D1</x:f></x:c></row>)",
            true}),
    [](const auto& row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Arrays, SharedFormulaTest,
    testing::Values(
        FormulaCase{
            "OfOneCellIsReplaced",
            R"(<row r="1"><c r="A1"><f t="array" ref="A1">SUM(B1:B9)</f><v>1</v></c></row>)",
            {Number("A1", 5)},
            R"(<row r="1"><c r="A1"><v>5</v></c></row>)"},
        FormulaCase{
            "DynamicTakesItsValuesBack",
            R"(<row r="1"><c r="A1" cm="1"><f t="array" ref="A1:A3">B1:B3</f><v>1</v></c><c r="B1"><v>8</v></c></row><row r="2"><c r="A2" s="2" t="str"><v>x</v></c></row><row r="3"><c r="A3"><v>3</v></c></row>)",
            {Number("A1", 5), Number("A3", 7)},
            R"(<row r="1"><c r="A1"><v>5</v></c><c r="B1"><v>8</v></c></row><row r="2"><c r="A2" s="2"></c></row><row r="3"><c r="A3"><v>7</v></c></row>)"},
        FormulaCase{
            "ValueOfADynamicOneIsReplaced",
            R"(<row r="1"><c r="A1" cm="1"><f t="array" ref="A1:B1">C1:D1</f><v>1</v></c><c r="B1" t="str"><v>2</v></c></row>)",
            {Number("B1", 5)},
            R"(<row r="1"><c r="A1" cm="1"><f t="array" ref="A1:B1">C1:D1</f><v>1</v></c><c r="B1"><v>5</v></c></row>)"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(SharedFormula, MovedMasterUsesTheCurrentNames)
{
    const auto sheet = ReadSheet(WorksheetXml(
        R"(<sheetData><row r="1"><c r="A1"><f t="shared" ref="A1:B1" si="0">Old!A1</f></c><c r="B1"><f t="shared" si="0"/></c></row></sheetData>)"));
    SheetCells cells(sheet);
    SetAll(cells, {Number("A1", 1)});
    const FormulaChange rename = [](const std::string& formula) {
        EXPECT_EQ(formula, "Old!B1");
        return std::string("'New & <1>'!B1");
    };
    EXPECT_NE(cells.Patch(false, rename)
                  .Apply(sheet->Xml())
                  .find(R"(ref="B1">'New &amp; &lt;1&gt;'!B1</f>)"),
              std::string::npos);
}

} // namespace
} // namespace orrery::xlsx
