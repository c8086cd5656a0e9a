#include "book/error.h"
#include "util/error.h"
#include "xlsx/sheet_fixture.h"

namespace orrery::xlsx {
namespace {

struct PatchCase {
    const char* name;
    std::string_view before;
    std::vector<Write> writes;
    std::string_view after;
    bool recalculate = false;
};
class SheetPatchTest : public testing::TestWithParam<PatchCase> {};
TEST_P(SheetPatchTest, ChangesNothingElse)
{
    const auto sheet = ReadSheet(WorksheetXml(GetParam().before));
    SheetCells cells(sheet);
    SetAll(cells, GetParam().writes);
    EXPECT_EQ(cells.Patch(GetParam().recalculate).Apply(sheet->Xml()),
              WorksheetXml(GetParam().after));
}
std::string CaseName(const testing::TestParamInfo<PatchCase>& info)
{
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(
    Cells, SheetPatchTest,
    testing::Values(
        PatchCase{
            "NumberKeepsFormat",
            R"(<sheetData><row r="5"><c r="B5" s="3"><v>1</v></c><c r="C5"/></row></sheetData>)",
            {Number("B5", 12)},
            R"(<sheetData><row r="5"><c r="B5" s="3"><v>12</v></c><c r="C5"/></row></sheetData>)"},
        PatchCase{"Negative",
                  R"(<sheetData><row r="5"><c r="B5"/></row></sheetData>)",
                  {Number("B5", -32768)},
                  R"(<sheetData><row r="5"><c r="B5"><v>-32768</v></c></row></sheetData>)"},
        PatchCase{"TextOverNumber",
                  R"(<sheetData><row r="5"><c s="3" r="B5" ><v>1</v></c></row></sheetData>)",
                  {Text("B5", 7)},
                  R"(<sheetData><row r="5"><c s="3" r="B5" t="s"><v>7</v></c></row></sheetData>)"},
        PatchCase{
            "NumberOverEverything",
            R"(<sheetData><row r="5"><c r="B5" cm="1" vm="2" ph="1" t="inlineStr" s="3" x="y"><f>A1</f><v>1</v><is><t>a</t></is><extLst/></c></row></sheetData>)",
            {Number("B5", 3)},
            R"(<sheetData><row r="5"><c r="B5" s="3" x="y"><v>3</v></c></row></sheetData>)"},
        PatchCase{"LastValueCounts",
                  R"(<sheetData><row r="5"><c r="B5"/></row></sheetData>)",
                  {Number("B5", 3), Text("B5", 9)},
                  R"(<sheetData><row r="5"><c r="B5" t="s"><v>9</v></c></row></sheetData>)"},
        PatchCase{
            "Prefix",
            R"(<x:sheetData><x:row r="5" spans="2:2"><x:c r="B5"/></x:row></x:sheetData>)",
            {Number("B5", 1), Number("C5", 2), Text("A6", 3)},
            R"(<x:sheetData><x:row r="5" spans="2:3"><x:c r="B5"><x:v>1</x:v></x:c><x:c r="C5"><x:v>2</x:v></x:c></x:row><x:row r="6"><x:c r="A6" t="s"><x:v>3</x:v></x:c></x:row></x:sheetData>)"},
        PatchCase{
            "NewCellsInOrder",
            R"(<sheetData><row r="5"> <c r="C5"/> <c r="E5"/> <extLst/></row></sheetData>)",
            {Number("F5", 6), Number("G5", 7), Number("A5", 1), Number("B5", 2), Number("D5", 4)},
            R"(<sheetData><row r="5"> <c r="A5"><v>1</v></c><c r="B5"><v>2</v></c><c r="C5"/> <c r="D5"><v>4</v></c><c r="E5"/><c r="F5"><v>6</v></c><c r="G5"><v>7</v></c> <extLst/></row></sheetData>)"},
        PatchCase{
            "AfterTheReplacedLast",
            R"(<sheetData><row r="5"><c r="C5"/></row></sheetData>)",
            {Number("C5", 3), Number("D5", 4)},
            R"(<sheetData><row r="5"><c r="C5"><v>3</v></c><c r="D5"><v>4</v></c></row></sheetData>)"},
        PatchCase{
            "EmptyRows",
            R"(<sheetData><row r="5" ht="9"/><row r="6"></row><row r="7"><extLst/></row></sheetData>)",
            {Number("C5", 3), Number("C6", 4), Number("C7", 5)},
            R"(<sheetData><row r="5" ht="9"><c r="C5"><v>3</v></c></row><row r="6"><c r="C6"><v>4</v></c></row><row r="7"><c r="C7"><v>5</v></c><extLst/></row></sheetData>)"},
        PatchCase{"NewRowsInOrder",
                  "<sheetData>\n <row r=\"5\"/>\n <row r=\"8\"/>\n</sheetData>",
                  {Number("A9", 9), Number("A1", 1), Number("B6", 6), Number("A7", 7),
                   Number("A6", 6), Number("A10", 10)},
                  "<sheetData>\n <row r=\"1\"><c r=\"A1\"><v>1</v></c></row><row r=\"5\"/>\n "
                  "<row r=\"6\"><c r=\"A6\"><v>6</v></c><c r=\"B6\"><v>6</v></c></row>"
                  "<row r=\"7\"><c r=\"A7\"><v>7</v></c></row><row r=\"8\"/>\n"
                  "<row r=\"9\"><c r=\"A9\"><v>9</v></c></row>"
                  "<row r=\"10\"><c r=\"A10\"><v>10</v></c></row></sheetData>"},
        PatchCase{
            "EmptySheetData",
            R"(<a/><sheetData /><b/>)",
            {Number("XFD1048576", 1)},
            R"(<a/><sheetData ><row r="1048576"><c r="XFD1048576"><v>1</v></c></row></sheetData><b/>)"},
        PatchCase{"SheetDataWithoutRows",
                  "<sheetData>\n</sheetData>",
                  {Number("A1", 1)},
                  "<sheetData>\n<row r=\"1\"><c r=\"A1\"><v>1</v></c></row></sheetData>"},
        PatchCase{
            "CommentsStay",
            R"(<sheetData><!-- rows --><row r="1"><!-- a --><c r="A1"/><?pi?></row></sheetData>)",
            {Number("A1", 1), Number("B1", 2)},
            R"(<sheetData><!-- rows --><row r="1"><!-- a --><c r="A1"><v>1</v></c><c r="B1"><v>2</v></c><?pi?></row></sheetData>)"}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    Styles, SheetPatchTest,
    testing::Values(
        PatchCase{
            "RowBeforeColumn",
            R"(<cols><col min="2" max="3" style="4"/></cols><sheetData><row r="5" s="7" customFormat="1"/></sheetData>)",
            {Number("B5", 1), Number("D5", 2)},
            R"(<cols><col min="2" max="3" style="4"/></cols><sheetData><row r="5" s="7" customFormat="1"><c r="B5" s="7"><v>1</v></c><c r="D5" s="7"><v>2</v></c></row></sheetData>)"},
        PatchCase{
            "ColumnWhereTheRowHasNone",
            R"(<cols><col min="2" max="3" style="4"/><col min="9" max="9" style="0"/></cols><sheetData><row r="5" s="7"/></sheetData>)",
            {Number("A5", 0), Number("B5", 1), Number("D5", 2), Number("C6", 3), Number("I6", 9)},
            R"(<cols><col min="2" max="3" style="4"/><col min="9" max="9" style="0"/></cols><sheetData><row r="5" s="7"><c r="A5"><v>0</v></c><c r="B5" s="4"><v>1</v></c><c r="D5"><v>2</v></c></row><row r="6"><c r="C6" s="4"><v>3</v></c><c r="I6"><v>9</v></c></row></sheetData>)"},
        PatchCase{
            "DefaultOfTheRowBeforeColumn",
            R"(<cols><col min="2" max="3" style="4"/></cols><sheetData><row r="5" s="0" customFormat="1"/></sheetData>)",
            {Number("B5", 1)},
            R"(<cols><col min="2" max="3" style="4"/></cols><sheetData><row r="5" s="0" customFormat="1"><c r="B5"><v>1</v></c></row></sheetData>)"},
        PatchCase{
            "ColumnsOutOfOrderOrBeyond",
            R"(<cols><col min="4" max="4" style="6"/><col min="2" max="2" style="5"/><col min="3" max="99999" style="1"/></cols><sheetData/>)",
            {Number("B1", 1), Number("C1", 1), Number("D1", 1)},
            R"(<cols><col min="4" max="4" style="6"/><col min="2" max="2" style="5"/><col min="3" max="99999" style="1"/></cols><sheetData><row r="1"><c r="B1" s="5"><v>1</v></c><c r="C1"><v>1</v></c><c r="D1" s="6"><v>1</v></c></row></sheetData>)"}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    Extents, SheetPatchTest,
    testing::Values(
        PatchCase{
            "SpansAreWidened",
            R"(<sheetData><row r="1" spans="2:4" ht="1"><c r="B1"/></row></sheetData>)",
            {Number("A1", 1), Number("F1", 2)},
            R"(<sheetData><row r="1" spans="1:6" ht="1"><c r="A1"><v>1</v></c><c r="B1"/><c r="F1"><v>2</v></c></row></sheetData>)"},
        PatchCase{
            "SpansThatHoldTheCellStay",
            R"(<sheetData><row r="1" spans="2:4 8:9"/></sheetData>)",
            {Number("I1", 1)},
            R"(<sheetData><row r="1" spans="2:4 8:9"><c r="I1"><v>1</v></c></row></sheetData>)"},
        PatchCase{"CellBetweenSpans",
                  R"(<sheetData><row r="1" spans='2:4 8:9'/></sheetData>)",
                  {Number("F1", 1)},
                  R"(<sheetData><row r="1" spans='2:9'><c r="F1"><v>1</v></c></row></sheetData>)"},
        PatchCase{
            "SpansThatAreNone",
            R"(<sheetData><row r="1" spans="x"/><row r="2" spans="1:"/><row r="3" spans=""/></sheetData>)",
            {Number("F1", 1), Number("F2", 1), Number("F3", 1)},
            R"(<sheetData><row r="1" spans="x"><c r="F1"><v>1</v></c></row><row r="2" spans="1:"><c r="F2"><v>1</v></c></row><row r="3" spans=""><c r="F3"><v>1</v></c></row></sheetData>)"},
        PatchCase{
            "DimensionIsWidened",
            R"(<dimension ref="B2:C3"/><sheetData/>)",
            {Number("D1", 1)},
            R"(<dimension ref="B1:D3"/><sheetData><row r="1"><c r="D1"><v>1</v></c></row></sheetData>)"},
        PatchCase{
            "DimensionOfOneCell",
            R"(<dimension ref="A1"/><sheetData/>)",
            {Number("B5", 1)},
            R"(<dimension ref="A1:B5"/><sheetData><row r="5"><c r="B5"><v>1</v></c></row></sheetData>)"},
        PatchCase{
            "DimensionThatHoldsTheCellStays",
            R"(<dimension ref="A1:A1"/><sheetData/>)",
            {Number("A1", 1)},
            R"(<dimension ref="A1:A1"/><sheetData><row r="1"><c r="A1"><v>1</v></c></row></sheetData>)"},
        PatchCase{
            "DimensionThatIsNone",
            R"(<dimension ref="?"/><sheetData/>)",
            {Number("A1", 1)},
            R"(<dimension ref="?"/><sheetData><row r="1"><c r="A1"><v>1</v></c></row></sheetData>)"}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    CountedPlaces, SheetPatchTest,
    testing::Values(
        PatchCase{
            "CellsStayWhereTheyAre",
            R"(<sheetData><row><c s="1"><v>1</v></c><c><v>2</v></c></row><row><c/></row></sheetData>)",
            {Number("A1", 9), Number("D1", 4), Number("B2", 5), Number("C4", 6)},
            R"(<sheetData><row><c s="1"><v>9</v></c><c><v>2</v></c><c r="D1"><v>4</v></c></row><row><c/><c r="B2"><v>5</v></c></row><row r="4"><c r="C4"><v>6</v></c></row></sheetData>)"},
        PatchCase{
            "RowNumberedByItsCell",
            R"(<sheetData><row ht="1"><c r="A5"/></row></sheetData>)",
            {Number("A2", 2), Number("B5", 5)},
            R"(<sheetData><row r="2"><c r="A2"><v>2</v></c></row><row r="5" ht="1"><c r="A5"/><c r="B5"><v>5</v></c></row></sheetData>)"}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    Merges, SheetPatchTest,
    testing::Values(PatchCase{
        "OnlyTheFirstCellTakesAValue",
        R"(<sheetData/><mergeCells count="2"><mergeCell ref="B2:D3"/><mergeCell ref="F5"/></mergeCells>)",
        {Number("B2", 1), Number("C2", 2), Number("B3", 3), Number("D3", 4), Number("E3", 5),
         Number("F5", 6)},
        R"(<sheetData><row r="2"><c r="B2"><v>1</v></c></row><row r="3"><c r="E3"><v>5</v></c></row><row r="5"><c r="F5"><v>6</v></c></row></sheetData><mergeCells count="2"><mergeCell ref="B2:D3"/><mergeCell ref="F5"/></mergeCells>)"}),
    CaseName);

INSTANTIATE_TEST_SUITE_P(
    Results, SheetPatchTest,
    testing::Values(
        PatchCase{
            "StayWithoutRecalculation",
            R"(<sheetData><row r="1"><c r="A1" t="str"><f>B1</f><v>x</v></c></row></sheetData>)",
            {},
            R"(<sheetData><row r="1"><c r="A1" t="str"><f>B1</f><v>x</v></c></row></sheetData>)"},
        PatchCase{
            "AreLeftOutWithRecalculation",
            R"(<sheetData><row r="1"><c r="A1" t="str" s="1" vm="1" cm="1"><f>B1</f><v>x</v></c><c r="B1" t="s"><v>3</v></c><c t="e" r="C1"><f/><v>#N/A</v></c><c r="D1"><f>1</f></c><c r="E1" t="inlineStr"><f>1</f><is><t>a</t></is></c></row></sheetData>)",
            {},
            R"(<sheetData><row r="1"><c r="A1" s="1" cm="1"><f>B1</f></c><c r="B1" t="s"><v>3</v></c><c r="C1"><f/></c><c r="D1"><f>1</f></c><c r="E1"><f>1</f></c></row></sheetData>)",
            true},
        PatchCase{
            "OfWrittenCellsAreTheValues",
            R"(<sheetData><row r="1"><c r="A1"><f>B1</f><v>1</v></c><c r="B1"><f>2</f><v>2</v></c></row></sheetData>)",
            {Number("B1", 7)},
            R"(<sheetData><row r="1"><c r="A1"><f>B1</f></c><c r="B1"><v>7</v></c></row></sheetData>)",
            true},
        PatchCase{
            "OfArraysStandInManyCells",
            R"(<sheetData><row r="1"><c r="A1"><f t="array" ref="A1:A2">1</f><v>1</v></c><c r="B1"><v>5</v></c></row><row r="2"><c r="A2" s="1" t="str"><v>1</v></c><c r="B2"><v>6</v></c></row></sheetData>)",
            {},
            R"(<sheetData><row r="1"><c r="A1"><f t="array" ref="A1:A2">1</f></c><c r="B1"><v>5</v></c></row><row r="2"><c r="A2" s="1"></c><c r="B2"><v>6</v></c></row></sheetData>)",
            true},
        PatchCase{
            "OfDataTablesToo",
            R"(<sheetData><row r="4"><c r="C4"><f t="dataTable" ref="C4:C5" dt2D="0" dtr="0" r1="A1"/><v>10</v></c></row><row r="5"><c r="C5"><v>20</v></c></row></sheetData>)",
            {},
            R"(<sheetData><row r="4"><c r="C4"><f t="dataTable" ref="C4:C5" dt2D="0" dtr="0" r1="A1"/></c></row><row r="5"><c r="C5"></c></row></sheetData>)",
            true}),
    CaseName);

TEST(SheetCells, WithoutWritesHasNothingToChange)
{
    const SheetCells cells(ReadSheet(WorksheetXml(
        R"(<dimension ref="A1"/><sheetData><row r="1"><c r="A1"><f>B1</f><v>1</v></c></row></sheetData>)")));
    EXPECT_TRUE(cells.Empty());
    EXPECT_FALSE(cells.RemovesFormulas());
    EXPECT_EQ(cells.AddedStringReferences(), 0);
    EXPECT_TRUE(cells.Patch(false).Empty());
}

TEST(SheetCells, CountsReferencesToTextsAndRemovedFormulas)
{
    SheetCells cells(ReadSheet(WorksheetXml(
        R"(<sheetData><row r="1"><c r="A1" t="s"><v>1</v></c><c r="B1" t="s"><v>1</v></c><c r="C1" t="str"><f>1</f></c></row></sheetData>)")));
    SetAll(cells, {Number("A1", 1)});
    EXPECT_EQ(cells.AddedStringReferences(), -1);
    SetAll(cells, {Text("B1", 2)});
    EXPECT_EQ(cells.AddedStringReferences(), -1);
    SetAll(cells, {Text("D1", 2), Text("A9", 2)});
    EXPECT_EQ(cells.AddedStringReferences(), 1);
    EXPECT_FALSE(cells.RemovesFormulas());
    SetAll(cells, {Number("C1", 1)});
    EXPECT_TRUE(cells.RemovesFormulas());
}

TEST(SheetCells, IgnoresHiddenCellsOfMergedAreas)
{
    SheetCells cells(ReadSheet(
        WorksheetXml(R"(<sheetData/><mergeCells><mergeCell ref="B2:C2"/></mergeCells>)")));
    EXPECT_TRUE(cells.TakesValue(2, 2));
    EXPECT_FALSE(cells.TakesValue(2, 3));
    SetAll(cells, {Text("C2", 1)});
    EXPECT_TRUE(cells.Empty());
    EXPECT_EQ(cells.AddedStringReferences(), 0);
}

/// The kind and subject of the error that a check throws, "" if the cell may be written.
std::string CheckResult(const SheetCells& cells, std::int32_t row, std::int32_t column)
{
    const Styles formats("<s><cellXfs><xf/><xf><protection locked=\"0\"/></xf></cellXfs></s>",
                         "/xl/styles.xml");
    try {
        cells.CheckWritable(row, column, formats);
        return "";
    }
    catch (const util::Error& error) {
        if (error.Kind() == book::ErrorKind::CellOutsideSheet)
            return "outside: " + error.Subject();
        if (error.Kind() == book::ErrorKind::CellLocked)
            return "locked: " + error.Subject();
        if (error.Kind() == book::ErrorKind::PartOfArray)
            return "array: " + error.Subject();
        return "other";
    }
}

TEST(SheetCells, RefusesCellsOutsideTheSheet)
{
    const SheetCells cells(ReadSheet(WorksheetXml("<sheetData/>")));
    EXPECT_EQ(CheckResult(cells, 1, 1), "");
    EXPECT_EQ(CheckResult(cells, 1048576, 16384), "");
    EXPECT_EQ(CheckResult(cells, 70000000, 3), "outside: row 70000000, column 3");
    EXPECT_EQ(CheckResult(cells, 1048577, 1), "outside: row 1048577, column 1");
    EXPECT_EQ(CheckResult(cells, 1, 16385), "outside: row 1, column 16385");
    EXPECT_EQ(CheckResult(cells, 0, 1), "outside: row 0, column 1");
    EXPECT_EQ(CheckResult(cells, 1, -2147483648), "outside: row 1, column -2147483648");
}

TEST(SheetCells, RefusesLockedCellsOfAProtectedSheet)
{
    // Format 1 is not locked.
    constexpr std::string_view kData =
        R"(<cols><col min="4" max="4" style="1"/></cols><sheetData><row r="1"><c r="A1" s="1"/><c r="B1"/><c r="D1"/></row><row r="2" s="1" customFormat="1"/><row r="3" s="1"/></sheetData>)";
    const auto check = [&](std::string_view behind, std::string_view cell) {
        const SheetCells cells(ReadSheet(WorksheetXml(std::string(kData) + std::string(behind))));
        const CellAddress address = *ParseCellAddress(cell);
        return CheckResult(cells, address.row, address.column);
    };
    constexpr std::string_view kProtected = R"(<sheetProtection sheet="1" objects="1"/>)";
    EXPECT_EQ(check(kProtected, "A1"), "");
    EXPECT_EQ(check(kProtected, "B1"), "locked: B1");
    EXPECT_EQ(check(kProtected, "D1"), "locked: D1") << "its own format counts";
    EXPECT_EQ(check(kProtected, "C2"), "") << "its row is not locked";
    EXPECT_EQ(check(kProtected, "C3"), "locked: C3");
    EXPECT_EQ(check(kProtected, "D3"), "") << "its column is not locked";
    EXPECT_EQ(check(kProtected, "D9"), "");
    EXPECT_EQ(check(kProtected, "E9"), "locked: E9");
    EXPECT_EQ(check("", "B1"), "");
    EXPECT_EQ(check(R"(<sheetProtection objects="1"/>)", "B1"), "");
    EXPECT_EQ(check(R"(<sheetProtection sheet="0"/>)", "B1"), "");
    EXPECT_EQ(check(R"(<sheetProtection sheet="true"/>)", "B1"), "locked: B1");

    const std::string ranges =
        std::string(kProtected) +
        R"(<protectedRanges><protectedRange sqref="E9 G1:H2" name="a"/>)"
        R"(<protectedRange password="CC1A" sqref="J1" name="b"/>)"
        R"(<protectedRange hashValue="x" algorithmName="SHA-512" sqref="K1" name="c"/>)"
        R"(<protectedRange sqref="?" name="d"/></protectedRanges>)";
    EXPECT_EQ(check(ranges, "E9"), "");
    EXPECT_EQ(check(ranges, "H2"), "");
    EXPECT_EQ(check(ranges, "I1"), "locked: I1");
    EXPECT_EQ(check(ranges, "J1"), "locked: J1");
    EXPECT_EQ(check(ranges, "K1"), "locked: K1");
}

TEST(SheetCells, RefusesPartsOfArrays)
{
    const SheetCells cells(ReadSheet(WorksheetXml(
        R"(<sheetData><row r="1"><c r="A1"><f t="array" ref="A1:B2">1</f></c><c r="D1"><f t="array" ref="D1">1</f></c><c r="F1" cm="1"><f t="array" ref="F1:F3">1</f></c><c r="H1" cm="0"><f t="array" ref="H1:H2">1</f></c></row><row r="5"><c r="B5"><f t="dataTable" ref="B5:C6" r1="A1"/></c></row></sheetData>)")));
    for (const char* part : {"A1", "B2", "A2", "H1", "H2", "B5", "C6"}) {
        const CellAddress cell = *ParseCellAddress(part);
        EXPECT_EQ(CheckResult(cells, cell.row, cell.column), "array: " + std::string(part));
    }
    for (const char* free : {"C1", "D1", "F1", "F3", "A3", "A5", "D6", "B7"}) {
        const CellAddress cell = *ParseCellAddress(free);
        EXPECT_EQ(CheckResult(cells, cell.row, cell.column), "") << free;
    }
}

} // namespace
} // namespace orrery::xlsx
