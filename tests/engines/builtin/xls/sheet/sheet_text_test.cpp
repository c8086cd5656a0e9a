#include "engines/builtin/xls/sheet/sheet_text.h"

#include "book/error.h"
#include "util/error.h"
#include "xls/cell_builder.h"

#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using namespace test;

/// The cells of an index as "B5 f" (formula), "s" (shared string), "B5:D5" for one record.
std::string CellList(const SheetIndex& index)
{
    std::string list;
    for (const CellPlace& cell : index.cells) {
        list += list.empty() ? "" : " ";
        list += engines::FormatCellRange(
            {{cell.row + 1, cell.first + 1}, {cell.row + 1, cell.last + 1}});
        list += cell.Has(CellPlace::Formula) ? "f" : "";
        list += cell.Has(CellPlace::SharedString) ? "s" : "";
    }
    return list;
}

std::string RowList(const SheetIndex& index)
{
    std::string list;
    for (const RowPlace& row : index.rows)
        list += (list.empty() ? "" : " ") + std::to_string(row.number + 1) +
                (row.HasRecord() ? "" : "-") + (row.Has(RowPlace::Overlapping) ? "!" : "");
    return list;
}

TEST(XlsSheetText, KnowsWhereRowsAndCellsAre)
{
    const SheetText sheet(WorksheetOf(RowOf(1, 0, 9) + RowOf(4, 0, 0) + LabelSstOf(1, 0, 1, 5) +
                                      MulBlankOf(1, 1, {1, 2, 3}) + MulRkOf(1, 5, {1, 2}) +
                                      FormulaOf(1, 8, 1, TextResult(), 0, "") + StringOf("x") +
                                      NumberOf(65535, 255, 1, 0.5)));
    EXPECT_EQ(CellList(sheet.Index()), "A2s B2:D2 F2:G2 I2f IV65536");
    EXPECT_EQ(RowList(sheet.Index()), "2 5 65536-");
    EXPECT_EQ(sheet.Index().stringReferences, 1U);
    EXPECT_TRUE(sheet.HasFormulas());
    EXPECT_EQ(sheet.Index().FindCell({2, 3}), &sheet.Index().cells[1]);
    EXPECT_EQ(sheet.Index().FindCell({2, 5}), nullptr);
    EXPECT_EQ(sheet.Index().FindCell({5, 1}), nullptr);
    EXPECT_EQ(sheet.Index().FindCell({65536, 256}), &sheet.Index().cells[4]);
    // The formula's text result belongs to it.
    EXPECT_EQ(sheet.Index().cells[3].end, sheet.Index().cells[4].begin);
}

TEST(XlsSheetText, OrdersRowsAndCells)
{
    const SheetText sheet(WorksheetOf(BlankOf(7, 3, 1) + BlankOf(7, 1, 1) + RowOf(9, 0, 1) +
                                      RowOf(3, 0, 1) + MulBlankOf(2, 4, {1, 1}) + BlankOf(2, 2, 1) +
                                      RowOf(3, 5, 9)));
    EXPECT_EQ(CellList(sheet.Index()), "C3 E3:F3 B8 D8");
    EXPECT_EQ(RowList(sheet.Index()), "3- 4 8- 10");
    // Of two records for a row, the last one counts.
    EXPECT_EQ(sheet.Bytes()[sheet.Index().rows[1].record + kRecordHeader + 2], 5);
}

TEST(XlsSheetText, TheLastRecordOfACellCounts)
{
    const SheetText sheet(WorksheetOf(MulBlankOf(0, 0, {1, 2, 3, 4}) + BlankOf(0, 2, 9) +
                                      BlankOf(1, 2, 9) + MulBlankOf(1, 0, {1, 2, 3, 4})));
    EXPECT_EQ(RowList(sheet.Index()), "1-! 2-!");
    EXPECT_EQ(sheet.FormatOf({1, 3}), 9);
    EXPECT_EQ(sheet.FormatOf({1, 4}), 4);
    EXPECT_EQ(sheet.FormatOf({2, 3}), 3);
}

TEST(XlsSheetText, UsesTheFormatOfTheCellElseOfItsRowElseOfItsColumn)
{
    const SheetText sheet(WorksheetOf(ColumnInfoOf(4, 256, 42) + ColumnInfoOf(1, 2, 41) +
                                      RowOf(0, 0, 9, 0x0180, 0xF000 | 51) +
                                      RowOf(1, 0, 9, 0x0100, 52) + MulBlankOf(0, 0, {1, 2}) +
                                      MulRkOf(1, 3, {5, 6}) + BlankOf(1, 7, 3)));
    EXPECT_EQ(sheet.FormatOf({1, 2}), 2);
    EXPECT_EQ(sheet.FormatOf({1, 3}), 51);
    EXPECT_EQ(sheet.FormatOf({2, 5}), 106);
    EXPECT_EQ(sheet.FormatOf({2, 8}), 3);
    EXPECT_EQ(sheet.FormatOf({2, 2}), 41) << "a row's format counts only with its flag";
    EXPECT_EQ(sheet.FormatOf({2, 1}), 15);
    EXPECT_EQ(sheet.FormatOf({9, 256}), 42);
    EXPECT_EQ(sheet.FormatOf({9, 4}), 15);
}

TEST(XlsSheetText, KnowsMergedCells)
{
    const SheetText sheet(
        WorksheetOf(MergeCellsOf({1, 2, 1, 3, 9, 9, 0, 1}) + MergeCellsOf({20, 22, 0, 0})));
    EXPECT_FALSE(sheet.IsHiddenByMerge({2, 2}));
    EXPECT_TRUE(sheet.IsHiddenByMerge({2, 3}));
    EXPECT_TRUE(sheet.IsHiddenByMerge({3, 4}));
    EXPECT_FALSE(sheet.IsHiddenByMerge({3, 5}));
    EXPECT_TRUE(sheet.IsHiddenByMerge({10, 2}));
    EXPECT_TRUE(sheet.IsHiddenByMerge({23, 1}));
}

TEST(XlsSheetText, KnowsWhatChangesOnlyAsAWhole)
{
    const SheetText sheet(WorksheetOf(
        FormulaOf(0, 0, 1, ResultOf(1), 0, ExpOf(0, 0)) + ArrayOf(RangeOf(0, 1, 0, 0), "\x1D\x01") +
        FormulaOf(0, 1, 1, ResultOf(1), 0, ExpOf(0, 1)) + ArrayOf(RangeOf(0, 0, 1, 1), "\x1D\x01") +
        FormulaOf(0, 2, 1, ResultOf(1), 0, "\x02\0\0\2\0") + TableOf(RangeOf(0, 5, 2, 3))));
    EXPECT_TRUE(sheet.IsPartOfArray({1, 1}));
    EXPECT_TRUE(sheet.IsPartOfArray({2, 1}));
    EXPECT_FALSE(sheet.IsPartOfArray({3, 1}));
    EXPECT_FALSE(sheet.IsPartOfArray({1, 2})) << "an array of one cell";
    EXPECT_TRUE(sheet.IsPartOfArray({6, 4}));
}

/// A range of a protected sheet that everyone with the password, if there is one, may edit.
std::string OpenRange(std::uint16_t feature, std::uint32_t password, std::uint32_t flags,
                      const std::vector<std::uint16_t>& range)
{
    std::string data = Numbers({0x0868, 0, 0, 0, 0, 0, feature});
    data += std::string(5, '\0') + Numbers({1, 0, 0, 0}) + Numbers(range);
    AppendU32(data, flags);
    AppendU32(data, password);
    return RecordOf(RecordType::Feature, data + Numbers({1}) + std::string("\0A", 2));
}

TEST(XlsSheetText, KnowsWhatIsProtected)
{
    const std::string protect = RecordOf(RecordType::Protect, Numbers({1}));
    EXPECT_FALSE(SheetText(WorksheetOf("")).IsProtected({1, 1}));
    EXPECT_FALSE(
        SheetText(WorksheetOf(RecordOf(RecordType::Protect, Numbers({0})))).IsProtected({1, 1}));
    const SheetText sheet(
        WorksheetOf(protect + OpenRange(2, 0, 0, {0, 1, 0, 1}) + OpenRange(2, 77, 0, {2, 2, 0, 0}) +
                    OpenRange(2, 0, 1, {3, 3, 0, 0}) + OpenRange(3, 0, 0, {4, 4, 0, 0})));
    EXPECT_FALSE(sheet.IsProtected({2, 2}));
    EXPECT_TRUE(sheet.IsProtected({2, 3}));
    EXPECT_TRUE(sheet.IsProtected({3, 1})) << "it has a password";
    EXPECT_TRUE(sheet.IsProtected({4, 1})) << "it is for some users only";
    EXPECT_TRUE(sheet.IsProtected({5, 1})) << "another feature: ignored errors";
}

TEST(XlsSheetText, CellsOfChartsDoNotBelongToTheSheet)
{
    const std::string chart = BofOf(0x20) + NumberOf(0, 0, 0, 1) + EofRecord();
    EXPECT_EQ(CellList(SheetText(WorksheetOf(BlankOf(1, 1, 1) + chart)).Index()), "B2");
    const SheetText alone(chart);
    EXPECT_FALSE(alone.HasCells());
    EXPECT_TRUE(alone.Index().cells.empty());
    EXPECT_TRUE(SheetText(WorksheetOf("")).HasCells());
}

TEST(XlsSheetText, RecordsThatBelongToNoCellStayApart)
{
    const SheetText sheet(WorksheetOf(StringOf("x") + BlankOf(1, 1, 1) + StringOf("y") +
                                      RowOf(1, 0, 2) + RecordOf(RecordType::Continue, "z")));
    EXPECT_EQ(sheet.Index().runs.size(), 2U);
    EXPECT_EQ(CellList(sheet.Index()), "B2");
}

struct DamageCase {
    const char* name;
    std::string sheet;
};
class XlsSheetDamageTest : public testing::TestWithParam<DamageCase> {};
TEST_P(XlsSheetDamageTest, IsRefused)
{
    try {
        const SheetText sheet(GetParam().sheet);
        FAIL() << "no error";
    }
    catch (const util::Error& error) {
        EXPECT_EQ(error.Kind(), book::ErrorKind::DamagedWorkbook);
        EXPECT_FALSE(error.Cause().empty());
    }
}
INSTANTIATE_TEST_SUITE_P(
    Sheets, XlsSheetDamageTest,
    testing::Values(
        DamageCase{"Empty", ""}, DamageCase{"NoBeginning", EofRecord()},
        DamageCase{"NoEnd", BofOf(0x10)},
        DamageCase{"NoEndOfTheChart", BofOf(0x10) + EofRecord().substr(0, 3)},
        DamageCase{"ShortBeginning", RecordOf(RecordType::Bof, "\6") + EofRecord()},
        DamageCase{"ShortCell", WorksheetOf(RecordOf(RecordType::Blank, "12345"))},
        DamageCase{"ShortRow", WorksheetOf(RecordOf(RecordType::Row, "123456789012345"))},
        DamageCase{"ShortFormula", WorksheetOf(RecordOf(RecordType::Formula, "123456789012345"))},
        DamageCase{"ShortMerge", WorksheetOf(RecordOf(RecordType::MergeCells, Numbers({1, 2})))},
        DamageCase{"ShortIndex", WorksheetOf(RecordOf(RecordType::Index, Numbers({1, 2})))},
        DamageCase{"ShortDefaultHeight",
                   WorksheetOf(RecordOf(RecordType::DefaultRowHeight, Numbers({1})))},
        DamageCase{"ShortArray", WorksheetOf(FormulaOf(0, 0, 0, ResultOf(1), 0, ExpOf(0, 0)) +
                                             RecordOf(RecordType::Array, Numbers({1, 2})))},
        DamageCase{"ShortShared", WorksheetOf(FormulaOf(0, 0, 0, ResultOf(1), 0, ExpOf(0, 0)) +
                                              RecordOf(RecordType::SharedFormula, "1234567"))},
        DamageCase{"NoCellInOneRecord",
                   WorksheetOf(RecordOf(RecordType::MulBlank, Numbers({0, 3, 2})))},
        DamageCase{"HalfACell", WorksheetOf(RecordOf(RecordType::MulRk, Numbers({0, 3, 2, 2, 3})))},
        DamageCase{"FewerCellsThanColumns",
                   WorksheetOf(RecordOf(RecordType::MulBlank, Numbers({0, 3, 15, 15, 6})))}),
    [](const auto& tested) { return std::string(tested.param.name); });

} // namespace
} // namespace orrery::xls
