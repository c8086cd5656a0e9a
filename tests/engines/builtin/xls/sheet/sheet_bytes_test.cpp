#include "engines/builtin/xls/sheet/sheet_bytes.h"

#include "xls/cell_builder.h"

#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using namespace test;

struct Write {
    std::int32_t row; // from 1
    std::int32_t column;
    SheetCells::Value value;
};

Write Number(std::int32_t row, std::int32_t column, std::int16_t value)
{
    return {row, column, value};
}

Write Text(std::int32_t row, std::int32_t column, std::uint32_t index)
{
    return {row, column, SheetCells::SharedStringIndex{index}};
}

std::string Saved(const std::string& sheet, const std::vector<Write>& writes,
                  bool recalculate = false, TextPatch others = {}, std::size_t from = 0,
                  std::size_t to = 0)
{
    const auto text = std::make_shared<SheetText>(sheet, from);
    SheetCells cells(text);
    for (const Write& write : writes)
        cells.Set(write.row, write.column, write.value);
    return MakeSheet(*text, sheet, &cells, recalculate, std::move(others), to);
}

struct TableCase {
    const char* name;
    std::string before;
    std::vector<Write> writes;
    std::string after;
    bool recalculate = false;
};
class XlsCellTableTest : public testing::TestWithParam<TableCase> {};
TEST_P(XlsCellTableTest, ChangesNothingElse)
{
    EXPECT_EQ(Saved(WorksheetOf(GetParam().before), GetParam().writes, GetParam().recalculate),
              WorksheetOf(GetParam().after));
}
std::string CaseName(const testing::TestParamInfo<TableCase>& info)
{
    return info.param.name;
}

const std::string kLabel =
    RecordOf(RecordType::Label, Numbers({4, 3, 7, 1}) + std::string("\0x", 2));
const std::string kRich = RecordOf(RecordType::RichString, Numbers({4, 4, 7, 1}) + "x");
const std::string kError = RecordOf(RecordType::BoolErr, Numbers({4, 5, 7, 0}));

INSTANTIATE_TEST_SUITE_P(
    Cells, XlsCellTableTest,
    testing::Values(
        TableCase{"EveryKindIsReplaced",
                  DimensionsOf(4, 5, 0, 9) + RowOf(4, 0, 9) + BlankOf(4, 0, 1) + RkOf(4, 1, 2, 5) +
                      NumberOf(4, 2, 3, 0.5) + kLabel + kRich + kError +
                      FormulaOf(4, 6, 4, TextResult(), 0, "\x17") + StringOf("x") +
                      RecordOf(RecordType::Continue, "y") + LabelSstOf(4, 7, 5, 6) +
                      BlankOf(4, 8, 6),
                  {Number(5, 1, 1), Number(5, 2, -1), Number(5, 3, 32767), Number(5, 4, -32768),
                   Number(5, 5, 0), Text(5, 6, 70000), Text(5, 7, 0), Number(5, 8, 9)},
                  DimensionsOf(4, 5, 0, 9) + RowOf(4, 0, 9) + RkOf(4, 0, 1, 1) + RkOf(4, 1, 2, -1) +
                      RkOf(4, 2, 3, 32767) + RkOf(4, 3, 7, -32768) + RkOf(4, 4, 7, 0) +
                      LabelSstOf(4, 5, 7, 70000) + LabelSstOf(4, 6, 4, 0) + RkOf(4, 7, 5, 9) +
                      BlankOf(4, 8, 6)},
        TableCase{
            "SeveralAreSplit",
            DimensionsOf(0, 2, 0, 6) + RowOf(0, 0, 6) + RowOf(1, 0, 6) +
                MulBlankOf(0, 0, {1, 2, 3, 4, 5, 6}) + MulRkOf(1, 0, {1, 2, 3, 4, 5, 6}),
            {Number(1, 2, 9), Number(1, 5, 9), Number(2, 1, 9), Number(2, 3, 9), Number(2, 6, 9)},
            DimensionsOf(0, 2, 0, 6) + RowOf(0, 0, 6) + RowOf(1, 0, 6) + BlankOf(0, 0, 1) +
                RkOf(0, 1, 2, 9) + MulBlankOf(0, 2, {3, 4}) + RkOf(0, 4, 5, 9) + BlankOf(0, 5, 6) +
                RkOf(1, 0, 101, 9) + RkOf(1, 1, 102, 2) + RkOf(1, 2, 103, 9) +
                MulRkOf(1, 3, {4, 5}) + RkOf(1, 5, 106, 9)},
        TableCase{"NoneOfSeveralIsLeft",
                  DimensionsOf(0, 1, 0, 2) + RowOf(0, 0, 2) + MulBlankOf(0, 0, {1, 2}),
                  {Number(1, 1, 1), Number(1, 2, 2)},
                  DimensionsOf(0, 1, 0, 2) + RowOf(0, 0, 2) + RkOf(0, 0, 1, 1) + RkOf(0, 1, 2, 2)},
        TableCase{"NewCellsInOrder",
                  DimensionsOf(0, 1, 2, 5) + RowOf(0, 2, 5) + BlankOf(0, 2, 1) + BlankOf(0, 4, 1),
                  {Number(1, 7, 7), Number(1, 1, 1), Number(1, 4, 4), Number(1, 2, 2)},
                  DimensionsOf(0, 1, 0, 7) + RowOf(0, 0, 7) + RkOf(0, 0, 15, 1) +
                      RkOf(0, 1, 15, 2) + BlankOf(0, 2, 1) + RkOf(0, 3, 15, 4) + BlankOf(0, 4, 1) +
                      RkOf(0, 6, 15, 7)},
        TableCase{"LastRowAndColumn",
                  DimensionsOf(0, 0, 0, 0),
                  {Number(65536, 256, 1), Number(1, 1, 2)},
                  DimensionsOf(0, 65536, 0, 256) + RowOf(0, 0, 1, 0x0100, 15, 255) +
                      RkOf(0, 0, 15, 2) + RowOf(65535, 255, 256, 0x0100, 15, 255) +
                      RkOf(65535, 255, 15, 1)},
        TableCase{"CellsOutOfOrder",
                  DimensionsOf(0, 3, 0, 3) + BlankOf(2, 2, 1) + BlankOf(2, 0, 2) + RowOf(2, 0, 3) +
                      BlankOf(0, 0, 3) + RowOf(0, 0, 1),
                  {Number(3, 2, 1)},
                  DimensionsOf(0, 3, 0, 3) + RowOf(0, 0, 1) + RowOf(2, 0, 3) + BlankOf(0, 0, 3) +
                      BlankOf(2, 0, 2) + RkOf(2, 1, 15, 1) + BlankOf(2, 2, 1)},
        TableCase{"DoubleCellsStayUnlessWrittenOver",
                  DimensionsOf(0, 1, 0, 5) + RowOf(0, 0, 5) + MulBlankOf(0, 0, {1, 2, 3, 4, 5}) +
                      BlankOf(0, 3, 8) + BlankOf(0, 1, 9),
                  {Number(1, 2, 7)},
                  DimensionsOf(0, 1, 0, 5) + RowOf(0, 0, 5) + BlankOf(0, 0, 1) + RkOf(0, 1, 9, 7) +
                      MulBlankOf(0, 2, {3, 4, 5}) + BlankOf(0, 3, 8)},
        TableCase{"OtherRecordsComeAfter",
                  DimensionsOf(0, 2, 0, 1) + RowOf(0, 0, 1) + BlankOf(0, 0, 1) +
                      RecordOf(RecordType::Selection, "s") + RowOf(1, 0, 1) + BlankOf(1, 0, 1) +
                      RecordOf(RecordType::Note, "n"),
                  {Number(2, 1, 7)},
                  DimensionsOf(0, 2, 0, 1) + RowOf(0, 0, 1) + RowOf(1, 0, 1) + BlankOf(0, 0, 1) +
                      RkOf(1, 0, 1, 7) + RecordOf(RecordType::Selection, "s") +
                      RecordOf(RecordType::Note, "n")}),
    CaseName);

const std::string kTallDefault = RecordOf(RecordType::DefaultRowHeight, Numbers({1, 400}));
const std::string kHiddenDefault = RecordOf(RecordType::DefaultRowHeight, Numbers({2, 255}));

INSTANTIATE_TEST_SUITE_P(
    Rows, XlsCellTableTest,
    testing::Values(
        TableCase{"NewRowsAreOfTheDefaultHeight",
                  kTallDefault + DimensionsOf(5, 6, 0, 1) + RowOf(5, 0, 1) + BlankOf(5, 0, 1),
                  {Number(2, 3, 1), Number(2, 5, 2), Number(9, 1, 3)},
                  kTallDefault + DimensionsOf(1, 9, 0, 5) + RowOf(1, 2, 5, 0x0140, 15, 400) +
                      RowOf(5, 0, 1) + RowOf(8, 0, 1, 0x0140, 15, 400) + RkOf(1, 2, 15, 1) +
                      RkOf(1, 4, 15, 2) + BlankOf(5, 0, 1) + RkOf(8, 0, 15, 3)},
        TableCase{"HiddenByDefault",
                  kHiddenDefault + DimensionsOf(0, 0, 0, 0),
                  {Number(1, 1, 1)},
                  kHiddenDefault + DimensionsOf(0, 1, 0, 1) + RowOf(0, 0, 1, 0x0120, 15, 255) +
                      RkOf(0, 0, 15, 1)},
        TableCase{"FormatsOfRowsAndColumns",
                  ColumnInfoOf(1, 2, 41) + DimensionsOf(0, 1, 0, 1) +
                      RowOf(0, 0, 0, 0x01C0, 51, 777) + RowOf(1, 0, 0, 0x0100, 52),
                  {Number(1, 2, 1), Number(2, 2, 2), Text(3, 3, 3)},
                  ColumnInfoOf(1, 2, 41) + DimensionsOf(0, 3, 0, 3) +
                      RowOf(0, 1, 2, 0x01C0, 51, 777) + RowOf(1, 1, 2, 0x0100, 52) +
                      RowOf(2, 2, 3, 0x0100, 15, 255) + RkOf(0, 1, 51, 1) + RkOf(1, 1, 41, 2) +
                      LabelSstOf(2, 2, 41, 3)},
        TableCase{"CellsWithoutRows",
                  DimensionsOf(0, 2, 0, 4) + BlankOf(0, 1, 1) + MulBlankOf(1, 1, {1, 2, 3}),
                  {Number(1, 1, 1)},
                  DimensionsOf(0, 2, 0, 4) + RowOf(0, 0, 2, 0x0100, 15, 255) +
                      RowOf(1, 1, 4, 0x0100, 15, 255) + RkOf(0, 0, 15, 1) + BlankOf(0, 1, 1) +
                      MulBlankOf(1, 1, {1, 2, 3})},
        TableCase{"WithoutDimensions",
                  ColumnInfoOf(1, 2, 41) + MergeCellsOf({9, 9, 9, 10}),
                  {Number(3, 4, 1)},
                  ColumnInfoOf(1, 2, 41) + DimensionsOf(2, 3, 3, 4) +
                      RowOf(2, 3, 4, 0x0100, 15, 255) + RkOf(2, 3, 15, 1) +
                      MergeCellsOf({9, 9, 9, 10})},
        TableCase{"WithoutDimensionsButCells",
                  BlankOf(7, 7, 1),
                  {Number(3, 4, 1)},
                  DimensionsOf(2, 8, 3, 8) + RowOf(2, 3, 4, 0x0100, 15, 255) +
                      RowOf(7, 7, 8, 0x0100, 15, 255) + RkOf(2, 3, 15, 1) + BlankOf(7, 7, 1)}),
    CaseName);

/// A shared expression that refers to the cell above.
std::string Tokens()
{
    return '\x4C' + Numbers({0xFFFF, 0xC000});
}

std::string Shared(std::uint16_t row, std::uint16_t column, std::uint16_t anchorRow,
                   std::uint16_t anchorColumn, std::string_view result = {},
                   std::uint16_t flags = 8)
{
    return FormulaOf(row, column, 1, result.empty() ? ResultOf(2) : std::string(result), flags,
                     ExpOf(anchorRow, anchorColumn));
}

INSTANTIATE_TEST_SUITE_P(
    Formulas, XlsCellTableTest,
    testing::Values(
        TableCase{"SharedFormulaGetsANewMaster",
                  DimensionsOf(0, 3, 0, 2) + RowOf(0, 0, 2) + RowOf(1, 0, 2) + RowOf(2, 0, 2) +
                      Shared(0, 0, 0, 0) + SharedFormulaOf(RangeOf(0, 2, 0, 1), 5, Tokens()) +
                      Shared(0, 1, 0, 0, TextResult()) + StringOf("x") + Shared(1, 0, 0, 0) +
                      Shared(2, 0, 0, 0) + Shared(2, 1, 0, 0),
                  {Number(1, 1, 9), Number(3, 2, 9)},
                  DimensionsOf(0, 3, 0, 2) + RowOf(0, 0, 2) + RowOf(1, 0, 2) + RowOf(2, 0, 2) +
                      RkOf(0, 0, 1, 9) + Shared(0, 1, 0, 1, TextResult()) +
                      SharedFormulaOf(RangeOf(0, 2, 0, 1), 3, Tokens()) + StringOf("x") +
                      Shared(1, 0, 0, 1) + Shared(2, 0, 0, 1) + RkOf(2, 1, 1, 9)},
        TableCase{"ItsRangeShrinks",
                  DimensionsOf(0, 3, 0, 1) + RowOf(0, 0, 1) + RowOf(1, 0, 1) + RowOf(2, 0, 1) +
                      Shared(0, 0, 0, 0) + SharedFormulaOf(RangeOf(0, 2, 0, 0), 3, Tokens()) +
                      Shared(1, 0, 0, 0) + Shared(2, 0, 0, 0),
                  {Number(1, 1, 9), Number(2, 1, 9)},
                  DimensionsOf(0, 3, 0, 1) + RowOf(0, 0, 1) + RowOf(1, 0, 1) + RowOf(2, 0, 1) +
                      RkOf(0, 0, 1, 9) + RkOf(1, 0, 1, 9) + Shared(2, 0, 2, 0) +
                      SharedFormulaOf(RangeOf(2, 2, 0, 0), 1, Tokens())},
        TableCase{"OthersOfTheGroupMayGo",
                  DimensionsOf(0, 1, 0, 3) + RowOf(0, 0, 3) + Shared(0, 0, 0, 0) +
                      SharedFormulaOf(RangeOf(0, 0, 0, 2), 3, Tokens()) + Shared(0, 1, 0, 0) +
                      Shared(0, 2, 0, 0),
                  {Number(1, 2, 9)},
                  DimensionsOf(0, 1, 0, 3) + RowOf(0, 0, 3) + Shared(0, 0, 0, 0) +
                      SharedFormulaOf(RangeOf(0, 0, 0, 2), 3, Tokens()) + RkOf(0, 1, 1, 9) +
                      Shared(0, 2, 0, 0)},
        TableCase{"TheWholeGroupGoes",
                  DimensionsOf(0, 1, 0, 2) + RowOf(0, 0, 2) + Shared(0, 0, 0, 0) +
                      SharedFormulaOf(RangeOf(0, 0, 0, 1), 2, Tokens()) + Shared(0, 1, 0, 0),
                  {Number(1, 1, 8), Number(1, 2, 9)},
                  DimensionsOf(0, 1, 0, 2) + RowOf(0, 0, 2) + RkOf(0, 0, 1, 8) + RkOf(0, 1, 1, 9)},
        TableCase{"ArrayOfOneCellGoes",
                  DimensionsOf(0, 1, 0, 1) + RowOf(0, 0, 1) + Shared(0, 0, 0, 0) +
                      ArrayOf(RangeOf(0, 0, 0, 0), Tokens()),
                  {Number(1, 1, 9)},
                  DimensionsOf(0, 1, 0, 1) + RowOf(0, 0, 1) + RkOf(0, 0, 1, 9)},
        TableCase{"ResultsStayWithoutRecalculation",
                  DimensionsOf(0, 1, 0, 2) + RowOf(0, 0, 2) +
                      FormulaOf(0, 0, 1, TextResult(), 0, "\x17") + StringOf("x"),
                  {Number(1, 2, 9)},
                  DimensionsOf(0, 1, 0, 2) + RowOf(0, 0, 2) +
                      FormulaOf(0, 0, 1, TextResult(), 0, "\x17") + StringOf("x") +
                      RkOf(0, 1, 15, 9)},
        TableCase{"ResultsGoWithRecalculation",
                  DimensionsOf(0, 1, 0, 3) + RowOf(0, 0, 3) +
                      FormulaOf(0, 0, 1, TextResult(), 2, "\x17") + StringOf("x") +
                      RecordOf(RecordType::Continue, "y") + Shared(0, 1, 0, 1, ResultOf(4), 8) +
                      SharedFormulaOf(RangeOf(0, 0, 1, 2), 2, Tokens()) +
                      Shared(0, 2, 0, 1, TextResult(), 8) + StringOf("z"),
                  {},
                  DimensionsOf(0, 1, 0, 3) + RowOf(0, 0, 3) +
                      FormulaOf(0, 0, 1, EmptyResult(), 3, "\x17") +
                      Shared(0, 1, 0, 1, EmptyResult(), 9) +
                      SharedFormulaOf(RangeOf(0, 0, 1, 2), 2, Tokens()) +
                      Shared(0, 2, 0, 1, EmptyResult(), 9),
                  true},
        TableCase{"NothingToRecalculate",
                  RowOf(0, 0, 1) + RkOf(0, 0, 1, 1),
                  {},
                  RowOf(0, 0, 1) + RkOf(0, 0, 1, 1),
                  true}),
    CaseName);

/// A sheet with an index and two blocks for the offset `offset`, with rows 1 and 40.
std::string BlockSheet(std::uint32_t offset, const std::string& before = {},
                       const std::string& cell = BlankOf(0, 0, 1), std::uint16_t end = 1)
{
    const std::string bof = BofOf(0x10) + before;
    const std::string width = RecordOf(RecordType::DefaultColumnWidth, Numbers({8}));
    const std::string dimensions = DimensionsOf(0, 40, 0, end);
    const std::string first = RowOf(0, 0, end) + cell;
    const std::string second = RowOf(39, 0, 1) + BlankOf(39, 0, 1);
    const auto start = static_cast<std::uint32_t>(offset + bof.size());
    const auto indexSize = static_cast<std::uint32_t>(kRecordHeader + 24);
    const auto firstBlock = static_cast<std::uint32_t>(start + indexSize + width.size() +
                                                       dimensions.size() + first.size());
    const std::string dbCell = DbCellOf(static_cast<std::uint32_t>(first.size()), {0});
    const auto secondBlock = static_cast<std::uint32_t>(firstBlock + dbCell.size() + second.size());
    return bof + IndexOf(0, 40, {start + indexSize, firstBlock, secondBlock}) + width + dimensions +
           first + dbCell + second + DbCellOf(static_cast<std::uint32_t>(second.size()), {0}) +
           EofRecord();
}

TEST(XlsSheetBytes, NothingChangesIfNothingWasDone)
{
    const std::string sheet = BlockSheet(500);
    EXPECT_EQ(Saved(sheet, {}, false, {}, 500, 500), sheet);
    EXPECT_EQ(Saved(sheet, {}, true, {}, 500, 500), sheet);
}

TEST(XlsSheetBytes, PlacesMoveWithTheSheet)
{
    EXPECT_EQ(Saved(BlockSheet(500), {}, false, {}, 500, 700), BlockSheet(700));
    EXPECT_EQ(Saved(BlockSheet(500), {}, false, {}, 500, 20), BlockSheet(20));
}

TEST(XlsSheetBytes, PlacesMoveWithinTheSheet)
{
    TextPatch others;
    others.Insert(BofOf(0x10).size(), RecordOf(RecordType::Uncalced, Numbers({0})));
    EXPECT_EQ(Saved(BlockSheet(500), {}, false, others, 500, 700),
              BlockSheet(700, RecordOf(RecordType::Uncalced, Numbers({0}))));
}

TEST(XlsSheetBytes, WrongPlacesStay)
{
    const std::string sheet = BlockSheet(600); // but it is at 500
    EXPECT_EQ(Saved(sheet, {}, false, {}, 500, 700), sheet);
}

TEST(XlsSheetBytes, WrittenCellsAndOtherReplacementsAreCombined)
{
    TextPatch others;
    others.Insert(BofOf(0x10).size(), RecordOf(RecordType::Uncalced, Numbers({0})));
    EXPECT_EQ(Saved(BlockSheet(500), {Number(1, 1, 5), Text(1, 2, 6)}, false, others, 500, 700),
              BlockSheet(700, RecordOf(RecordType::Uncalced, Numbers({0})),
                         RkOf(0, 0, 1, 5) + LabelSstOf(0, 1, 15, 6), 2));
}

TEST(XlsSheetBytes, ChangesOfTheBaseReachTheTable)
{
    const std::string sheet =
        WorksheetOf(DimensionsOf(0, 1, 0, 2) + RowOf(0, 0, 2) +
                    FormulaOf(0, 0, 1, ResultOf(1), 0, "\x17") + BlankOf(0, 1, 3));
    const auto text = std::make_shared<SheetText>(sheet);
    SheetCells cells(text);
    cells.Set(1, 2, std::int16_t{4});
    const std::string base =
        WorksheetOf(DimensionsOf(0, 1, 0, 2) + RowOf(0, 0, 2) +
                    FormulaOf(0, 0, 1, ResultOf(1), 0, "\x16") + BlankOf(0, 1, 3));
    EXPECT_EQ(MakeSheet(*text, base, &cells, false, {}, 0),
              WorksheetOf(DimensionsOf(0, 1, 0, 2) + RowOf(0, 0, 2) +
                          FormulaOf(0, 0, 1, ResultOf(1), 0, "\x16") + RkOf(0, 1, 3, 4)));
    EXPECT_EQ(MakeSheet(*text, base, nullptr, false, {}, 0), base);
}

TEST(XlsSheetBytes, EmptyBlocksAreWritten)
{
    const std::string dimensions = DimensionsOf(0, 0, 0, 0);
    const std::string before = BofOf(0x10) + IndexOf(0, 0, {0}) + dimensions + EofRecord();
    const std::string first = RowOf(2, 0, 1, 0x0100, 15, 255) + RkOf(2, 0, 15, 1);
    const std::string last = RowOf(70, 0, 1, 0x0100, 15, 255) + RkOf(70, 0, 15, 2);
    const auto at = static_cast<std::uint32_t>(1000 + BofOf(0x10).size() + 4 + 28 +
                                               dimensions.size() + first.size());
    EXPECT_EQ(
        Saved(before, {Number(3, 1, 1), Number(71, 1, 2)}, false, {}, 0, 1000),
        BofOf(0x10) +
            IndexOf(2, 71, {0, at, at + 10, static_cast<std::uint32_t>(at + 18 + last.size())}) +
            DimensionsOf(2, 71, 0, 1) + first + DbCellOf(34, {0}) + DbCellOf(0, {}) + last +
            DbCellOf(34, {0}) + EofRecord());
}

} // namespace
} // namespace orrery::xls
