#include "book/error.h"
#include "util/error.h"
#include "xlsx/sheet_fixture.h"

namespace orrery::xlsx {
namespace {

std::string PieceOf(const SheetText& sheet, const std::optional<xml::TextRange>& range)
{
    return range ? sheet.Xml().substr(range->begin, range->end - range->begin) : "nothing";
}

/// The cells of an index as "B5 f" (formula), "s" (shared string), "a" (value of an array).
std::string CellList(const SheetIndex& index)
{
    std::string list;
    for (std::uint32_t i = 0; i < index.cells.size(); ++i) {
        const CellPlace& cell = index.cells[i];
        list += list.empty() ? "" : " ";
        list += FormatCellAddress(index.AddressOf(i));
        list += cell.Has(CellPlace::Formula) ? "f" : "";
        list += cell.Has(CellPlace::SharedString) ? "s" : "";
        list += cell.Has(CellPlace::ArrayValue) ? "a" : "";
        EXPECT_EQ(index.FindCell(index.AddressOf(i)), &cell);
        EXPECT_EQ(index.IndexOf(cell), i);
    }
    return list;
}

struct IndexCase {
    const char* name;
    std::string_view sheetData;
    std::string_view cells;
};
class SheetIndexTest : public testing::TestWithParam<IndexCase> {};
TEST_P(SheetIndexTest, KnowsWhereCellsAre)
{
    EXPECT_EQ(CellList(ReadSheet(WorksheetXml(GetParam().sheetData))->Index()), GetParam().cells);
}
INSTANTIATE_TEST_SUITE_P(
    Sheets, SheetIndexTest,
    testing::Values(
        IndexCase{"Explicit",
                  R"(<sheetData><row r="2"><c r="B2"/><c r="D2" t="s"><v>0</v></c></row>)"
                  R"(<row r="7"/><row r="9"><c r="A9"><f>B2</f></c></row></sheetData>)",
                  "B2 D2s A9f"},
        IndexCase{"Counted", "<sheetData><row><c/><c/></row><row/><row><c/></row></sheetData>",
                  "A1 B1 A3"},
        IndexCase{"CountedFromExplicit",
                  R"(<sheetData><row r="3"><c r="C3"/><c/></row><row><c/></row></sheetData>)",
                  "C3 D3 A4"},
        IndexCase{"RowNumberFromItsFirstCell",
                  R"(<sheetData><row><c r="B5"/></row><row><c/></row></sheetData>)", "B5 A6"},
        IndexCase{"LowerCase", R"(<sheetData><row r="1"><c r="b1"/></row></sheetData>)", "B1"},
        IndexCase{"Empty", "<sheetData/>", ""}, IndexCase{"Absent", "", ""},
        IndexCase{"OtherElementsBetween",
                  "<sheetData><!-- a --> <x><row/></x><row> <y><c/></y><c> </c></row></sheetData>",
                  "A1"},
        IndexCase{"ArrayValues",
                  R"(<sheetData><row r="1"><c r="A1"><f t="array" ref="A1:B2">1</f></c>)"
                  R"(<c r="B1"/><c r="C1"/></row><row r="2"><c r="A2"/><c r="B2"/><c r="C2"/>)"
                  R"(</row><row r="3"><c r="A3"/></row></sheetData>)",
                  "A1f B1a C1 A2a B2a C2 A3"},
        IndexCase{"ArraysOfOneCell",
                  R"(<sheetData><row r="1"><c r="A1"><f t="array" ref="A1">1</f></c><c r="B1">)"
                  R"(<f t="array">1</f></c><c r="C1"/></row></sheetData>)",
                  "A1f B1f C1"},
        IndexCase{"ArraysBelowEachOther",
                  R"(<sheetData><row r="1"><c r="A1"><f t="array" ref="A1:D1">1</f></c></row>)"
                  R"(<row r="2"><c r="B2"><f t="array" ref="B2:C3">1</f></c></row><row r="3">)"
                  R"(<c r="A3"/><c r="B3"/><c r="C3"/><c r="D3"/></row></sheetData>)",
                  "A1f B2f A3 B3a C3a D3"}),
    [](const auto& row) { return std::string(row.param.name); });

struct DamageCase {
    const char* name;
    std::string_view sheetData;
    std::string_view cause; // after the part's name
};
class SheetDamageTest : public testing::TestWithParam<DamageCase> {};
TEST_P(SheetDamageTest, IsRefusedWithItsCause)
{
    try {
        ReadSheet(WorksheetXml("<sheetData>" + std::string(GetParam().sheetData) + "</sheetData>"));
        FAIL() << "was read";
    }
    catch (const util::Error& error) {
        EXPECT_EQ(error.Kind(), book::ErrorKind::DamagedWorkbook);
        EXPECT_EQ(error.Cause(), "/xl/worksheets/sheet1.xml, " + std::string(GetParam().cause));
    }
}
INSTANTIATE_TEST_SUITE_P(
    Sheets, SheetDamageTest,
    testing::Values(
        DamageCase{"RowsOutOfOrder", R"(<row r="3"/><row r="2"/>)", "row 2 is not behind row 3"},
        DamageCase{"RowTwice", R"(<row r="3"/><row r="3"/>)", "row 3 is not behind row 3"},
        DamageCase{"RowZero", R"(<row r="0"/>)", "a row with the number \"0\""},
        DamageCase{"RowBeyond", R"(<row r="1048577"/>)", "a row with the number \"1048577\""},
        DamageCase{"RowCountedBeyond", R"(<row r="1048576"/><row/>)",
                   "row 1048577 is not behind row 1048576"},
        DamageCase{"RowOfLetters", R"(<row r="x"/>)", "a row with the number \"x\""},
        DamageCase{"CellsOutOfOrder", R"(<row><c r="C1"/><c r="B1"/></row>)",
                   "the cells of row 1 are not in order"},
        DamageCase{"CellTwice", R"(<row><c r="C1"/><c r="C1"/></row>)",
                   "the cells of row 1 are not in order"},
        DamageCase{"CellCountedBeyond", R"(<row><c r="XFD1"/><c/></row>)",
                   "the cells of row 1 are not in order"},
        DamageCase{"CellOfOtherRow", R"(<row r="4"><c r="C5"/></row>)",
                   "row 4 holds a cell of row 5"},
        DamageCase{"SecondCellOfOtherRow", R"(<row><c r="C5"/><c r="D6"/></row>)",
                   "row 5 holds a cell of row 6"},
        DamageCase{"RowOfFirstCellAbove", R"(<row r="4"/><row><c r="C2"/></row>)",
                   "row 2 is not behind row 4"},
        DamageCase{"CellNowhere", R"(<row><c r="$C$1"/></row>)", "a cell with the place \"$C$1\""}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(SheetText, RefusesTextThatIsNotWellFormed)
{
    EXPECT_THROW(ReadSheet("<worksheet><sheetData></worksheet>"), util::Error);
    EXPECT_THROW(ReadSheet(""), util::Error);
}

TEST(SheetText, TakesSheetsWithoutCells)
{
    const auto sheet =
        ReadSheet(R"(<chartsheet xmlns="u"><sheetPr codeName="Chart1"/></chartsheet>)");
    EXPECT_FALSE(sheet->HasCells());
    EXPECT_EQ(sheet->CodeName(), "Chart1");
    EXPECT_TRUE(SheetCells(sheet).Patch(true).Empty());
    EXPECT_THROW(SheetCells(sheet).CheckWritable(1, 1, Styles("", "")), util::Error);
}

TEST(SheetText, FindsPropertiesOfTheSheet)
{
    const auto sheet = ReadSheet(
        WorksheetXml(R"(<sheetPr filterMode="1" codeName='Sheet&amp;'><pageSetUpPr/></sheetPr>)"
                     R"(<dimension ref="A1:B2"/><sheetData/>)"));
    EXPECT_EQ(sheet->CodeName(), "Sheet&");
    EXPECT_EQ(PieceOf(*sheet, sheet->Dimension()), "A1:B2");
    EXPECT_FALSE(sheet->HasFormulas());
    const auto bare = ReadSheet(WorksheetXml("<sheetData/>"));
    EXPECT_EQ(bare->CodeName(), "");
    EXPECT_EQ(PieceOf(*bare, bare->Dimension()), "nothing");
}

TEST(SheetText, GivesACopyACodeNameOrTakesItAway)
{
    const auto with = [](const std::string& properties, const std::optional<std::string>& name) {
        const auto sheet = ReadSheet(WorksheetXml(properties + "<sheetData/>"));
        return sheet->SetCodeName(name).Apply(sheet->Xml());
    };
    const auto plain = [](const std::string& properties) {
        return WorksheetXml(properties + "<sheetData/>");
    };
    const std::string named = "<sheetPr codeName='Sheet1' filterMode='1'/>";
    EXPECT_EQ(with(named, std::nullopt), plain("<sheetPr filterMode='1'/>"));
    EXPECT_EQ(with(named, "Sheet<2"), plain("<sheetPr codeName=\"Sheet&lt;2\" filterMode='1'/>"));
    EXPECT_EQ(with("<sheetPr/>", "Sheet2"), plain("<sheetPr/>")) << "the model has none";
}

TEST(SheetText, CollectsWhatFormulasRead)
{
    const auto sheet = ReadSheet(WorksheetXml(
        R"(<sheetData><row><c><f>Data!A1+B2</f></c><c><f t="shared" si="0" ref="B1:C1">)"
        R"('My &amp; Sheet'!A1</f></c><c><f t="shared" si="0"/></c></row></sheetData>)"));
    EXPECT_TRUE(sheet->HasFormulas());
    EXPECT_EQ(sheet->Facts().sheets, (std::set<std::string, std::less<>>{"Data", "My & Sheet"}));
}

struct SelectCase {
    const char* name;
    std::string_view views;
    bool selected;
    std::string_view expected;
};
class SelectTabTest : public testing::TestWithParam<SelectCase> {};
TEST_P(SelectTabTest, ChangesEveryView)
{
    const auto sheet = ReadSheet(WorksheetXml(GetParam().views));
    EXPECT_EQ(sheet->SelectTab(GetParam().selected).Apply(sheet->Xml()),
              WorksheetXml(GetParam().expected));
}
INSTANTIATE_TEST_SUITE_P(
    Views, SelectTabTest,
    testing::Values(
        SelectCase{"Deselect",
                   R"(<sheetViews><sheetView tabSelected="1" a="0"><pane/></sheetView>)"
                   R"(<sheetView b="1" tabSelected='true'/></sheetViews>)",
                   false,
                   R"(<sheetViews><sheetView a="0"><pane/></sheetView><sheetView b="1"/>)"
                   R"(</sheetViews>)"},
        SelectCase{"Select",
                   R"(<sheetViews><sheetView a="0"/><sheetView tabSelected="0"/>)"
                   R"(<sheetView tabSelected="1"/></sheetViews>)",
                   true,
                   R"(<sheetViews><sheetView tabSelected="1" a="0"/><sheetView tabSelected="1"/>)"
                   R"(<sheetView tabSelected="1"/></sheetViews>)"},
        SelectCase{"CustomViewsHaveNoTab",
                   R"(<customSheetViews><customSheetView/></customSheetViews>)", true,
                   R"(<customSheetViews><customSheetView/></customSheetViews>)"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(SheetText, GivesTheFormatOfEveryCell)
{
    const auto sheet = ReadSheet(WorksheetXml(
        R"(<cols><col min="2" max="3" style="4"/><col min="5" max="5"/></cols><sheetData>)"
        R"(<row r="1" s="7" customFormat="1"><c r="A1" s="2"/><c r="B1"/></row>)"
        R"(<row r="2" s="8"/><row r="3" customFormat="true"/></sheetData>)"));
    const std::pair<const char*, std::size_t> expected[] = {
        {"A1", 2}, // its own
        {"B1", 0}, // an element without one has none
        {"C1", 7}, // its row's
        {"C2", 4}, // not its row's, but its column's
        {"C3", 0}, // its row's is the default
        {"C9", 4}, // its column's, without a row
        {"D9", 0}, {"E9", 0}, {"A2", 0},
    };
    for (const auto& [cell, format] : expected)
        EXPECT_EQ(sheet->FormatOf(*ParseCellAddress(cell)), format) << cell;
}

} // namespace
} // namespace orrery::xlsx
